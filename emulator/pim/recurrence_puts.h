// What putting a value into a recurrence pattern does to the item that the pattern belongs to.
#pragma once

#include "emulator/pim/local_clock.h"
#include "emulator/pim/pim_item.h"

namespace emulator {

/// A fresh pattern: weekly on the weekday of the item's start, every week, never ending. A task without dates
/// starts today.
RecurrenceRule freshRule(const ItemRecord& item, const LocalClock& clock);

/// The rule with another type, whose parameters come from the rule's start; the interval is 1 again.
RecurrenceRule retyped(const RecurrenceRule& rule, RecurrenceType type);

/// Ends after the number of occurrences that a pattern has when it is only said to end.
RecurrenceRule ending(const RecurrenceRule& rule);

/// The last day of a series: the one that was put, or that of its last occurrence. Nothing when it never
/// ends.
std::optional<Day> endDayOf(const RecurrenceRule& rule);

/// Gives the item another rule. Its exceptions are dropped unless the rule has the same occurrences by the
/// same parameters, or the caller knows better.
void setRule(PimItem& item, const RecurrenceRule& rule, bool keepsExceptions = false);

}  // namespace emulator
