// Writing calendar files: the entry itself, and one event more for each changed occurrence.
#include <stdexcept>

#include "desktop/icalendar.h"
#include "desktop/icalendar_busy.h"
#include "desktop/icalendar_components.h"
#include "desktop/icalendar_handles.h"
#include "desktop/item_text.h"
#include "desktop/local_time.h"

namespace desktop {
namespace {

/// When the series' own entry of that day begins.
LocalTime occurrenceStart(const Appointment& series, const LocalTime& day) {
  LocalTime start = series.start;
  start.year = day.year;
  start.month = day.month;
  start.day = day.day;
  return start;
}

void addTexts(icalcomponent& event, const Appointment& appointment) {
  addText(event, icalproperty_new_summary, appointment.subject);
  addText(event, icalproperty_new_location, appointment.location);
  // The library writes the commas of this property as they are, so that the list stays a list.
  addText(event, icalproperty_new_categories, tidyList(appointment.categories));
  addText(event, icalproperty_new_description, appointment.body);
}

void addBusyStatus(icalcomponent& event, std::uint32_t status) {
  addProperty(event, icalproperty_new_transp(status == kFree ? ICAL_TRANSP_TRANSPARENT : ICAL_TRANSP_OPAQUE));
  if (status >= kBusyNames.size()) return;
  icalproperty* property = icalproperty_new_x(kBusyNames[status]);
  icalproperty_set_x_name(property, kBusyProperty);
  addProperty(event, property);
}

void addReminder(icalcomponent& event, const Appointment& appointment) {
  if (!appointment.reminderSet) return;
  icaltriggertype trigger{};
  trigger.time = icaltime_null_time();
  trigger.duration.is_neg = appointment.reminderMinutes > 0;
  // In minutes throughout: a day before would be another moment when the clock changes.
  trigger.duration.minutes = appointment.reminderMinutes;
  addAlarm(event, icalproperty_new_trigger(trigger), appointment.subject);
}

ComponentHandle newEvent(const std::string& uid) {
  return newItem(icalcomponent_new_vevent(), uid);
}

/// `end` is the file's: for an all-day entry the day after the last one. An event may be without an end, never
/// without a start.
void addSpan(icalcomponent& event, const Appointment& appointment, const LocalTime& end) {
  if (isNone(appointment.start)) throw std::invalid_argument("has no start");
  addProperty(event, icalproperty_new_dtstart(fileTime(appointment.start, appointment.allDay)));
  if (!isNone(end)) addProperty(event, icalproperty_new_dtend(fileTime(end, appointment.allDay)));
}

void addContents(icalcomponent& event, const Appointment& appointment) {
  addTexts(event, appointment);
  addPrivacy(event, appointment.isPrivate);
  addBusyStatus(event, appointment.busyStatus);
  addReminder(event, appointment);
}

void addDeletedDates(icalcomponent& event, const Appointment& appointment) {
  for (const AppointmentException& exception : appointment.exceptions) {
    if (!exception.deleted) continue;
    const LocalTime start = occurrenceStart(appointment, exception.originalDate);
    addProperty(event, icalproperty_new_exdate(fileTime(start, appointment.allDay)));
  }
}

ComponentHandle entryEvent(const Appointment& appointment, const std::string& uid) {
  ComponentHandle event = newEvent(uid);
  const bool endsAfterIt = appointment.allDay && !isNone(appointment.end);
  addSpan(*event, appointment, endsAfterIt ? addDays(appointment.end, 1) : appointment.end);
  if (appointment.recurrence) {
    addRule(*event, *appointment.recurrence, appointment.allDay);
    addDeletedDates(*event, appointment);
  }
  addContents(*event, appointment);
  return event;
}

/// The series with what the exception says differently.
Appointment changedEntry(const Appointment& series, const AppointmentException& exception) {
  Appointment entry = series;
  entry.start = exception.start;
  entry.end = exception.end;
  entry.reminderSet = exception.reminderSet.value_or(series.reminderSet);
  entry.reminderMinutes = exception.reminderMinutes.value_or(series.reminderMinutes);
  entry.busyStatus = exception.busyStatus.value_or(series.busyStatus);
  entry.subject = exception.subject.value_or(series.subject);
  entry.location = exception.location.value_or(series.location);
  entry.body = exception.body.value_or(series.body);
  return entry;
}

ComponentHandle changedEvent(const Appointment& series, const AppointmentException& exception,
                             const std::string& uid) {
  const Appointment entry = changedEntry(series, exception);
  ComponentHandle event = newEvent(uid);
  addProperty(*event, icalproperty_new_recurrenceid(
                          fileTime(occurrenceStart(series, exception.originalDate), series.allDay)));
  addSpan(*event, entry, entry.end);
  addContents(*event, entry);
  return event;
}

}  // namespace

std::string writeCalendar(const Appointment& appointment, const std::string& uid) {
  const ComponentHandle calendar = newCalendar();
  icalcomponent_add_component(calendar.get(), entryEvent(appointment, uid).release());
  if (appointment.recurrence) {
    for (const AppointmentException& exception : appointment.exceptions) {
      if (exception.deleted) continue;
      icalcomponent_add_component(calendar.get(), changedEvent(appointment, exception, uid).release());
    }
  }
  return takeText(icalcomponent_as_ical_string_r(calendar.get()));
}

}  // namespace desktop
