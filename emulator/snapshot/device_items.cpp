#include "emulator/snapshot/device_items.h"

#include "emulator/pim/variant_time.h"

namespace emulator {

LocalClock localClockOf(const Device& device) {
  return [&device] {
    const Ticks local = device.configuration.timeZone().toLocal(device.clock.now());
    return toDate(systemTimeOf(local).value()).value();
  };
}

PimItems itemsOf(Device& device) {
  return PimItems(device.store, localClockOf(device));
}

}  // namespace emulator
