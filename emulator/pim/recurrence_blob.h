// The stored recurrence: the object store's standard structure, as it lies under an item's recurrence
// property.
//
// Little-endian and packed; P is 0, 4 or 8 bytes, D and M are numbers of dates. Times are minutes since
// 1601-01-01.
//   0       u16  reader version 0x3004, then u16 writer version 0x3004
//   4       u16  frequency: 0x200A daily, 0x200B weekly, 0x200C monthly, 0x200D yearly
//   6       u16  pattern type: 0 day, 1 week, 2 day of month, 3 n-th weekday of month
//   8       u16  calendar: 0
//   10      u32  first date-time: where the periods begin, modulo their length
//   14      u32  period: minutes, weeks, or months, as the frequency says
//   18      u32  sliding flag: 0
//   22      P    nothing | u32 day mask | u32 day of month | u32 day mask, u32 instance
//   22+P    u32  end type: 0x2021 by date, 0x2022 after so many, 0x2023 never; then u32 occurrences
//   30+P    u32  first day of the week: 0
//   34+P    u32  D, then D u32: original days of the deleted and of the changed occurrences, ascending
//   38+P+4D u32  M, then M u32: the days to which the changed ones went, ascending
//   42+P+4D+4M u32  day of the first occurrence, then u32: day of the last
// The store appends to an appointment's, unless it has changed occurrences: u32 0x3006, u32 0x3009, u32 start
// and u32 end in minutes of the day, u16 0 changed occurrences, u32 0, u32 0.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "emulator/pim/recurrence_rule.h"

namespace emulator {

/// Minutes from the midnight of an occurrence's day to its start and to its end.
struct OccurrenceTimes {
  std::int32_t start = 0;
  std::int32_t end = 0;
};

struct StoredRecurrence {
  RecurrenceRule rule;
  std::vector<Day> replaced;             ///< original days of deleted and changed occurrences
  std::vector<Day> changed;              ///< days to which the changed ones went
  std::optional<OccurrenceTimes> times;  ///< of an appointment; a task has none
};

std::vector<std::uint8_t> recurrenceBlob(const StoredRecurrence& recurrence);

}  // namespace emulator
