// The stored recurrence of a saved series, exceptions included.
#pragma once

#include <vector>

#include "emulator/pim/pim_items.h"

namespace emulator {

/// The blob of a series as the device file has it; the item must have a rule.
std::vector<std::uint8_t> storedRecurrence(PimItems& items, const PimItem& series);

}  // namespace emulator
