// Properties that events and tasks of a calendar file have in common.
#pragma once

#include <cstddef>
#include <libical/ical.h>
#include <span>
#include <string>
#include <string_view>

#include "desktop/icalendar_notes.h"

namespace desktop {

/// Null when the component has none.
icalproperty* firstProperty(icalcomponent& component, icalproperty_kind kind);

bool hasProperty(icalcomponent& component, icalproperty_kind kind);

/// Empty when the component has none.
std::string uidOf(icalcomponent& component);

/// The first one counts; empty when there is none. Line ends are LF. Throws ItemRefused when it is no UTF-8.
std::u16string readText(icalcomponent& component, icalproperty_kind kind);

/// Several CATEGORIES make one list.
std::u16string readCategories(icalcomponent& component);

/// As much of a text as the device takes, in UTF-16 units; what is cut is noted.
std::u16string fitting(const std::u16string& text, std::size_t limit, std::string_view name, Notes& notes);

/// Whether the device is to treat it as private.
bool readPrivacy(icalcomponent& component, Notes& notes);

struct DroppedProperty {
  icalproperty_kind kind;
  std::string_view note;
};

/// Notes which of the given properties there are, and which of those that the device keeps with no item.
void noteDropped(icalcomponent& component, std::span<const DroppedProperty> properties, Notes& notes);

/// Throws ItemRefused when the parser dropped a property on which the item's time depends.
void refuseBrokenTimes(icalcomponent& component);

}  // namespace desktop
