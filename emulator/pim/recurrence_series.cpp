#include "emulator/pim/recurrence_series.h"

#include <algorithm>

#include "emulator/pim/occurrence_cursor.h"

namespace emulator {
namespace {

// The occurrences of one period through `last`.
std::int32_t countInPeriod(const RecurrenceRule& rule, const RecurrencePeriods& periods, std::int64_t period,
                           Day last) {
  const std::int64_t end = std::min<std::int64_t>(periods.endOf(period), last);
  OccurrenceCursor cursor(rule, static_cast<Day>(std::min<std::int64_t>(periods.startOf(period), kLastDay)));
  std::int32_t count = 0;
  for (auto day = cursor.next(); day && *day <= end; day = cursor.next()) ++count;
  return count;
}

std::optional<Day> nthFrom(const RecurrenceRule& rule, Day from, std::int64_t n) {
  OccurrenceCursor cursor(rule, from);
  std::optional<Day> day = cursor.next();
  while (day && --n > 0) day = cursor.next();
  return day;
}

}  // namespace

std::int32_t countThrough(const RecurrenceRule& rule, Day day) {
  if (!isWellFormed(rule) || day < rule.start) return 0;
  const Day last = std::min(day, kLastDay);
  const RecurrencePeriods periods(rule);
  const std::int64_t period = periods.indexAt(last);
  const std::int32_t atTheEnd = countInPeriod(rule, periods, period, last);
  if (period == 0) return atTheEnd;
  const auto between = static_cast<std::int32_t>((period - 1) * periods.occurrencesEach());
  return countInPeriod(rule, periods, 0, last) + between + atTheEnd;
}

std::optional<Day> nthOccurrence(const RecurrenceRule& rule, std::int32_t n) {
  if (!isWellFormed(rule) || n < 1) return std::nullopt;
  const RecurrencePeriods periods(rule);
  const std::int32_t atTheStart = countInPeriod(rule, periods, 0, kLastDay);
  if (n <= atTheStart) return nthFrom(rule, rule.start, n);
  const std::int64_t further = n - atTheStart - 1;
  const std::int64_t start = periods.startOf(1 + further / periods.occurrencesEach());
  if (start > kLastDay) return std::nullopt;
  return nthFrom(rule, static_cast<Day>(start), further % periods.occurrencesEach() + 1);
}

bool isOccurrence(const RecurrenceRule& rule, Day day) {
  if (day < rule.start || OccurrenceCursor(rule, day).next() != day) return false;
  return rule.end == SeriesEnd::Never || (rule.end == SeriesEnd::OnDate && day <= rule.endDate) ||
         (rule.end == SeriesEnd::AfterCount && countThrough(rule, day) <= rule.count);
}

std::optional<Day> firstOccurrence(const RecurrenceRule& rule) {
  const std::optional<Day> day = OccurrenceCursor(rule, rule.start).next();
  return day && isOccurrence(rule, *day) ? day : std::nullopt;
}

std::int32_t countOccurrences(const RecurrenceRule& rule) {
  const Day end = rule.end == SeriesEnd::OnDate ? rule.endDate : kLastDay;
  const std::int32_t count = countThrough(rule, end);
  return rule.end == SeriesEnd::AfterCount ? std::clamp(rule.count, 0, count) : count;
}

std::int32_t statedCount(const RecurrenceRule& rule) {
  return rule.end == SeriesEnd::AfterCount ? rule.count : countOccurrences(rule);
}

std::optional<Day> lastOccurrence(const RecurrenceRule& rule) {
  return nthOccurrence(rule, countOccurrences(rule));
}

std::optional<Day> occurrenceBefore(const RecurrenceRule& rule, Day day) {
  return nthOccurrence(rule, std::min(countThrough(rule, day - 1), countOccurrences(rule)));
}

std::optional<Day> occurrenceAfter(const RecurrenceRule& rule, Day day) {
  const std::optional<Day> next = OccurrenceCursor(rule, day + 1).next();
  return next && isOccurrence(rule, *next) ? next : std::nullopt;
}

}  // namespace emulator
