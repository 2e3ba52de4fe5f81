// Which device this is, and what its platform can do.

#include <string>

#include "channel/host_context.h"
#include "channel/registry_values.h"
#include "service/api_base.h"
#include "service/platform_level.h"

namespace qorv {

namespace {
/// What the desktop gets in front of the identifier, always.
constexpr DWORD kIdentityNumber = 72;
constexpr DWORD kMachineIdCapacity = 512;
}  // namespace

bool CQorvApiBase::GetDeviceIdentity() {
  WriteDword(kIdentityNumber);
  std::u16string machineId;
  readRegistryText(HKEY_LOCAL_MACHINE, hostContext().registryRoot.c_str(), u"MachineID", kMachineIdCapacity,
                   machineId);
  return WriteString(machineId.c_str());
}

bool CQorvApiBase::GetPlatformLevel() {
  return WriteDword(platformHasInk() ? 1 : 0);
}

}  // namespace qorv
