// A module that has the notification and lacks the export.
#include "platform/system.h"

extern "C" __attribute__((visibility("default"))) BOOL DllMain(HMODULE, DWORD, void*) {
  return TRUE;
}
