#include "emulator/pim/recurrence_puts.h"

#include <algorithm>

#include "emulator/pim/recurrence_series.h"
#include "emulator/pim/variant_time.h"
#include "platform/outlook.h"

namespace emulator {
namespace {

constexpr std::int32_t kDefaultOccurrences = 10;

Day startDayOf(const ItemRecord& item, const LocalClock& clock) {
  const bool isTask = item.table().kind == ObjectKind::Task;
  const double start = item.get<double>(isTask ? taskProperty("StartDate") : kStart);
  if (start != kNoDate) return dayAt(start);
  const double due = isTask ? item.get<double>(taskProperty("DueDate")) : kNoDate;
  return dayAt(due != kNoDate ? due : clock());
}

std::int32_t dayOfMonthOf(Day day) {
  return static_cast<std::int32_t>(static_cast<unsigned>(dateOf(day).day()));
}

std::int32_t monthOf(Day day) {
  return static_cast<std::int32_t>(static_cast<unsigned>(dateOf(day).month()));
}

// The rule without what its type and its end have no use for.
RecurrenceRule essenceOf(RecurrenceRule rule) {
  if (!usesDayMask(rule.type)) rule.dayMask = 0;
  if (!usesDayOfMonth(rule.type)) rule.dayOfMonth = 0;
  if (!usesInstance(rule.type)) rule.instance = 0;
  if (!usesMonth(rule.type)) rule.monthOfYear = 0;
  if (rule.end != SeriesEnd::OnDate) rule.endDate = kLastDay;
  if (rule.end != SeriesEnd::AfterCount) rule.count = 0;
  return rule;
}

}  // namespace

RecurrenceRule freshRule(const ItemRecord& item, const LocalClock& clock) {
  RecurrenceRule rule;
  rule.start = startDayOf(item, clock);
  return retyped(rule, RecurrenceType::Weekly);
}

RecurrenceRule retyped(const RecurrenceRule& rule, RecurrenceType type) {
  constexpr std::int32_t kDaysPerWeek = 7;
  RecurrenceRule other = rule;
  other.type = type;
  other.interval = 1;
  other.dayMask = weekdayBit(rule.start);
  other.dayOfMonth = dayOfMonthOf(rule.start);
  other.instance = (other.dayOfMonth - 1) / kDaysPerWeek + 1;
  other.monthOfYear = monthOf(rule.start);
  return other;
}

RecurrenceRule ending(const RecurrenceRule& rule) {
  RecurrenceRule other = rule;
  other.end = SeriesEnd::AfterCount;
  other.count = kDefaultOccurrences;
  return other;
}

std::optional<Day> endDayOf(const RecurrenceRule& rule) {
  if (rule.end == SeriesEnd::Never) return std::nullopt;
  if (rule.end == SeriesEnd::OnDate) return rule.endDate;
  return lastOccurrence(rule).value_or(rule.start);
}

void setRule(PimItem& item, const RecurrenceRule& rule, bool keepsExceptions) {
  const bool isSame = keepsExceptions || (item.rule && essenceOf(*item.rule) == essenceOf(rule));
  if (!isSame) item.exceptionsDropped = true;
  item.rule = rule;
  item.ruleChanged = true;
}

}  // namespace emulator
