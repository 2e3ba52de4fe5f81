// The device's wall-clock times, with their arithmetic and spelling.
#pragma once

#include <chrono>
#include <cstdint>
#include <ctime>
#include <string>

namespace desktop {

/// A wall-clock time in the device's own zone; the device keeps no zone with its items.
/// All zeros are no time at all: an entry of the device can be without one.
struct LocalTime {
  std::uint16_t year = 0;
  std::uint16_t month = 0;  ///< 1 to 12
  std::uint16_t day = 0;    ///< 1 to 31
  std::uint16_t hour = 0;
  std::uint16_t minute = 0;
  std::uint16_t second = 0;
  std::uint16_t millisecond = 0;

  friend auto operator<=>(const LocalTime&, const LocalTime&) = default;
};

/// A real day from 1601 to 30827 (the years that the device's time structure allows) and a real time of day.
bool isValid(const LocalTime& time);

/// Whether it is the time that stands for none, LocalTime{}.
bool isNone(const LocalTime& time);

/// How the device spells that there is no date: 1 January 4501.
inline constexpr LocalTime kNoDateTime{4501, 1, 1};

/// The time as the desktop holds it: the device's two spellings of no date, all zeros and 1 January 4501,
/// become none.
LocalTime noneIfNoDate(const LocalTime& time);

/// The day of a valid time, without its time of day.
std::chrono::sys_days dayOf(const LocalTime& time);

/// The midnight that the given day begins with.
LocalTime midnightOf(std::chrono::sys_days day);

bool isMidnight(const LocalTime& time);

/// The same time of day, that many days later (or earlier).
LocalTime addDays(const LocalTime& time, int days);

/// When this computer's clock shows the time.
std::time_t instantOf(const LocalTime& time);

/// What this computer's clock shows then.
LocalTime clockAt(std::time_t instant);

/// `2005-03-14`, or `none`
std::string spellDay(const LocalTime& time);

/// `2005-03-14 09:00`, with seconds only when there are any; or `none`.
std::string spellTime(const LocalTime& time);

}  // namespace desktop
