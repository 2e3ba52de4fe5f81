// Calendar days as the object model counts them, and the arithmetic that recurrence needs.
#pragma once

#include <chrono>
#include <cstdint>

namespace emulator {

/// Days since 1899-12-30: the whole part of a DATE.
using Day = std::int32_t;

/// The first and the last day that the platform's calendar knows: 1899-12-30 and 2999-12-31.
inline constexpr Day kFirstDay = 0;
inline constexpr Day kLastDay = 401768;

/// 1900-01-01: appointments, tasks and reminders lie no earlier.
inline constexpr Day kFirstPlannedDay = 2;

inline constexpr std::int64_t kMinutesPerDay = 1440;
inline constexpr std::int32_t kLongestMonth = 31;  ///< in days
inline constexpr std::int32_t kMonthsPerYear = 12;

constexpr Day dayOf(std::chrono::sys_days date) {
  constexpr std::chrono::sys_days kEpoch{std::chrono::year{1899} / 12 / 30};
  return static_cast<Day>((date - kEpoch).count());
}

constexpr Day dayOf(std::chrono::year_month_day date) {
  return dayOf(std::chrono::sys_days{date});
}

constexpr std::chrono::year_month_day dateOf(Day day) {
  constexpr std::chrono::sys_days kEpoch{std::chrono::year{1899} / 12 / 30};
  return kEpoch + std::chrono::days{day};
}

/// Sunday is 0.
constexpr unsigned weekdayOf(Day day) {
  return std::chrono::weekday{std::chrono::sys_days{dateOf(day)}}.c_encoding();
}

/// The bit that stands for the day's weekday in a day-of-week mask: Sunday 1 to Saturday 64.
constexpr std::int32_t weekdayBit(Day day) {
  return 1 << weekdayOf(day);
}

}  // namespace emulator
