// qorv-device dump: writes a device as a snapshot.
#pragma once

#include "apps/qorv_device/command.h"

namespace qorv_device {

Action defineDump(CLI::App& command);

}  // namespace qorv_device
