// An appointment's times as its methods and its pattern's give them beside Start and End.
#pragma once

#include "emulator/pim/item_core.h"

namespace emulator {

/// A month at most, in minutes.
inline constexpr LONG kLongestDuration = kLongestMonth * kMinutesPerDay;

/// Whole minutes from start to end.
LONG durationInMinutes(const ItemRecord& appointment);
/// Moves the end. E_INVALIDARG below 0 and above kLongestDuration.
HRESULT putDuration(const PimItems& items, ItemRecord& appointment, LONG minutes);

/// Moves the start to another time of its day, and the end along.
HRESULT putStartTime(const PimItems& items, ItemRecord& appointment, double time);
/// Moves the end to a time of the start's day, or of the next day when the start's is past it.
HRESULT putEndTime(const PimItems& items, ItemRecord& appointment, double time);

}  // namespace emulator
