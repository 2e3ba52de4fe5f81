#include "desktop/record_json.h"

#include <algorithm>
#include <cstdio>

#include "desktop/local_time.h"
#include "desktop/recurrence_fields.h"
#include "desktop/text.h"

namespace desktop {

using Json = nlohmann::json;

std::string keyOf(std::string_view name) {
  std::string key(name);
  std::replace(key.begin(), key.end(), ' ', '_');
  return key;
}

Json jsonValue(const std::u16string& text) {
  return toUtf8(text);
}

Json jsonValue(std::uint32_t number) {
  return number;
}

Json jsonValue(bool flag) {
  return flag;
}

Json jsonValue(const LocalTime& time) {
  if (isNone(time)) return nullptr;
  char clock[24];
  std::snprintf(clock, sizeof clock, "T%02u:%02u:%02u", time.hour, time.minute, time.second);
  return spellDay(time) + clock;
}

Json jsonOfRule(const Recurrence& rule) {
  Json json{{"type", shapeOf(rule.type).name},
            {"type_number", static_cast<int>(rule.type)},
            {"first_day", spellDay(rule.start)},
            {"interval", rule.interval}};
  for (const RecurrenceParameter& parameter : kRecurrenceParameters) {
    if (uses(rule.type, parameter)) json[keyOf(parameter.name)] = rule.*parameter.member;
  }
  if (rule.end == RecurrenceEnd::OnDate) json["last_day"] = spellDay(rule.endDate);
  if (rule.end == RecurrenceEnd::AfterOccurrences) json["occurrences"] = rule.occurrences;
  return json;
}

}  // namespace desktop
