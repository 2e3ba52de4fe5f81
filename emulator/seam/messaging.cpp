#include "emulator/calls/entries.h"
#include "emulator/seam/call.h"

namespace emulator {

// The device has one user and one profile: nothing is to be prepared for a log-on, and any name will do.
HRESULT entries::MAPIInitialize(void* parameters) {
  return call<&entries::MAPIInitialize>([](Device&) { return S_OK; }, parameters);
}

void entries::MAPIUninitialize() {
  call<&entries::MAPIUninitialize>([](Device&) {});
}

HRESULT entries::MAPILogonEx(ULONG_PTR ui, LPWSTR profile, LPWSTR password, FLAGS flags,
                             IMAPISession** session) {
  return call<&entries::MAPILogonEx>([&](Device& device) { return device.messaging.logon(session); }, ui,
                                     profile, password, flags, session);
}

ULONG entries::MAPIFreeBuffer(void* buffer) {
  return call<&entries::MAPIFreeBuffer>(
      [&](Device& device) { return static_cast<ULONG>(device.messaging.freeBuffer(buffer)); }, buffer);
}

void entries::FreeProws(SRowSet* rows) {
  call<&entries::FreeProws>([&](Device& device) { device.messaging.freeRows(rows); }, rows);
}

}  // namespace emulator
