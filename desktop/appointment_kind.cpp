// What is known about appointments.
#include <array>
#include <nlohmann/json.hpp>

#include "desktop/all_day_end.h"
#include "desktop/appointment_difference.h"
#include "desktop/appointment_fields.h"
#include "desktop/appointment_json.h"
#include "desktop/appointment_record.h"
#include "desktop/calendar_text.h"
#include "desktop/item_kind.h"
#include "desktop/local_time.h"
#include "desktop/recurrence_fields.h"
#include "desktop/text.h"

namespace desktop {

namespace {

constexpr std::array kColumns{"START", "END", "SUBJECT"};
constexpr auto kLayouts = seriesLayoutsOf(kAppointmentFields);

const Appointment& appointmentIn(const Item& item) {
  return std::get<Appointment>(item);
}

Item read(WireReader& record, std::uint32_t oid) {
  return readAppointment(record, oid);
}

void adapt(Item& item, std::vector<std::string>& notes) {
  auto& appointment = std::get<Appointment>(item);
  if (!appointment.allDay || canStayAllDay(appointment)) return;
  appointment = fromMidnightToMidnight(appointment);
  notes.push_back("the device can't hold two whole days; it gets them as from midnight to midnight");
}

std::vector<Bytes> write(const Item& item, bool isThere) {
  const Appointment& appointment = appointmentIn(item);
  std::vector<Bytes> records;
  // A series is made anew: of one whose rule stays the same, the device would keep exceptions that are no
  // more.
  if (isThere && appointment.recurrence) records.push_back(clearingRecord());
  records.push_back(writeAppointment(appointment));
  return records;
}

std::vector<Difference> compare(const Item& sent, const Item& device) {
  return compareAppointments(appointmentIn(sent), appointmentIn(device));
}

std::string fileText(const Item& item, const std::string& uid, const FileStyle&) {
  return calendarText(appointmentIn(item), uid);
}

std::u16string title(const Item& item) {
  return appointmentIn(item).subject;
}

std::string spellSubject(const Appointment& item) {
  std::string text = toUtf8(item.subject);
  if (!item.recurrence) return text;
  text += " (" + std::string(shapeOf(item.recurrence->type).name);
  const std::size_t exceptions = item.exceptions.size();
  if (exceptions > 0) {
    text += ", " + std::to_string(exceptions) + (exceptions == 1 ? " exception" : " exceptions");
  }
  return text + ")";
}

std::vector<std::string> cells(const Item& item) {
  const Appointment& appointment = appointmentIn(item);
  const auto spell = appointment.allDay ? spellDay : spellTime;
  return {spell(appointment.start), spell(appointment.end), spellSubject(appointment)};
}

nlohmann::json toJson(const Item& item) {
  return desktop::toJson(appointmentIn(item));
}

}  // namespace

const ItemKind kAppointmentKind{
    .type = ItemType::Appointment,
    .name = "appointments",
    .singular = "appointment",
    .plural = "appointments",
    .folder = "calendar",
    .format = kCalendarFormat,
    .columns = kColumns,
    .layouts = kLayouts,
    .read = read,
    .adapt = adapt,
    .write = write,
    .compare = compare,
    .fileText = fileText,
    .title = title,
    .cells = cells,
    .toJson = toJson,
};

}  // namespace desktop
