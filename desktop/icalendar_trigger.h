// The alarms of events and tasks in a calendar file, as far as a device could ring them.
#pragma once

#include <cstdint>
#include <libical/ical.h>
#include <optional>
#include <vector>

#include "desktop/icalendar_notes.h"

namespace desktop {

/// When an alarm rings.
struct AlarmTrigger {
  std::optional<icaltimetype> time;  ///< the fixed time, if it has one
  std::int64_t seconds = 0;          ///< else after the anchor; negative before it
  bool fromEnd = false;              ///< the anchor is the item's end or due date, else its start
};

/// The alarms that ring or show something, in the file's order; what is left out is noted.
std::vector<AlarmTrigger> readTriggers(icalcomponent& item, Notes& notes);

/// Notes, when there are several alarms, that only the earliest of them is kept.
void noteSeveral(std::size_t alarms, Notes& notes);

}  // namespace desktop
