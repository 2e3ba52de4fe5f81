#include "emulator/seam/libraries.h"

#include "emulator/calls/entries.h"
#include "emulator/seam/call.h"

namespace emulator {

HRESULT entries::DllRegisterServer() {
  return call<&entries::DllRegisterServer>(
      [](Device& device) { return device.objectModel.registerServer(); });
}

namespace {

template <typename Function>
FARPROC entry(Function* function) {
  return reinterpret_cast<FARPROC>(function);
}

/// What a program looks up because older systems lack it.
ModuleEntries coreEntries(const OsVersion& version) {
  if (version.major < 4) return {};
  return {{u"CeCreateDatabaseEx2", entry(&CeCreateDatabaseEx2)},
          {u"CeOpenDatabaseEx2", entry(&CeOpenDatabaseEx2)},
          {u"CeOidGetInfoEx2", entry(&CeOidGetInfoEx2)}};
}

}  // namespace

void provideLibraries(Device& device) {
  device.modules.provide(u"coredll.dll", coreEntries(device.configuration.osVersion()));
  device.modules.provide(u"pimstore.dll",
                         {{u"DllRegisterServer", reinterpret_cast<FARPROC>(&entries::DllRegisterServer)}});
}

}  // namespace emulator
