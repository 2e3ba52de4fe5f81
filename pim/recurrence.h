// Converts between the recurrence block and the object model's pattern.
#pragma once

#include "pim/recurrence_block.h"
#include "platform/outlook.h"
#include "platform/recurrence.h"

namespace qorv {

/// The object model's ceilings as this system enforces them.
inline constexpr DWORD kMaxOccurrences = 999;
inline constexpr LONG kMaxInterval = 999;

/// Puts the block's rule onto the pattern: the type before its parameters, the interval before the start, the
/// start before the end. The block's time fields and number of occurrences change to what was put. An unknown
/// type leaves the pattern's type alone; the rest is put all the same. Nothing that the object model refuses
/// stops it.
void applyBlock(IPOutlookApp& application, IRecurrencePattern& pattern, RecurrenceBlock& block);

/// Fills the block from the pattern, exception count 0; fields that the type doesn't use stay as they are.
void fillBlock(IPOutlookApp& application, IRecurrencePattern& pattern, RecurrenceBlock& block);

/// Fills the block from the pattern of a saved item, whose stored recurrence (`property`) corrects the end kind of a
/// series that ends.
void fillItemBlock(IPOutlookApp& application, IRecurrencePattern& pattern, DWORD oid, CEPROPID property,
                   RecurrenceBlock& block);

}  // namespace qorv
