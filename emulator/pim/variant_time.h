// Times as the numbers of DATEs: days since 1899-12-30 in local time, the time of day as fraction.
#pragma once

#include <optional>

#include "emulator/pim/calendar_day.h"
#include "emulator/system/file_time.h"

namespace emulator {

inline constexpr double kHour = 1.0 / 24;
inline constexpr double kMinute = 1.0 / kMinutesPerDay;

/// Takes out what arithmetic leaves behind the last millisecond, so that sums of times compare as they
/// should.
double roundToMillisecond(double date);

/// Whether a time lies between a day and the platform's last one, by the millisecond.
bool isInCalendar(double date, Day earliest);

/// The day on which a time lies. The time must be within the platform's calendar.
Day dayAt(double date);
/// What is left of a time without its day.
double timeOfDayAt(double date);
/// The time itself when it is a midnight, else the next one.
double nextMidnight(double date);
/// The first full hour after a time.
double nextFullHour(double date);

/// A moment in whole seconds, as the object model's conversions give it.
double toDate(Ticks local);
/// Whole seconds: milliseconds are left out, the day of week is ignored. Nothing for a time that does not
/// exist or lies outside the years 1601 to 9999.
std::optional<double> toDate(const SYSTEMTIME& time);
/// Whole seconds with the day of week, milliseconds 0. Nothing outside the years 1601 to 9999.
std::optional<SYSTEMTIME> toSystemTime(double date);

}  // namespace emulator
