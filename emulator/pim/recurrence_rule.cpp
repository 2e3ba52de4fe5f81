#include "emulator/pim/recurrence_rule.h"

namespace emulator {
namespace {

bool within(std::int32_t value, std::int32_t low, std::int32_t high) {
  return value >= low && value <= high;
}

}  // namespace

bool isRecurrenceType(std::int32_t number) {
  return within(number, 0, 6) && number != 4;
}

bool isWellFormed(const RecurrenceRule& rule) {
  return isRecurrenceType(static_cast<std::int32_t>(rule.type)) && rule.interval >= 1 &&
         within(rule.start, kFirstDay, kLastDay) &&
         (!usesDayMask(rule.type) || within(rule.dayMask, 1, kEveryWeekday)) &&
         (!usesDayOfMonth(rule.type) || within(rule.dayOfMonth, 1, kLongestMonth)) &&
         (!usesInstance(rule.type) || within(rule.instance, 1, kLastInstance)) &&
         (!usesMonth(rule.type) || within(rule.monthOfYear, 1, kMonthsPerYear));
}

}  // namespace emulator
