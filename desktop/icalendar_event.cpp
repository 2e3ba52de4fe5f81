#include "desktop/icalendar_event.h"

#include <array>
#include <optional>
#include <string_view>

#include "desktop/icalendar_alarm.h"
#include "desktop/icalendar_busy.h"
#include "desktop/icalendar_handles.h"
#include "desktop/icalendar_refused.h"
#include "desktop/icalendar_text.h"
#include "desktop/input_error.h"
#include "desktop/local_time.h"
#include "desktop/text.h"

namespace desktop {
namespace {

constexpr std::int64_t kSecondsPerDay = 24 * 60 * 60;

struct DroppedProperty {
  icalproperty_kind kind;
  std::string_view note;
};

/// What a person would miss on the device.
constexpr std::array kDropped = {
    DroppedProperty{ICAL_ATTENDEE_PROPERTY, "attendees are not kept on the device"},
    DroppedProperty{ICAL_ORGANIZER_PROPERTY, "the organizer is not kept on the device"},
    DroppedProperty{ICAL_ATTACH_PROPERTY, "attachments are not kept on the device"},
    DroppedProperty{ICAL_URL_PROPERTY, "the web address is not kept on the device"},
    DroppedProperty{ICAL_GEO_PROPERTY, "the position on the map is not kept on the device"},
    DroppedProperty{ICAL_COMMENT_PROPERTY, "comments are not kept on the device"},
    DroppedProperty{ICAL_CONTACT_PROPERTY, "contacts are not kept on the device"},
    DroppedProperty{ICAL_RESOURCES_PROPERTY, "resources are not kept on the device"},
};

// In UTF-16 units; the object model refuses longer texts.
constexpr std::size_t kMostSubject = 4096;
constexpr std::size_t kMostLocation = 1023;
constexpr std::size_t kMostCategories = 1023;

/// Without these an event would be at another time; the parser leaves out those that it can't read.
constexpr std::array<std::string_view, 8> kTimeProperties = {
    "DTSTART", "DTEND", "DURATION", "RRULE", "RDATE", "EXDATE", "EXRULE", "RECURRENCE-ID"};

icalproperty* first(icalcomponent& event, icalproperty_kind kind) {
  return icalcomponent_get_first_property(&event, kind);
}

std::u16string decode(icalproperty& property) {
  try {
    return withFileLineEnds(toUtf16(copyText(icalvalue_get_text(icalproperty_get_value(&property)))));
  } catch (const InputError&) {
    throw ItemRefused(copyText(icalproperty_get_property_name(&property)) + " is no UTF-8 text");
  }
}

/// The first one counts.
std::u16string readText(icalcomponent& event, icalproperty_kind kind) {
  icalproperty* property = first(event, kind);
  return property == nullptr ? std::u16string() : decode(*property);
}

/// Several CATEGORIES make one list.
std::u16string readCategories(icalcomponent& event) {
  std::u16string list;
  forEachProperty(event, ICAL_CATEGORIES_PROPERTY,
                  [&](icalproperty& property) { list += decode(property) + u','; });
  return tidyList(asOneLine(list));
}

/// As much as the device takes.
std::u16string fitting(const std::u16string& text, std::size_t limit, std::string_view name, Notes& notes) {
  if (text.size() <= limit) return text;
  notes.add("the " + std::string(name) + " is cut to the device's " + std::to_string(limit) + " characters");
  return std::u16string(cutTo(text, limit));
}

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
  if (icalproperty* dtend = first(event, ICAL_DTEND_PROPERTY)) {
    const icaltimetype time = zones.timeOf(*dtend);
    if (time.is_date) throw ItemRefused("DTEND is a date, DTSTART a time");
    end = localOf(time);
  } else if (icalproperty* duration = first(event, ICAL_DURATION_PROPERTY)) {
    end = localOf(icaltime_add(result.start, icalproperty_get_duration(duration)));
  } else {
    end = result.appointment.start;
  }
}

/// The device's last day is the day before DTEND.
void readLastDay(icalcomponent& event, const ZoneTable& zones, CalendarEvent& result) {
  const LocalTime& start = result.appointment.start;
  LocalTime dayAfter = addDays(start, 1);
  if (icalproperty* dtend = first(event, ICAL_DTEND_PROPERTY)) {
    const icaltimetype time = zones.timeOf(*dtend);
    if (!time.is_date) throw ItemRefused("DTSTART is a date, DTEND a time");
    // Some programs give a one-day entry its own day as the end.
    if (localOf(time) != start) dayAfter = localOf(time);
  } else if (icalproperty* duration = first(event, ICAL_DURATION_PROPERTY)) {
    const std::int64_t seconds = icaldurationtype_as_int(icalproperty_get_duration(duration));
    if (seconds != 0)
      dayAfter = addDays(start, static_cast<int>((seconds + kSecondsPerDay - 1) / kSecondsPerDay));
  }
  if (dayAfter <= start) throw ItemRefused("the end is before the start");
  result.appointment.end = addDays(dayAfter, -1);
}

void readTimes(icalcomponent& event, const ZoneTable& zones, CalendarEvent& result) {
  icalproperty* dtstart = first(event, ICAL_DTSTART_PROPERTY);
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
  icalproperty* transparency = first(event, ICAL_TRANSP_PROPERTY);
  if (transparency != nullptr && icalproperty_get_transp(transparency) == ICAL_TRANSP_TRANSPARENT)
    return kFree;
  icalproperty* status = first(event, ICAL_STATUS_PROPERTY);
  if (status != nullptr && icalproperty_get_status(status) == ICAL_STATUS_TENTATIVE) return kTentative;
  return kBusy;
}

bool readPrivacy(icalcomponent& event, Notes& notes) {
  icalproperty* property = first(event, ICAL_CLASS_PROPERTY);
  if (property == nullptr) return false;
  const icalproperty_class access = icalproperty_get_class(property);
  if (access == ICAL_CLASS_CONFIDENTIAL)
    notes.add("the entry is confidential; the device knows only private");
  return access == ICAL_CLASS_PRIVATE || access == ICAL_CLASS_CONFIDENTIAL;
}

void noteDropped(icalcomponent& event, Notes& notes) {
  for (const DroppedProperty& dropped : kDropped) {
    if (hasProperty(event, dropped.kind)) notes.add(std::string(dropped.note));
  }
  icalproperty* status = first(event, ICAL_STATUS_PROPERTY);
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
  noteDropped(event, notes);
  return result;
}

void refuseBrokenTimes(icalcomponent& event) {
  forEachProperty(event, ICAL_XLICERROR_PROPERTY, [](icalproperty& property) {
    // "Can't parse as DATE-TIME value in DTSTART property. Removing entire property: 2005031"
    const std::string remark = copyText(icalproperty_get_xlicerror(&property));
    for (const std::string_view name : kTimeProperties) {
      if (remark.find(" in " + std::string(name) + " property") == std::string::npos) continue;
      const std::size_t value = remark.find(": ");
      throw ItemRefused(std::string(name) + " can't be read" +
                        (value == std::string::npos ? "" : remark.substr(value)));
    }
  });
}

std::string uidOf(icalcomponent& component) {
  icalproperty* uid = first(component, ICAL_UID_PROPERTY);
  return uid == nullptr ? std::string() : copyText(icalproperty_get_uid(uid));
}

bool hasProperty(icalcomponent& component, icalproperty_kind kind) {
  return first(component, kind) != nullptr;
}

}  // namespace desktop
