#include "desktop/appointment_json.h"

#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "desktop/appointment_fields.h"
#include "desktop/local_time.h"
#include "desktop/recurrence_fields.h"
#include "desktop/text.h"

namespace desktop {

namespace {

using Json = nlohmann::json;

std::string keyOf(std::string_view name) {
  std::string key(name);
  std::replace(key.begin(), key.end(), ' ', '_');
  return key;
}

Json valueOf(const std::u16string& text) {
  return toUtf8(text);
}
Json valueOf(std::uint32_t number) {
  return number;
}
Json valueOf(bool flag) {
  return flag;
}
Json valueOf(const LocalTime& time) {
  if (isNone(time)) return nullptr;
  char clock[24];
  std::snprintf(clock, sizeof clock, "T%02u:%02u:%02u", time.hour, time.minute, time.second);
  return spellDay(time) + clock;
}

Json ruleOf(const Recurrence& rule) {
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

Json exceptionOf(const AppointmentException& exception) {
  Json json{{"original_day", spellDay(exception.originalDate)}, {"deleted", exception.deleted}};
  if (exception.deleted) return json;
  json["start"] = valueOf(exception.start);
  json["end"] = valueOf(exception.end);
  const auto add = [&](const char* key, const auto& value) {
    if (value) json[key] = valueOf(*value);
  };
  add("reminder", exception.reminderSet);
  add("reminder_minutes", exception.reminderMinutes);
  add("busy_status", exception.busyStatus);
  add("subject", exception.subject);
  add("location", exception.location);
  add("body", exception.body);
  return json;
}

}  // namespace

Json toJson(const Appointment& appointment) {
  Json json{{"oid", appointment.oid}};
  for (const AppointmentField& field : kAppointmentFields) {
    std::visit([&](auto member) { json[keyOf(field.name)] = valueOf(appointment.*member); }, field.member);
  }
  if (!appointment.recurrence) return json;
  json["repetition"] = ruleOf(*appointment.recurrence);
  json["exceptions"] = Json::array();
  for (const AppointmentException& exception : appointment.exceptions) {
    json["exceptions"].push_back(exceptionOf(exception));
  }
  return json;
}

}  // namespace desktop
