#include "desktop/icalendar_alarm.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "desktop/icalendar_trigger.h"
#include "desktop/icalendar_zone.h"
#include "desktop/local_time.h"

namespace desktop {
namespace {

constexpr std::int64_t kSecondsPerMinute = 60;

std::int64_t lengthOf(const Appointment& appointment) {
  const LocalTime end = appointment.allDay ? addDays(appointment.end, 1) : appointment.end;
  return secondsBetween(appointment.start, end);
}

/// How long before the start the alarm rings, in seconds; nothing when the device has no such reminder.
std::optional<std::int64_t> leadOf(const AlarmTrigger& trigger, bool repeats, const Appointment& appointment,
                                   Notes& notes) {
  if (trigger.time) {
    if (!repeats) return instantOf(appointment.start) - instantOf(localOf(*trigger.time));
    notes.add("a reminder at a fixed time is not kept with a series");
    return std::nullopt;
  }
  const std::int64_t fromStart = trigger.fromEnd ? lengthOf(appointment) : 0;
  return -(fromStart + trigger.seconds);
}

std::optional<std::int64_t> usableLead(const AlarmTrigger& trigger, bool repeats,
                                       const Appointment& appointment, Notes& notes) {
  const std::optional<std::int64_t> lead = leadOf(trigger, repeats, appointment, notes);
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
  for (const AlarmTrigger& trigger : readTriggers(event, notes)) {
    if (const auto lead = usableLead(trigger, repeats, appointment, notes)) leads.push_back(*lead);
  }
  if (leads.empty()) return;
  noteSeveral(leads.size(), notes);
  appointment.reminderSet = true;
  appointment.reminderMinutes = minutesOf(*std::max_element(leads.begin(), leads.end()), notes);
}

}  // namespace desktop
