#include "emulator/pim/body_stream.h"

#include <algorithm>
#include <cstring>

#include "emulator/pim/ansi_text.h"

namespace emulator {
namespace {

// More than any body; keeps a wild size or position from taking the memory.
constexpr std::uint64_t kLongestStream = 64u << 20;

}  // namespace

BodyStream::BodyStream(ItemCore& item, IUnknown* owner, std::size_t bodyPlace,
                       std::vector<std::uint8_t> bytes, bool writable)
    : UnsupportedStream(item.context().live, ModelClass::BodyStream),
      item_(item),
      owner_(owner),
      bodyPlace_(bodyPlace),
      bytes_(std::move(bytes)),
      writable_(writable) {}

HRESULT BodyStream::Read(void* buffer, ULONG count, ULONG* bytesRead) {
  if (buffer == nullptr && count != 0) return E_POINTER;
  const std::size_t left = position_ < bytes_.size() ? bytes_.size() - position_ : 0;
  const std::size_t size = std::min<std::size_t>(count, left);
  if (size != 0) std::memcpy(buffer, bytes_.data() + position_, size);
  position_ += size;
  if (bytesRead != nullptr) *bytesRead = static_cast<ULONG>(size);
  return S_OK;
}

HRESULT BodyStream::Write(const void* buffer, ULONG count, ULONG* bytesWritten) {
  if (bytesWritten != nullptr) *bytesWritten = 0;
  if (!writable_) return STG_E_ACCESSDENIED;
  if (buffer == nullptr && count != 0) return E_POINTER;
  if (position_ + count > kLongestStream) return E_OUTOFMEMORY;
  return atBoundary([&] {
    bytes_.resize(std::max(bytes_.size(), position_ + count));
    if (count != 0) std::memcpy(bytes_.data() + position_, buffer, count);
    position_ += count;
    if (bytesWritten != nullptr) *bytesWritten = count;
    return S_OK;
  });
}

HRESULT BodyStream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition) {
  if (origin > STREAM_SEEK_END) return STG_E_INVALIDFUNCTION;
  const std::size_t from = origin == STREAM_SEEK_SET   ? 0
                           : origin == STREAM_SEEK_CUR ? position_
                                                       : bytes_.size();
  const std::int64_t limit = kLongestStream;
  const std::int64_t by = move;
  if (by < -limit || by > limit) return STG_E_INVALIDFUNCTION;
  const std::int64_t target = static_cast<std::int64_t>(from) + by;
  if (target < 0 || target > limit) return STG_E_INVALIDFUNCTION;
  position_ = static_cast<std::size_t>(target);
  if (newPosition != nullptr) *newPosition = static_cast<std::uint64_t>(target);
  return S_OK;
}

HRESULT BodyStream::SetSize(ULARGE_INTEGER size) {
  if (!writable_) return STG_E_ACCESSDENIED;
  if (size > kLongestStream) return E_OUTOFMEMORY;
  return atBoundary([&] {
    bytes_.resize(static_cast<std::size_t>(std::uint64_t{size}));
    return S_OK;
  });
}

HRESULT BodyStream::Commit(DWORD) {
  if (!writable_) return S_OK;
  return atBoundary([&] {
    PimItem* item = item_.item();
    if (item == nullptr) return E_FAIL;
    return item_.context().items.put(item->properties, bodyPlace_, fromAnsi(bytes_));
  });
}

HRESULT BodyStream::Stat(STATSTG* statistics, DWORD) {
  if (statistics == nullptr) return E_POINTER;
  constexpr DWORD kStream = 2;
  *statistics = {};
  statistics->type = kStream;
  statistics->cbSize = std::uint64_t{bytes_.size()};
  return S_OK;
}

}  // namespace emulator
