// What can be asked of a series: which days hold its occurrences, and where it ends.
#pragma once

#include <optional>

#include "emulator/pim/recurrence_rule.h"

namespace emulator {

/// Number of occurrences from the rule's start through `day`, without regard to the rule's end.
std::int32_t countThrough(const RecurrenceRule& rule, Day day);

/// The n-th occurrence, counted from 1, without regard to the rule's end; none past the platform's last day.
std::optional<Day> nthOccurrence(const RecurrenceRule& rule, std::int32_t n);

/// Whether the day holds an occurrence of the series.
bool isOccurrence(const RecurrenceRule& rule, Day day);

/// The first occurrence; none for a series without one.
std::optional<Day> firstOccurrence(const RecurrenceRule& rule);

/// The number of occurrences of a series that ends, by date or by count; of one that never ends, through the
/// platform's last day.
std::int32_t countOccurrences(const RecurrenceRule& rule);

/// The number that a pattern says: the one that it was given, though the platform's last day may come first,
/// or the computed one.
std::int32_t statedCount(const RecurrenceRule& rule);

/// The last occurrence; of a series that never ends the last one that the platform's calendar holds.
std::optional<Day> lastOccurrence(const RecurrenceRule& rule);

/// The nearest occurrences of the series before and after a day, the day itself left out.
std::optional<Day> occurrenceBefore(const RecurrenceRule& rule, Day day);
std::optional<Day> occurrenceAfter(const RecurrenceRule& rule, Day day);

}  // namespace emulator
