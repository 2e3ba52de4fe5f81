// qorv-device create: makes a device file.
#pragma once

#include "apps/qorv_device/command.h"

namespace qorv_device {

Action defineCreate(CLI::App& command);

}  // namespace qorv_device
