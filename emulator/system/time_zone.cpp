#include "emulator/system/time_zone.h"

#include <algorithm>
#include <chrono>
#include <string_view>

namespace emulator {
namespace {

int yearOf(Ticks ticks) {
  const auto time = systemTimeOf(ticks);
  return time ? time->wYear : 0;
}

}  // namespace

TIME_ZONE_INFORMATION utcZone() {
  constexpr std::u16string_view kName = u"UTC";
  TIME_ZONE_INFORMATION zone{};
  std::ranges::copy(kName, zone.StandardName);
  std::ranges::copy(kName, zone.DaylightName);
  return zone;
}

std::optional<Ticks> transitionIn(int year, const SYSTEMTIME& rule) {
  using namespace std::chrono;
  if (rule.wYear != 0) return ticksOf(rule);
  if (rule.wMonth < 1 || rule.wMonth > 12 || rule.wDay < 1 || rule.wDay > 5 || rule.wDayOfWeek > 6)
    return std::nullopt;
  const year_month inMonth{std::chrono::year(year), month(rule.wMonth)};
  const sys_days first = inMonth / weekday(rule.wDayOfWeek)[1];
  const sys_days last = inMonth / weekday(rule.wDayOfWeek)[std::chrono::last];
  SYSTEMTIME date = rule;
  date.wYear = static_cast<WORD>(year);
  date.wDay = static_cast<WORD>(unsigned(year_month_day(std::min(first + weeks(rule.wDay - 1), last)).day()));
  return ticksOf(date);
}

bool TimeZone::hasDaylightTime() const {
  return information_.DaylightDate.wMonth != 0 && information_.StandardDate.wMonth != 0;
}

LONG TimeZone::bias(bool daylight) const {
  return information_.Bias + (daylight ? information_.DaylightBias : information_.StandardBias);
}

bool TimeZone::isDaylight(Ticks moment, LONG standardBias, LONG daylightBias) const {
  if (!hasDaylightTime()) return false;
  const int year = yearOf(moment - standardBias * kTicksPerMinute);
  const auto wallBegin = transitionIn(year, information_.DaylightDate);
  const auto wallEnd = transitionIn(year, information_.StandardDate);
  if (!wallBegin || !wallEnd) return false;
  // Daylight time begins by the clock of standard time, and ends by the clock of daylight time.
  const Ticks begin = *wallBegin + standardBias * kTicksPerMinute;
  const Ticks end = *wallEnd + daylightBias * kTicksPerMinute;
  if (begin < end) return moment >= begin && moment < end;
  return moment < end || moment >= begin;
}

DWORD TimeZone::periodAt(Ticks utc) const {
  if (!hasDaylightTime()) return TIME_ZONE_ID_UNKNOWN;
  return isDaylight(utc, bias(false), bias(true)) ? TIME_ZONE_ID_DAYLIGHT : TIME_ZONE_ID_STANDARD;
}

Ticks TimeZone::toLocal(Ticks utc) const {
  return utc - bias(periodAt(utc) == TIME_ZONE_ID_DAYLIGHT) * kTicksPerMinute;
}

Ticks TimeZone::toUtc(Ticks local) const {
  return local + bias(isDaylight(local, 0, 0)) * kTicksPerMinute;
}

}  // namespace emulator
