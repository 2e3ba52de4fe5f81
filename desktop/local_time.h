// Calendar arithmetic and spelling of the device's wall-clock times.
#pragma once

#include <chrono>
#include <ctime>
#include <string>

#include "desktop/appointment.h"

namespace desktop {

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
