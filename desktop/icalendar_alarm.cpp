#include "desktop/icalendar_alarm.h"

#include <algorithm>
#include <ctime>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "desktop/icalendar_zone.h"
#include "desktop/local_time.h"

namespace desktop {
namespace {

constexpr std::int64_t kSecondsPerMinute = 60;

/// ACTION:NONE is how programs say that an event has no alarm, not even their usual one.
bool isPlaceholder(icalproperty* action) {
  return action != nullptr && takeText(icalproperty_get_value_as_string_r(action)) == "NONE";
}

bool ringsOrShows(icalproperty* action) {
  if (action == nullptr) return true;
  const icalproperty_action kind = icalproperty_get_action(action);
  return kind == ICAL_ACTION_DISPLAY || kind == ICAL_ACTION_AUDIO;
}

bool countsFromEnd(icalproperty& trigger) {
  icalparameter* related = icalproperty_get_first_parameter(&trigger, ICAL_RELATED_PARAMETER);
  return related != nullptr && icalparameter_get_related(related) == ICAL_RELATED_END;
}

std::int64_t lengthOf(const Appointment& appointment) {
  const LocalTime end = appointment.allDay ? addDays(appointment.end, 1) : appointment.end;
  return secondsBetween(appointment.start, end);
}

/// How long before the start the alarm rings, in seconds; nothing when the device has no such reminder.
std::optional<std::int64_t> leadOf(icalcomponent& alarm, bool repeats, const Appointment& appointment,
                                   Notes& notes) {
  icalproperty* trigger = icalcomponent_get_first_property(&alarm, ICAL_TRIGGER_PROPERTY);
  if (trigger == nullptr) {
    notes.add("a reminder whose time can't be read is not kept");
    return std::nullopt;
  }
  const icaltriggertype when = icalproperty_get_trigger(trigger);
  if (icaltime_is_null_time(when.time) == 0) {
    if (!repeats) return instantOf(appointment.start) - instantOf(localOf(when.time));
    notes.add("a reminder at a fixed time is not kept with a series");
    return std::nullopt;
  }
  const std::int64_t fromStart = countsFromEnd(*trigger) ? lengthOf(appointment) : 0;
  return -(fromStart + icaldurationtype_as_int(when.duration));
}

std::optional<std::int64_t> usableLead(icalcomponent& alarm, bool repeats, const Appointment& appointment,
                                       Notes& notes) {
  icalproperty* action = icalcomponent_get_first_property(&alarm, ICAL_ACTION_PROPERTY);
  if (isPlaceholder(action)) return std::nullopt;
  if (!ringsOrShows(action)) {
    notes.add("a reminder that sends mail or runs a program is not kept");
    return std::nullopt;
  }
  const std::optional<std::int64_t> lead = leadOf(alarm, repeats, appointment, notes);
  if (lead && *lead < 0) {
    notes.add("a reminder after the start is not kept");
    return std::nullopt;
  }
  return lead;
}

std::uint32_t minutesOf(std::int64_t lead, Notes& notes) {
  if (lead % kSecondsPerMinute != 0) notes.add("the reminder is set to whole minutes");
  const std::int64_t minutes = (lead + kSecondsPerMinute - 1) / kSecondsPerMinute;
  if (minutes <= kMostReminderMinutes) return static_cast<std::uint32_t>(minutes);
  notes.add("the reminder is set to one year before the start, the device's earliest");
  return kMostReminderMinutes;
}

}  // namespace

void readReminder(icalcomponent& event, bool repeats, Appointment& appointment, Notes& notes) {
  std::vector<std::int64_t> leads;
  for (icalcomponent* alarm = icalcomponent_get_first_component(&event, ICAL_VALARM_COMPONENT);
       alarm != nullptr; alarm = icalcomponent_get_next_component(&event, ICAL_VALARM_COMPONENT)) {
    if (const auto lead = usableLead(*alarm, repeats, appointment, notes)) leads.push_back(*lead);
  }
  if (leads.empty()) return;
  if (leads.size() > 1) {
    notes.add("of " + std::to_string(leads.size()) + " reminders only the earliest is kept");
  }
  appointment.reminderSet = true;
  appointment.reminderMinutes = minutesOf(*std::max_element(leads.begin(), leads.end()), notes);
}

}  // namespace desktop
