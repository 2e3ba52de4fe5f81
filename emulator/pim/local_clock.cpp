#include "emulator/pim/local_clock.h"

#include "emulator/pim/variant_time.h"

namespace emulator {

LocalClock localClock(const Clock& clock, const Configuration& configuration) {
  return [&] { return toDate(configuration.timeZone().toLocal(clock.now())); };
}

}  // namespace emulator
