// One task (VTODO) of a calendar file.
#pragma once

#include <libical/ical.h>

#include "desktop/icalendar_notes.h"
#include "desktop/icalendar_zone.h"
#include "desktop/task.h"

namespace desktop {

/// Throws ItemRefused when the task has times that make no sense, a text that is no UTF-8, or a repetition
/// that the device can't hold.
Task readTodo(icalcomponent& todo, const ZoneTable& zones, Notes& notes);

}  // namespace desktop
