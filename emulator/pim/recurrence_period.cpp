#include "emulator/pim/recurrence_period.h"

#include <algorithm>
#include <bit>

namespace emulator {
namespace {

// Day 1 of the count, 1899-12-31, is a Sunday.
constexpr std::int64_t kFirstSunday = 1;
constexpr std::int64_t kDaysPerWeek = 7;
static_assert(weekdayOf(kFirstSunday) == 0);

constexpr std::int64_t floorDivide(std::int64_t dividend, std::int64_t divisor) {
  const std::int64_t quotient = dividend / divisor;
  return quotient * divisor > dividend ? quotient - 1 : quotient;
}

// Far beyond the platform's last year the calendar classes give up; any later period is as good as the first
// such.
constexpr std::int64_t kYearPastTheCalendar = 3001;

std::int64_t firstOfMonth(std::int64_t month) {
  const std::int64_t year = std::min(month / kMonthsPerYear, kYearPastTheCalendar);
  return dayOf(std::chrono::year{static_cast<int>(year)} / static_cast<int>(month % kMonthsPerYear + 1) / 1);
}

}  // namespace

RecurrencePeriods::RecurrencePeriods(const RecurrenceRule& rule)
    : unit_(unitOf(rule.type)),
      interval_(rule.interval),
      firstUnit_(unitAt(rule.start)),
      occurrencesEach_(unit_ == Unit::Weeks ? std::popcount(static_cast<std::uint32_t>(rule.dayMask)) : 1) {}

std::int64_t RecurrencePeriods::indexAt(Day day) const {
  return floorDivide(unitAt(day) - firstUnit_, interval_);
}

std::int64_t RecurrencePeriods::startOf(std::int64_t index) const {
  return startOfUnit(firstUnit_ + index * interval_);
}

std::int64_t RecurrencePeriods::endOf(std::int64_t index) const {
  return startOfUnit(firstUnit_ + index * interval_ + 1) - 1;
}

std::int64_t RecurrencePeriods::countWithin(std::int64_t days) const {
  constexpr std::int64_t kLongest[] = {1, kDaysPerWeek, kLongestMonth, 366};
  return std::max<std::int64_t>(1, days / (kLongest[static_cast<int>(unit_)] * interval_));
}

RecurrencePeriods::Unit RecurrencePeriods::unitOf(RecurrenceType type) {
  switch (type) {
    case RecurrenceType::Daily:
      return Unit::Days;
    case RecurrenceType::Weekly:
      return Unit::Weeks;
    case RecurrenceType::Monthly:
    case RecurrenceType::MonthNth:
      return Unit::Months;
    case RecurrenceType::Yearly:
    case RecurrenceType::YearNth:
      break;
  }
  return Unit::Years;
}

std::int64_t RecurrencePeriods::unitAt(std::int64_t day) const {
  if (unit_ == Unit::Days) return day;
  if (unit_ == Unit::Weeks) return floorDivide(day - kFirstSunday, kDaysPerWeek);
  const std::chrono::year_month_day date = dateOf(static_cast<Day>(day));
  const std::int64_t year = static_cast<int>(date.year());
  return unit_ == Unit::Years ? year : year * kMonthsPerYear + static_cast<unsigned>(date.month()) - 1;
}

std::int64_t RecurrencePeriods::startOfUnit(std::int64_t unit) const {
  switch (unit_) {
    case Unit::Days:
      return unit;
    case Unit::Weeks:
      return unit * kDaysPerWeek + kFirstSunday;
    case Unit::Months:
      return firstOfMonth(unit);
    case Unit::Years:
      break;
  }
  return firstOfMonth(unit * kMonthsPerYear);
}

}  // namespace emulator
