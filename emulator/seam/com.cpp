#include "platform/com.h"

#include "emulator/seam/call.h"

using emulator::call;
using emulator::Device;

namespace {

constexpr HRESULT kNoAggregation = static_cast<HRESULT>(0x80040110);

}  // namespace

HRESULT CoInitializeEx(void* reserved, DWORD mode) {
  return call<&::CoInitializeEx>([&](Device& device) { return device.com.enter(mode); }, reserved, mode);
}

void CoUninitialize() {
  call<&::CoUninitialize>([](Device& device) { device.com.leave(); });
}

HRESULT CoCreateInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID iid, void** object) {
  return call<&::CoCreateInstance>(
      [&](Device& device) {
        return outer == nullptr ? device.objectModel.createInstance(classId, iid, object) : kNoAggregation;
      },
      classId, outer, context, iid, object);
}

// The libraries of the emulated device are part of it: none is ever unused.
void CoFreeUnusedLibraries() {
  call<&::CoFreeUnusedLibraries>([](Device&) {});
}
