// The device's local time, as the object model counts it.
#pragma once

#include <functional>

#include "emulator/system/clock.h"
#include "emulator/system/configuration.h"

namespace emulator {

/// Gives the local time as the number of a DATE.
using LocalClock = std::function<double()>;

/// The device's clock in its time zone. Both must outlive what is returned.
LocalClock localClock(const Clock& clock, const Configuration& configuration);

}  // namespace emulator
