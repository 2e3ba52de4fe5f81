// qorv-device load: merges a snapshot into a device.
#pragma once

#include "apps/qorv_device/command.h"

namespace qorv_device {

Action defineLoad(CLI::App& command);

}  // namespace qorv_device
