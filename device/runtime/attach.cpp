// The entry that the device's loader calls.

#include "device/runtime/late_calls.h"
#include "device/runtime/static_objects.h"
#include "platform/system.h"

namespace __gnu_cxx {
void __freeres();
}

extern "C" {

BOOL DllMain(HMODULE module, DWORD reason, void* reserved);

/// The loader takes FALSE on attach for a library that could not start.
BOOL attachOrDetach(HMODULE module, DWORD reason, void* reserved) try {
  if (reason == DLL_PROCESS_ATTACH) {
    device::bindLateCalls();
    device::makeStaticObjects();
  }
  const BOOL result = DllMain(module, reason, reserved);
  if (reason == DLL_PROCESS_DETACH) {
    device::endStaticObjects();
    // The pool that lets an exception be thrown when memory is short.
    __gnu_cxx::__freeres();
  }
  return result;
} catch (...) {
  return FALSE;
}
}
