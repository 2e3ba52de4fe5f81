// The rule of a series: what a recurrence pattern says, without the times of day.
#pragma once

#include <cstdint>

#include "emulator/pim/calendar_day.h"

namespace emulator {

/// The object model's numbers.
enum class RecurrenceType : std::int32_t {
  Daily = 0,
  Weekly = 1,
  Monthly = 2,
  MonthNth = 3,
  Yearly = 5,
  YearNth = 6
};

enum class SeriesEnd : std::int32_t { Never = 0, OnDate = 1, AfterCount = 2 };

/// The instance that stands for the last such weekday of a month; a month has up to five.
inline constexpr std::int32_t kLastInstance = 5;
inline constexpr std::int32_t kEveryWeekday = 127;

/// Only the parameters of the type count: a weekly rule has a mask, a monthly one a day of month, an n-th one
/// mask and instance, and the yearly types a month besides.
struct RecurrenceRule {
  RecurrenceType type = RecurrenceType::Weekly;
  Day start = kFirstDay;
  SeriesEnd end = SeriesEnd::Never;
  Day endDate = kLastDay;        ///< the last day that may hold an occurrence, when the series ends on a date
  std::int32_t count = 0;        ///< number of occurrences, when the series ends after so many
  std::int32_t interval = 1;     ///< in days, weeks, months or years, as the type says
  std::int32_t dayMask = 0;      ///< Sunday 1 to Saturday 64
  std::int32_t dayOfMonth = 0;   ///< 1 to kLongestMonth; a shorter month takes its last day
  std::int32_t instance = 0;     ///< 1 to 4, or kLastInstance
  std::int32_t monthOfYear = 0;  ///< 1 to kMonthsPerYear

  friend bool operator==(const RecurrenceRule&, const RecurrenceRule&) = default;
};

constexpr bool usesDayMask(RecurrenceType type) {
  return type == RecurrenceType::Weekly || type == RecurrenceType::MonthNth ||
         type == RecurrenceType::YearNth;
}
constexpr bool usesDayOfMonth(RecurrenceType type) {
  return type == RecurrenceType::Monthly || type == RecurrenceType::Yearly;
}
constexpr bool usesInstance(RecurrenceType type) {
  return type == RecurrenceType::MonthNth || type == RecurrenceType::YearNth;
}
constexpr bool usesMonth(RecurrenceType type) {
  return type == RecurrenceType::Yearly || type == RecurrenceType::YearNth;
}

/// Whether the number names one of the platform's recurrence types.
bool isRecurrenceType(std::int32_t number);

/// Whether the parameters of the type are in range, so that every period of the rule holds an occurrence.
bool isWellFormed(const RecurrenceRule& rule);

}  // namespace emulator
