// qorv-device serve: runs the agent on a device, for one desktop after another.
#pragma once

#include "apps/qorv_device/command.h"

namespace qorv_device {

Action defineServe(CLI::App& command);

}  // namespace qorv_device
