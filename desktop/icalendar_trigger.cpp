#include "desktop/icalendar_trigger.h"

#include <string>

#include "desktop/icalendar_handles.h"

namespace desktop {
namespace {

/// ACTION:NONE is how programs say that an item has no alarm, not even their usual one.
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

/// Nothing when the device could not ring it.
std::optional<AlarmTrigger> readTrigger(icalcomponent& alarm, Notes& notes) {
  icalproperty* action = icalcomponent_get_first_property(&alarm, ICAL_ACTION_PROPERTY);
  if (isPlaceholder(action)) return std::nullopt;
  if (!ringsOrShows(action)) {
    notes.add("a reminder that sends mail or runs a program is not kept");
    return std::nullopt;
  }
  icalproperty* property = icalcomponent_get_first_property(&alarm, ICAL_TRIGGER_PROPERTY);
  if (property == nullptr) {
    notes.add("a reminder whose time can't be read is not kept");
    return std::nullopt;
  }
  const icaltriggertype when = icalproperty_get_trigger(property);
  AlarmTrigger trigger;
  if (icaltime_is_null_time(when.time) == 0) {
    trigger.time = when.time;
  } else {
    trigger.seconds = icaldurationtype_as_int(when.duration);
    trigger.fromEnd = countsFromEnd(*property);
  }
  return trigger;
}

}  // namespace

std::vector<AlarmTrigger> readTriggers(icalcomponent& item, Notes& notes) {
  std::vector<AlarmTrigger> triggers;
  for (icalcomponent* alarm = icalcomponent_get_first_component(&item, ICAL_VALARM_COMPONENT);
       alarm != nullptr; alarm = icalcomponent_get_next_component(&item, ICAL_VALARM_COMPONENT)) {
    if (const auto trigger = readTrigger(*alarm, notes)) triggers.push_back(*trigger);
  }
  return triggers;
}

void noteSeveral(std::size_t alarms, Notes& notes) {
  if (alarms > 1) notes.add("of " + std::to_string(alarms) + " reminders only the earliest is kept");
}

}  // namespace desktop
