#include "desktop/appointment_json.h"

#include <nlohmann/json.hpp>

#include "desktop/appointment_fields.h"
#include "desktop/local_time.h"
#include "desktop/record_json.h"

namespace desktop {

namespace {

using Json = nlohmann::json;

Json exceptionOf(const AppointmentException& exception) {
  Json json{{"original_day", spellDay(exception.originalDate)}, {"deleted", exception.deleted}};
  if (exception.deleted) return json;
  json["start"] = jsonValue(exception.start);
  json["end"] = jsonValue(exception.end);
  const auto add = [&](const char* key, const auto& value) {
    if (value) json[key] = jsonValue(*value);
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
  addFields(json, kAppointmentFields, appointment);
  if (!appointment.recurrence) return json;
  json["repetition"] = jsonOfRule(*appointment.recurrence);
  json["exceptions"] = Json::array();
  for (const AppointmentException& exception : appointment.exceptions) {
    json["exceptions"].push_back(exceptionOf(exception));
  }
  return json;
}

}  // namespace desktop
