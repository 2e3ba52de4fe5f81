// The emulated messaging library "CEMAPI.DLL": what its entries do, and the messages behind it.
#pragma once

#include "emulator/messaging/mail_context.h"
#include "platform/messaging.h"

namespace emulator {

/// Objects that a program never gave back go with it, as they go with the program on a real device.
class Messaging {
 public:
  /// `memory` gives the buffers that callers receive; it and the store must outlive the library.
  Messaging(ObjectStore& store, PlatformMemory& memory);
  Messaging(const Messaging&) = delete;
  Messaging& operator=(const Messaging&) = delete;
  ~Messaging();

  /// *session receives a reference.
  HRESULT logon(IMAPISession** session);
  /// S_OK, also for null; E_INVALIDARG for what is no buffer of the library, or a row set.
  HRESULT freeBuffer(void* buffer) { return context_.buffers.freeBuffer(buffer) ? S_OK : E_INVALIDARG; }
  void freeRows(SRowSet* rows) { context_.buffers.freeRows(rows); }

  /// The messages themselves, for the device's own programs.
  Mailbox& mailbox() { return mailbox_; }
  const LiveObjects& liveObjects() const { return context_.live; }

 private:
  Mailbox mailbox_;
  MailContext context_;
};

}  // namespace emulator
