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

void provideRichInk(Device& device) {
  if (device.configuration.osVersion() < kFirstVersionWithRichInk) return;
  device.modules.provide(u"RichInk.dll",
                         {{u"InitRichInkDLL", reinterpret_cast<FARPROC>(&entries::InitRichInkDLL)}},
                         [&device] { device.richInk.unregisterClass(); });
}

}  // namespace

void provideLibraries(Device& device) {
  device.modules.provide(u"pimstore.dll",
                         {{u"DllRegisterServer", reinterpret_cast<FARPROC>(&entries::DllRegisterServer)}});
  provideRichInk(device);
}

}  // namespace emulator
