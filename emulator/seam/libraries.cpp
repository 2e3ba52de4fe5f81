#include "emulator/seam/libraries.h"

#include "emulator/calls/entries.h"
#include "emulator/seam/call.h"

namespace emulator {

HRESULT entries::DllRegisterServer() {
  return call<&entries::DllRegisterServer>(
      [](Device& device) { return device.objectModel.registerServer(); });
}

void provideLibraries(Device& device) {
  device.modules.provide(u"pimstore.dll",
                         {{u"DllRegisterServer", reinterpret_cast<FARPROC>(&entries::DllRegisterServer)}});
}

}  // namespace emulator
