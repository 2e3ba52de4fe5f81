// Alarms of events in calendar files and the device's one reminder.
#pragma once

#include <libical/ical.h>

#include "desktop/appointment.h"
#include "desktop/icalendar_notes.h"

namespace desktop {

/// The device accepts no reminder further ahead: one year.
constexpr std::uint32_t kMostReminderMinutes = 525600;

/// Sets the reminder from the event's alarms; the appointment's times are those of the event. Of several
/// alarms the earliest is kept. An alarm at a fixed time is taken only from an event that doesn't repeat.
void readReminder(icalcomponent& event, bool repeats, Appointment& appointment, Notes& notes);

}  // namespace desktop
