#include "service/platform_level.h"

#include "platform/system.h"

namespace qorv {

namespace {
constexpr DWORD kFirstBuildWithInk = 11171;
}

bool platformHasInk() {
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof(version);
  if (!GetVersionExW(&version)) return false;
  if (version.dwMajorVersion > 3) return true;
  return version.dwMajorVersion == 3 && version.dwMinorVersion == 0 &&
         version.dwBuildNumber >= kFirstBuildWithInk;
}

}  // namespace qorv
