// What the events and tasks that are written into calendar files are made of.
#pragma once

#include <libical/ical.h>
#include <string>

#include "desktop/appointment.h"
#include "desktop/icalendar_handles.h"

namespace desktop {

/// A calendar without items.
ComponentHandle newCalendar();

/// Takes over a fresh component and gives it what every item of a calendar must have.
ComponentHandle newItem(icalcomponent* component, const std::string& uid);

/// Takes over the property.
void addProperty(icalcomponent& item, icalproperty* property);

/// Nothing for the empty text.
void addText(icalcomponent& item, icalproperty* (*make)(const char*), const std::u16string& text);

void addPrivacy(icalcomponent& item, bool isPrivate);

/// Throws std::invalid_argument when the recurrence holds numbers that make no rule.
void addRule(icalcomponent& item, const Recurrence& recurrence, bool allDay);

/// An alarm that shows the item's subject; takes over the trigger.
void addAlarm(icalcomponent& item, icalproperty* trigger, const std::u16string& subject);

/// A DATE for what lasts whole days, else a floating time.
icaltimetype fileTime(const LocalTime& time, bool allDay);

}  // namespace desktop
