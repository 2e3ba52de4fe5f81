#include "desktop/icalendar_event.h"

#include <array>
#include <optional>
#include <string_view>

#include "desktop/icalendar_alarm.h"
#include "desktop/icalendar_busy.h"
#include "desktop/icalendar_handles.h"
#include "desktop/icalendar_properties.h"
#include "desktop/item_refused.h"
#include "desktop/item_text.h"
#include "desktop/local_time.h"

namespace desktop {
namespace {

constexpr std::int64_t kSecondsPerDay = 24 * 60 * 60;

/// What a person would miss on the device, besides what no item keeps.
constexpr std::array kDropped = {
    DroppedProperty{ICAL_RESOURCES_PROPERTY, "resources are not kept on the device"},
};

// In UTF-16 units; the object model refuses longer texts.
constexpr std::size_t kMostSubject = 4096;
constexpr std::size_t kMostLocation = 1023;
constexpr std::size_t kMostCategories = 1023;

void readTexts(icalcomponent& event, Appointment& appointment, Notes& notes) {
  const std::u16string subject = asOneLine(readText(event, ICAL_SUMMARY_PROPERTY));
  const std::u16string location = asOneLine(readText(event, ICAL_LOCATION_PROPERTY));
  appointment.subject = fitting(subject, kMostSubject, "summary", notes);
  appointment.location = fitting(location, kMostLocation, "location", notes);
  appointment.categories = fitting(readCategories(event), kMostCategories, "list of categories", notes);
  appointment.body = withDeviceLineEnds(readText(event, ICAL_DESCRIPTION_PROPERTY));
}

void readTimedEnd(icalcomponent& event, const ZoneTable& zones, CalendarEvent& result) {
  LocalTime& end = result.appointment.end;
  if (icalproperty* dtend = firstProperty(event, ICAL_DTEND_PROPERTY)) {
    const icaltimetype time = zones.timeOf(*dtend);
    if (time.is_date) throw ItemRefused("DTEND is a date, DTSTART a time");
    end = localOf(time);
  } else if (icalproperty* duration = firstProperty(event, ICAL_DURATION_PROPERTY)) {
    end = localOf(icaltime_add(result.start, icalproperty_get_duration(duration)));
  } else {
    end = result.appointment.start;
  }
}

/// The device's last day is the day before DTEND.
void readLastDay(icalcomponent& event, const ZoneTable& zones, CalendarEvent& result) {
  const LocalTime& start = result.appointment.start;
  LocalTime dayAfter = addDays(start, 1);
  if (icalproperty* dtend = firstProperty(event, ICAL_DTEND_PROPERTY)) {
    const icaltimetype time = zones.timeOf(*dtend);
    if (!time.is_date) throw ItemRefused("DTSTART is a date, DTEND a time");
    // Some programs give a one-day entry its own day as the end.
    if (localOf(time) != start) dayAfter = localOf(time);
  } else if (icalproperty* duration = firstProperty(event, ICAL_DURATION_PROPERTY)) {
    const std::int64_t seconds = icaldurationtype_as_int(icalproperty_get_duration(duration));
    if (seconds != 0)
      dayAfter = addDays(start, static_cast<int>((seconds + kSecondsPerDay - 1) / kSecondsPerDay));
  }
  if (dayAfter <= start) throw ItemRefused("the end is before the start");
  result.appointment.end = addDays(dayAfter, -1);
}

void readTimes(icalcomponent& event, const ZoneTable& zones, CalendarEvent& result) {
  icalproperty* dtstart = firstProperty(event, ICAL_DTSTART_PROPERTY);
  if (dtstart == nullptr) throw ItemRefused("there is no DTSTART");
  result.start = zones.timeOf(*dtstart);
  result.appointment.start = localOf(result.start);
  result.appointment.allDay = result.start.is_date != 0;
  if (result.appointment.allDay) {
    readLastDay(event, zones, result);
  } else {
    readTimedEnd(event, zones, result);
  }
  if (result.appointment.end < result.appointment.start) throw ItemRefused("the end is before the start");
}

std::optional<std::uint32_t> namedBusyStatus(icalcomponent& event) {
  std::optional<std::uint32_t> status;
  forEachProperty(event, ICAL_X_PROPERTY, [&](icalproperty& property) {
    if (copyText(icalproperty_get_x_name(&property)) != kBusyProperty) return;
    const std::string value = takeText(icalproperty_get_value_as_string_r(&property));
    for (std::uint32_t i = 0; i < kBusyNames.size(); ++i) {
      if (value == kBusyNames[i]) status = i;
    }
  });
  return status;
}

std::uint32_t readBusyStatus(icalcomponent& event) {
  if (const auto status = namedBusyStatus(event)) return *status;
  icalproperty* transparency = firstProperty(event, ICAL_TRANSP_PROPERTY);
  if (transparency != nullptr && icalproperty_get_transp(transparency) == ICAL_TRANSP_TRANSPARENT)
    return kFree;
  icalproperty* status = firstProperty(event, ICAL_STATUS_PROPERTY);
  if (status != nullptr && icalproperty_get_status(status) == ICAL_STATUS_TENTATIVE) return kTentative;
  return kBusy;
}

void noteUnkept(icalcomponent& event, Notes& notes) {
  noteDropped(event, kDropped, notes);
  icalproperty* status = firstProperty(event, ICAL_STATUS_PROPERTY);
  if (status != nullptr && icalproperty_get_status(status) == ICAL_STATUS_CANCELLED) {
    notes.add("the entry is cancelled; the device shows it like any other");
  }
}

}  // namespace

CalendarEvent readEvent(icalcomponent& event, const ZoneTable& zones, bool repeats, Notes& notes) {
  CalendarEvent result{};
  readTimes(event, zones, result);
  readTexts(event, result.appointment, notes);
  result.appointment.isPrivate = readPrivacy(event, notes);
  result.appointment.busyStatus = readBusyStatus(event);
  readReminder(event, repeats, result.appointment, notes);
  noteUnkept(event, notes);
  return result;
}

}  // namespace desktop
