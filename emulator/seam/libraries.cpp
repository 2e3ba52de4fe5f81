#include "emulator/seam/libraries.h"

#include "emulator/calls/entries.h"
#include "emulator/seam/call.h"

namespace emulator {

HRESULT entries::DllRegisterServer() {
  return call<&entries::DllRegisterServer>(
      [](Device& device) { return device.objectModel.registerServer(); });
}

namespace {

template <typename Entry>
FARPROC address(Entry* entry) {
  return reinterpret_cast<FARPROC>(entry);
}

}  // namespace

void provideLibraries(Device& device) {
  device.modules.provide(u"pimstore.dll", {{u"DllRegisterServer", address(&entries::DllRegisterServer)}});
  device.modules.provide(u"CEMAPI.DLL", {{u"FreeProws", address(&entries::FreeProws)},
                                         {u"MAPIFreeBuffer", address(&entries::MAPIFreeBuffer)},
                                         {u"MAPIInitialize", address(&entries::MAPIInitialize)},
                                         {u"MAPILogonEx", address(&entries::MAPILogonEx)},
                                         {u"MAPIUninitialize", address(&entries::MAPIUninitialize)}});
}

}  // namespace emulator
