#include "emulator/pim/variant_time.h"

#include <cmath>

namespace emulator {
namespace {

constexpr double kMillisecondsPerDay = 86400000.0;
constexpr std::int64_t kSecondsPerDay = 86400;
constexpr std::chrono::year kFirstYear{1601};
constexpr std::chrono::year kLastYear{9999};
constexpr double kFirstDate = dayOf(kFirstYear / 1 / 1);
constexpr double kDateAfterLast = dayOf(kLastYear / 12 / 31) + 1;

bool isTimeOfDay(const SYSTEMTIME& time) {
  return time.wHour < 24 && time.wMinute < 60 && time.wSecond < 60 && time.wMilliseconds < 1000;
}

}  // namespace

double roundToMillisecond(double date) {
  return std::round(date * kMillisecondsPerDay) / kMillisecondsPerDay;
}

Day dayAt(double date) {
  return static_cast<Day>(std::floor(roundToMillisecond(date)));
}

double timeOfDayAt(double date) {
  return roundToMillisecond(date) - dayAt(date);
}

double nextMidnight(double date) {
  return std::ceil(roundToMillisecond(date));
}

double nextFullHour(double date) {
  return (std::floor(std::round(date * kSecondsPerDay) / 3600) + 1) / 24;
}

std::optional<SYSTEMTIME> toSystemTime(double date) {
  if (!(date > kFirstDate - 1 && date < kDateAfterLast)) return std::nullopt;
  // Before the first day of the count the whole part goes backwards, the time of day still forwards.
  const double whole = std::trunc(date);
  const std::int64_t seconds = std::llround(std::abs(date - whole) * kSecondsPerDay);
  const auto day = static_cast<Day>(whole) + static_cast<Day>(seconds / kSecondsPerDay);
  const auto calendar = dateOf(day);
  if (calendar.year() < kFirstYear || calendar.year() > kLastYear) return std::nullopt;
  const std::int64_t rest = seconds % kSecondsPerDay;
  return SYSTEMTIME{static_cast<WORD>(static_cast<int>(calendar.year())),
                    static_cast<WORD>(static_cast<unsigned>(calendar.month())),
                    static_cast<WORD>(weekdayOf(day)),
                    static_cast<WORD>(static_cast<unsigned>(calendar.day())),
                    static_cast<WORD>(rest / 3600),
                    static_cast<WORD>(rest / 60 % 60),
                    static_cast<WORD>(rest % 60),
                    0};
}

std::optional<double> toDate(const SYSTEMTIME& time) {
  const auto calendar = std::chrono::year{time.wYear} / time.wMonth / time.wDay;
  if (time.wYear > static_cast<int>(kLastYear) || calendar.year() < kFirstYear || !calendar.ok())
    return std::nullopt;
  if (!isTimeOfDay(time)) return std::nullopt;
  const double day = dayOf(calendar);
  const double timeOfDay = (time.wHour * 3600 + time.wMinute * 60 + time.wSecond) / 86400.0;
  return day < 0 ? day - timeOfDay : day + timeOfDay;
}

}  // namespace emulator
