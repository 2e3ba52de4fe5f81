#include "emulator/messaging/messaging.h"

#include "emulator/messaging/mail_session_object.h"

namespace emulator {

Messaging::Messaging(ObjectStore& store, PlatformMemory& memory)
    : mailbox_(store), context_{mailbox_, MailNames(store.connection()), MailBuffers(memory), {}, {}} {}

Messaging::~Messaging() {
  while (!context_.handedOut.empty()) (*context_.handedOut.begin())->Release();
}

HRESULT Messaging::logon(IMAPISession** session) {
  if (session == nullptr) return E_INVALIDARG;
  *session = nullptr;
  return atBoundary([&] {
    *session = new MailSessionObject(context_);
    return S_OK;
  });
}

}  // namespace emulator
