// One event of a calendar file, without its series: times, texts, flags and the reminder.
#pragma once

#include <libical/ical.h>

#include "desktop/appointment.h"
#include "desktop/icalendar_notes.h"
#include "desktop/icalendar_zone.h"

namespace desktop {

struct CalendarEvent {
  Appointment appointment;  ///< without recurrence and exceptions
  icaltimetype start;       ///< with the zone that the file gives it; refers to the zone table
};

/// Throws ItemRefused when the event has no times that make sense, or a text that is no UTF-8.
CalendarEvent readEvent(icalcomponent& event, const ZoneTable& zones, bool repeats, Notes& notes);

}  // namespace desktop
