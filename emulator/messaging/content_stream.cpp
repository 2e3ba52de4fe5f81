#include "emulator/messaging/content_stream.h"

#include <algorithm>

namespace emulator {
namespace {

bool isStreamInterface(LPCIID iid) {
  return iid == nullptr || *iid == IStream::kIid || *iid == ISequentialStream::kIid || *iid == IUnknown::kIid;
}

}  // namespace

ContentStream::ContentStream(MailContext& context, ContentNumber content, std::int64_t message, bool writable)
    : UnsupportedStream(context.live, ModelClass::MailStream),
      context_(context),
      content_(content),
      message_(message),
      writable_(writable) {
  context_.handedOut.insert(this);
}

HRESULT ContentStream::Read(void* buffer, ULONG count, ULONG* bytesRead) {
  if (bytesRead != nullptr) *bytesRead = 0;
  if (buffer == nullptr && count != 0) return E_POINTER;
  return atBoundary([&] {
    const std::size_t size =
        context_.mailbox.contents().read(content_, position_, {static_cast<BYTE*>(buffer), count});
    position_ += static_cast<std::int64_t>(size);
    if (bytesRead != nullptr) *bytesRead = static_cast<ULONG>(size);
    return S_OK;
  });
}

HRESULT ContentStream::Write(const void* buffer, ULONG count, ULONG* bytesWritten) {
  if (bytesWritten != nullptr) *bytesWritten = 0;
  if (!writable_) return STG_E_ACCESSDENIED;
  if (buffer == nullptr && count != 0) return E_POINTER;
  if (position_ + count > MailContents::kMostBytes) return E_OUTOFMEMORY;
  return atBoundary([&] {
    MailContents& contents = context_.mailbox.contents();
    if (!contents.size(content_)) return E_FAIL;
    contents.write(content_, position_, {static_cast<const BYTE*>(buffer), count});
    position_ += count;
    if (bytesWritten != nullptr) *bytesWritten = count;
    noteChange();
    return S_OK;
  });
}

HRESULT ContentStream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition) {
  if (origin > STREAM_SEEK_END) return STG_E_INVALIDFUNCTION;
  return atBoundary([&] {
    constexpr std::int64_t kLimit = MailContents::kMostBytes;
    const std::int64_t size = context_.mailbox.contents().size(content_).value_or(0);
    const std::int64_t from = origin == STREAM_SEEK_SET ? 0 : origin == STREAM_SEEK_CUR ? position_ : size;
    const std::int64_t by = move;
    if (by < -kLimit || by > kLimit) return STG_E_INVALIDFUNCTION;
    if (from + by < 0 || from + by > kLimit) return STG_E_INVALIDFUNCTION;
    position_ = from + by;
    if (newPosition != nullptr) *newPosition = static_cast<std::uint64_t>(position_);
    return S_OK;
  });
}

HRESULT ContentStream::Stat(STATSTG* statistics, DWORD) {
  if (statistics == nullptr) return E_POINTER;
  return atBoundary([&] {
    constexpr DWORD kStream = 2;
    *statistics = {};
    statistics->type = kStream;
    const std::int64_t size = context_.mailbox.contents().size(content_).value_or(0);
    statistics->cbSize = static_cast<std::uint64_t>(size);
    return S_OK;
  });
}

// Small writes of one stream are one change.
void ContentStream::noteChange() {
  if (!noted_) context_.mailbox.noteChange(message_);
  noted_ = true;
}

HRESULT openContent(MailContext& context, const StreamProperty& property,
                    const std::function<ContentNumber()>& make, LPCIID iid, ULONG flags, IUnknown** object) {
  const bool writes = (flags & (MAPI_MODIFY | MAPI_CREATE)) != 0;
  const bool creates = (flags & MAPI_CREATE) != 0;
  if (!isStreamInterface(iid)) return E_NOINTERFACE;
  if (creates && (flags & MAPI_MODIFY) == 0) return E_INVALIDARG;
  if (writes && !property.writable) return MAPI_E_NO_ACCESS;
  if (!creates && !property.current) return MAPI_E_NOT_FOUND;
  const ContentNumber content = property.current ? *property.current : make();
  if (creates) {
    context.mailbox.contents().clear(content);
    context.mailbox.noteChange(property.message);
  }
  *object = new ContentStream(context, content, property.message, writes);
  return S_OK;
}

}  // namespace emulator
