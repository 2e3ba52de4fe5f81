#include "emulator/pim/occurrence_cursor.h"

#include <algorithm>
#include <libical/ical.h>
#include <limits>

namespace emulator {
namespace {

// libical expands no further than the year 2582, the platform's calendar ends with 2999. The Gregorian
// calendar repeats, weekdays included, every 400 years; so a run begins in libical's years 2000 to 2399 and
// ends, at the latest, 150 years on.
constexpr std::int64_t kCalendarCycle = 146097;
constexpr std::int64_t kCycleStart = dayOf(std::chrono::year{2000} / 1 / 1);
constexpr std::int64_t kDaysPerRun = 150 * 365;

// No series has more occurrences than the calendar has days. Each period of a well-formed rule holds one, so
// this is never reached unless the expansion goes astray; then the walk ends.
constexpr std::int32_t kMaximumSteps = kLastDay + kEveryWeekday;

std::int64_t shiftIntoCycle(std::int64_t day) {
  const std::int64_t offset = day - kCycleStart;
  const std::int64_t inCycle = ((offset % kCalendarCycle) + kCalendarCycle) % kCalendarCycle;
  return offset - inCycle;
}

icaltimetype toIcal(std::int64_t day) {
  const auto date = dateOf(static_cast<Day>(day));
  icaltimetype time =
      icaltime_null_time();  // the null date has negative times of day, which stop the expansion
  time.is_date = 1;
  time.year = static_cast<int>(date.year());
  time.month = static_cast<int>(static_cast<unsigned>(date.month()));
  time.day = static_cast<int>(static_cast<unsigned>(date.day()));
  return time;
}

std::int64_t fromIcal(const icaltimetype& time) {
  return dayOf(std::chrono::year{time.year} / time.month / time.day);
}

template <std::size_t size>
void setList(short (&list)[size], int first, int last) {
  short* end = list;
  for (int value = first; value <= last; ++value) *end++ = static_cast<short>(value);
  *end = ICAL_RECURRENCE_ARRAY_MAX;
}

// A day of month that a month lacks is that month's last day: of the days 28 to n, the last that exists.
void setDayOfMonth(icalrecurrencetype& recurrence, std::int32_t dayOfMonth) {
  constexpr int kDaysOfEveryMonth = 28;
  setList(recurrence.by_month_day, std::min(kDaysOfEveryMonth, dayOfMonth), dayOfMonth);
  setList(recurrence.by_set_pos, -1, -1);
}

void setDayMask(icalrecurrencetype& recurrence, std::int32_t mask) {
  short* end = recurrence.by_day;
  for (int weekday = 0; weekday < 7; ++weekday) {
    if ((mask & (1 << weekday)) != 0) *end++ = static_cast<short>(ICAL_SUNDAY_WEEKDAY + weekday);
  }
  *end = ICAL_RECURRENCE_ARRAY_MAX;
}

icalrecurrencetype_frequency frequencyOf(RecurrenceType type) {
  switch (type) {
    case RecurrenceType::Daily:
      return ICAL_DAILY_RECURRENCE;
    case RecurrenceType::Weekly:
      return ICAL_WEEKLY_RECURRENCE;
    case RecurrenceType::Monthly:
    case RecurrenceType::MonthNth:
      return ICAL_MONTHLY_RECURRENCE;
    case RecurrenceType::Yearly:
    case RecurrenceType::YearNth:
      break;
  }
  return ICAL_YEARLY_RECURRENCE;
}

icalrecurrencetype toIcal(const RecurrenceRule& rule) {
  icalrecurrencetype recurrence;
  icalrecurrencetype_clear(&recurrence);
  recurrence.freq = frequencyOf(rule.type);
  recurrence.interval =
      static_cast<short>(std::min<std::int32_t>(rule.interval, std::numeric_limits<short>::max()));
  recurrence.week_start = ICAL_SUNDAY_WEEKDAY;
  if (usesDayMask(rule.type)) setDayMask(recurrence, rule.dayMask);
  if (usesDayOfMonth(rule.type)) setDayOfMonth(recurrence, rule.dayOfMonth);
  if (usesInstance(rule.type)) {
    const int position = rule.instance == kLastInstance ? -1 : rule.instance;
    setList(recurrence.by_set_pos, position, position);
  }
  if (usesMonth(rule.type)) setList(recurrence.by_month, rule.monthOfYear, rule.monthOfYear);
  return recurrence;
}

}  // namespace

void OccurrenceCursor::IteratorFree::operator()(icalrecur_iterator_impl* iterator) const {
  icalrecur_iterator_free(iterator);
}

OccurrenceCursor::OccurrenceCursor(const RecurrenceRule& rule, Day from)
    : rule_(rule), periods_(rule), from_(std::max(from, rule.start)) {
  if (isWellFormed(rule) && from_ <= kLastDay) startRun(periods_.indexAt(static_cast<Day>(from_)));
}

std::optional<Day> OccurrenceCursor::next() {
  while (iterator_ && ++steps_ <= kMaximumSteps) {
    const std::optional<std::int64_t> day = step();
    if (!day || *day > runEnd_) {
      if (!startRun(nextPeriod_)) break;
    } else if (*day > kLastDay) {
      break;
    } else if (*day >= from_) {
      return static_cast<Day>(*day);
    }
  }
  iterator_.reset();
  return std::nullopt;
}

// An interval that does not fit libical's 16 bits leaves one period to a run.
bool OccurrenceCursor::startRun(std::int64_t period) {
  const std::int64_t start = periods_.startOf(period);
  if (start > kLastDay) return false;
  const bool fits = rule_.interval <= std::numeric_limits<short>::max();
  nextPeriod_ = period + (fits ? periods_.countWithin(kDaysPerRun) : 1);
  runEnd_ = periods_.endOf(nextPeriod_ - 1);
  shift_ = shiftIntoCycle(start);
  iterator_.reset(icalrecur_iterator_new(toIcal(rule_), toIcal(start - shift_)));
  return iterator_ != nullptr;
}

std::optional<std::int64_t> OccurrenceCursor::step() {
  const icaltimetype time = icalrecur_iterator_next(iterator_.get());
  if (icaltime_is_null_time(time) != 0) return std::nullopt;
  return fromIcal(time) + shift_;
}

}  // namespace emulator
