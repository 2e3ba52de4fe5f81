// A device's contacts, appointments and tasks, for what works on the device as a whole.
#pragma once

#include "emulator/device.h"
#include "emulator/pim/pim_items.h"

namespace emulator {

/// The device must outlive what is given.
LocalClock localClockOf(const Device& device);
PimItems itemsOf(Device& device);

}  // namespace emulator
