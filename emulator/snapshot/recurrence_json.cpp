#include "emulator/snapshot/recurrence_json.h"

#include <array>
#include <limits>

#include "emulator/pim/recurrence_puts.h"
#include "emulator/pim/variant_time.h"
#include "emulator/snapshot/fields.h"
#include "emulator/snapshot/time_text.h"
#include "emulator/snapshot/values.h"

namespace emulator {
namespace {

constexpr const char* kTypeKey = "RecurrenceType";
constexpr const char* kStartKey = "PatternStartDate";
constexpr const char* kEndKey = "PatternEndDate";
constexpr const char* kNoEndKey = "NoEndDate";
constexpr const char* kCountKey = "Occurrences";

/// A number of the pattern that only some types have.
struct Parameter {
  std::string_view key;
  std::int32_t RecurrenceRule::*member;
  std::int32_t greatest;
  bool (*isUsedBy)(RecurrenceType type);
};

constexpr std::array kParameters{
    Parameter{"Interval", &RecurrenceRule::interval, std::numeric_limits<std::int32_t>::max(),
              [](RecurrenceType) { return true; }},
    Parameter{"DayOfWeekMask", &RecurrenceRule::dayMask, kEveryWeekday, usesDayMask},
    Parameter{"DayOfMonth", &RecurrenceRule::dayOfMonth, kLongestMonth, usesDayOfMonth},
    Parameter{"Instance", &RecurrenceRule::instance, kLastInstance, usesInstance},
    Parameter{"MonthOfYear", &RecurrenceRule::monthOfYear, kMonthsPerYear, usesMonth},
};

RecurrenceType readType(const JsonNode& pattern) {
  const auto node = pattern.member(kTypeKey);
  if (!node || node->isNull()) return RecurrenceType::Weekly;
  const auto number = static_cast<std::int32_t>(node->number(0, 6));
  if (!isRecurrenceType(number)) node->refuse("no recurrence type");
  return static_cast<RecurrenceType>(number);
}

void readParameter(const Parameter& parameter, RecurrenceRule& rule, const JsonNode& node) {
  if (!parameter.isUsedBy(rule.type)) {
    node.refuse("not used by RecurrenceType " + std::to_string(static_cast<int>(rule.type)));
  }
  if (!node.isNull()) rule.*parameter.member = static_cast<std::int32_t>(node.number(1, parameter.greatest));
}

void readEndDate(RecurrenceRule& rule, const JsonNode& node) {
  if (node.isNull()) return;
  rule.endDate = readDay(node);
  if (rule.end == SeriesEnd::Never) rule.end = SeriesEnd::OnDate;
}

void readCount(RecurrenceRule& rule, const JsonNode& node) {
  if (node.isNull()) return;
  rule.count = static_cast<std::int32_t>(node.number(1, std::numeric_limits<std::int32_t>::max()));
  rule.end = SeriesEnd::AfterCount;
}

/// What is no parameter. Type and start are read before the others.
constexpr std::array kFields{
    Field<RecurrenceRule>{kTypeKey, [](RecurrenceRule&, const JsonNode&) {}},
    Field<RecurrenceRule>{kStartKey, [](RecurrenceRule&, const JsonNode&) {}},
    Field<RecurrenceRule>{kEndKey, readEndDate},
    Field<RecurrenceRule>{kCountKey, readCount},
    Field<RecurrenceRule>{kNoEndKey,
                          [](RecurrenceRule&, const JsonNode& node) {
                            if (!node.isNull()) static_cast<void>(node.flag());
                          }},
};

}  // namespace

RecurrenceRule readRule(const JsonNode& node, RecurrenceRule rule) {
  const auto start = node.member(kStartKey);
  if (start && !start->isNull()) rule.start = readDay(*start);
  rule = retyped(rule, readType(node));
  node.forEachMember([&rule](std::string_view key, const JsonNode& value) {
    const auto parameter = std::ranges::find(kParameters, key, &Parameter::key);
    if (parameter != kParameters.end()) return readParameter(*parameter, rule, value);
    readField<RecurrenceRule>(kFields, key, rule, value);
  });
  return rule;
}

Json ruleToJson(const RecurrenceRule& rule) {
  Json pattern =
      Json::object({{kTypeKey, static_cast<std::int32_t>(rule.type)}, {kStartKey, localText(rule.start)}});
  for (const Parameter& parameter : kParameters) {
    if (parameter.isUsedBy(rule.type)) pattern[std::string(parameter.key)] = rule.*parameter.member;
  }
  if (rule.end == SeriesEnd::Never) pattern[kNoEndKey] = true;
  if (rule.end == SeriesEnd::OnDate) pattern[kEndKey] = localText(rule.endDate);
  if (rule.end == SeriesEnd::AfterCount) pattern[kCountKey] = rule.count;
  return pattern;
}

Day readDay(const JsonNode& node) {
  const double date = readLocal(node);
  requireInCalendar(node, date, kFirstPlannedDay);
  return dayAt(date);
}

}  // namespace emulator
