#include "pim/time_zone.h"

#include <array>
#include <optional>

namespace qorv {

namespace {

constexpr std::int64_t kTicksPerMinute = 600'000'000;
constexpr WORD kLongestMonth = 31;
constexpr WORD kWeeksInRule = 5;

using Bias = std::optional<std::int64_t>;
/// Days of a month that fall on one weekday, ascending, and zeros behind them.
using Weekdays = std::array<WORD, kWeeksInRule>;

std::optional<FILETIME> toFileTime(const SYSTEMTIME& time) {
  FILETIME converted{};
  if (!SystemTimeToFileTime(&time, &converted)) return std::nullopt;
  return converted;
}

std::optional<FILETIME> onDay(SYSTEMTIME date, WORD day) {
  date.wDay = day;
  return toFileTime(date);
}

/// Counts to the 31st in every month: what lies past a month's end is found out when it is converted.
Weekdays daysOn(WORD weekday, WORD weekdayOfFirst) {
  constexpr WORD kDaysInWeek = 7;
  Weekdays days{};
  std::size_t found = 0;
  for (WORD day = 1; day <= kLongestMonth; ++day) {
    if ((weekdayOfFirst + day - 1) % kDaysInWeek == weekday) days[found++] = day;
  }
  return days;
}

/// The moment that a rule (month, day of week, which one of the month) names in a year.
std::optional<FILETIME> applyRule(const SYSTEMTIME& rule, WORD year) {
  const WORD week = rule.wDay;
  if (week < 1 || week > kWeeksInRule) return std::nullopt;
  SYSTEMTIME date = rule;
  date.wYear = year;
  SYSTEMTIME first{};
  const auto start = onDay(date, 1);
  if (!start || !FileTimeToSystemTime(&*start, &first)) return std::nullopt;

  const Weekdays days = daysOn(rule.wDayOfWeek, first.wDayOfWeek);
  const WORD weekBefore = week > 1 ? days[week - 2] : WORD{0};
  const WORD day = days[week - 1] != 0 ? days[week - 1] : weekBefore;
  const auto moment = onDay(date, day);
  return moment ? moment : onDay(date, weekBefore);
}

std::optional<FILETIME> transition(const SYSTEMTIME& date, WORD year, bool isRule) {
  return isRule ? applyRule(date, year) : toFileTime(date);
}

/// From `from` on, and before `to`.
bool isWithin(const FILETIME& time, const FILETIME& from, const FILETIME& to) {
  return CompareFileTime(&time, &from) >= 0 && CompareFileTime(&time, &to) < 0;
}

/// The minutes between local time and UTC at a moment.
Bias biasAt(const TIME_ZONE_INFORMATION& zone, const FILETIME& time) {
  SYSTEMTIME calendar{};
  if (!FileTimeToSystemTime(&time, &calendar)) return std::nullopt;
  const std::int64_t base = zone.Bias;
  if (zone.DaylightDate.wMonth == 0) return base;

  const bool isRule = zone.DaylightDate.wYear == 0;
  const auto daylight = transition(zone.DaylightDate, calendar.wYear, isRule);
  const auto standard = transition(zone.StandardDate, calendar.wYear, isRule);
  if (!daylight || !standard) return std::nullopt;
  const bool spansNewYear = CompareFileTime(&*standard, &*daylight) <= 0;
  const bool isDaylight =
      spansNewYear ? !isWithin(time, *standard, *daylight) : isWithin(time, *daylight, *standard);
  return base + (isDaylight ? zone.DaylightBias : zone.StandardBias);
}

}  // namespace

void AddMinutes(FILETIME& time, std::int64_t minutes) {
  const auto ticks = static_cast<std::uint64_t>(minutes * kTicksPerMinute) +
                     (std::uint64_t{time.dwHighDateTime} << 32 | time.dwLowDateTime);
  time.dwLowDateTime = static_cast<DWORD>(ticks);
  time.dwHighDateTime = static_cast<DWORD>(ticks >> 32);
}

bool LocalToUtc(const TIME_ZONE_INFORMATION& zone, FILETIME& time) {
  const Bias bias = biasAt(zone, time);
  if (bias) AddMinutes(time, *bias);
  return bias.has_value();
}

bool UtcToLocal(const TIME_ZONE_INFORMATION& zone, FILETIME& time) {
  const Bias bias = biasAt(zone, time);
  if (bias) AddMinutes(time, -*bias);
  return bias.has_value();
}

}  // namespace qorv
