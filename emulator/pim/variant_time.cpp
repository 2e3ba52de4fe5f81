#include "emulator/pim/variant_time.h"

#include <cmath>

namespace emulator {
namespace {

constexpr double kMillisecondsPerDay = 86400000.0;
constexpr std::int64_t kSecondsPerDay = 86400;
constexpr Day kFirstFileDay = dayOf(std::chrono::year{1601} / 1 / 1);
constexpr int kLastYear = 9999;
constexpr Day kDayAfterLast = dayOf(std::chrono::year{kLastYear + 1} / 1 / 1);

}  // namespace

double roundToMillisecond(double date) {
  return std::round(date * kMillisecondsPerDay) / kMillisecondsPerDay;
}

bool isInCalendar(double date, Day earliest) {
  return date >= earliest && roundToMillisecond(date) < kLastDay + 1;
}

Day dayAt(double date) {
  return static_cast<Day>(std::floor(roundToMillisecond(date)));
}

double timeOfDayAt(double date) {
  return roundToMillisecond(date - dayAt(date));
}

double nextMidnight(double date) {
  return std::ceil(roundToMillisecond(date));
}

double nextFullHour(double date) {
  constexpr double kSecondsPerHour = 3600;
  return (std::floor(std::round(date * kSecondsPerDay) / kSecondsPerHour) + 1) / 24;
}

// Before the first day of the count the whole part goes backwards, the time of day still forwards.
double toDate(Ticks local) {
  const std::int64_t seconds = local / kTicksPerSecond;
  const double day = static_cast<double>(seconds / kSecondsPerDay) + kFirstFileDay;
  const double timeOfDay = static_cast<double>(seconds % kSecondsPerDay) / kSecondsPerDay;
  return day < 0 ? day - timeOfDay : day + timeOfDay;
}

std::optional<double> toDate(const SYSTEMTIME& time) {
  const std::optional<Ticks> ticks = ticksOf(time);
  if (!ticks || time.wYear > kLastYear) return std::nullopt;
  return toDate(*ticks);
}

std::optional<SYSTEMTIME> toSystemTime(double date) {
  if (!(date > kFirstFileDay - 1 && date < kDayAfterLast)) return std::nullopt;
  const double day = std::trunc(date);
  const std::int64_t timeOfDay = std::llround(std::abs(date - day) * kSecondsPerDay);
  const std::int64_t seconds = (static_cast<std::int64_t>(day) - kFirstFileDay) * kSecondsPerDay + timeOfDay;
  const std::optional<SYSTEMTIME> time = systemTimeOf(seconds * kTicksPerSecond);
  return time && time->wYear <= kLastYear ? time : std::nullopt;
}

}  // namespace emulator
