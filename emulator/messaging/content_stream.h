// A body or an attachment's data as a stream.
#pragma once

#include "emulator/messaging/mail_context.h"
#include "emulator/pim/com_object.h"
#include "emulator/system/unsupported_stream.h"

namespace emulator {

/// What is written is in the store at once.
class ContentStream final : public UnsupportedStream<ComObject<IStream>> {
 public:
  /// `message` is the row of the message that the content belongs to.
  ContentStream(MailContext& context, ContentNumber content, std::int64_t message, bool writable);
  ~ContentStream() override { context_.handedOut.erase(this); }

  HRESULT Read(void* buffer, ULONG count, ULONG* bytesRead) override;
  HRESULT Write(const void* buffer, ULONG count, ULONG* bytesWritten) override;
  HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* newPosition) override;
  HRESULT Commit(DWORD) override { return S_OK; }
  HRESULT Stat(STATSTG* statistics, DWORD flag) override;

 private:
  void noteChange();

  MailContext& context_;
  ContentNumber content_;
  std::int64_t message_;
  std::int64_t position_ = 0;
  bool writable_;
  bool noted_ = false;
};

/// What OpenProperty does for a property that is a stream. `current` is its content, if it has one; `make` gives
/// it one that is empty. Without MAPI_CREATE a missing one is MAPI_E_NOT_FOUND, with it what was there goes.
struct StreamProperty {
  std::optional<ContentNumber> current;
  std::int64_t message;
  bool writable;  ///< whether its object may be changed
};
HRESULT openContent(MailContext& context, const StreamProperty& property,
                    const std::function<ContentNumber()>& make, LPCIID iid, ULONG flags, IUnknown** object);

}  // namespace emulator
