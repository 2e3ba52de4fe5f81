// What every object of the object model works with.
#pragma once

#include <map>

#include "emulator/pim/live_objects.h"
#include "emulator/pim/pim_items.h"
#include "emulator/pim/platform_memory.h"

namespace emulator {

struct ModelContext {
  PimItems& items;
  PlatformMemory& memory;
  LocalClock clock;
  LiveObjects live;
  /// Which changes of a kind's folder somebody wished to hear of, while the device is open.
  std::map<ObjectKind, ULONG> folderNotifications;
};

}  // namespace emulator
