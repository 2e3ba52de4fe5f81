#include "emulator/seam/libraries.h"

#include "emulator/calls/entries.h"
#include "emulator/seam/call.h"

namespace emulator {

HRESULT entries::DllRegisterServer() {
  return call<&entries::DllRegisterServer>(
      [](Device& device) { return device.objectModel.registerServer(); });
}

void entries::InitRichInkDLL() {
  call<&entries::InitRichInkDLL>([](Device& device) { device.richInk.registerClass(); });
}

namespace {

template <typename Entry>
FARPROC address(Entry* entry) {
  return reinterpret_cast<FARPROC>(entry);
}

void provideRichInk(Device& device) {
  if (device.configuration.osVersion() < kFirstVersionWithRichInk) return;
  device.modules.provide(u"RichInk.dll", {{u"InitRichInkDLL", address(&entries::InitRichInkDLL)}},
                         [&device] { device.richInk.unregisterClass(); });
}

/// What a program looks up because older systems lack it.
ModuleEntries coreEntries(const OsVersion& version) {
  if (version.major < 4) return {};
  return {{u"CeCreateDatabaseEx2", address(&CeCreateDatabaseEx2)},
          {u"CeOpenDatabaseEx2", address(&CeOpenDatabaseEx2)},
          {u"CeOidGetInfoEx2", address(&CeOidGetInfoEx2)}};
}

}  // namespace

void provideLibraries(Device& device) {
  device.modules.provide(u"coredll.dll", coreEntries(device.configuration.osVersion()));
  device.modules.provide(u"pimstore.dll", {{u"DllRegisterServer", address(&entries::DllRegisterServer)}});
  device.modules.provide(u"CEMAPI.DLL", {{u"FreeProws", address(&entries::FreeProws)},
                                         {u"MAPIFreeBuffer", address(&entries::MAPIFreeBuffer)},
                                         {u"MAPIInitialize", address(&entries::MAPIInitialize)},
                                         {u"MAPILogonEx", address(&entries::MAPILogonEx)},
                                         {u"MAPIUninitialize", address(&entries::MAPIUninitialize)}});
  provideRichInk(device);
}

}  // namespace emulator
