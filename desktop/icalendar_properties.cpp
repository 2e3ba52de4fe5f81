#include "desktop/icalendar_properties.h"

#include <array>

#include "desktop/icalendar_handles.h"
#include "desktop/input_error.h"
#include "desktop/item_refused.h"
#include "desktop/item_text.h"
#include "desktop/text.h"

namespace desktop {
namespace {

/// What a person would miss on the device.
constexpr std::array kNeverKept = {
    DroppedProperty{ICAL_ATTENDEE_PROPERTY, "attendees are not kept on the device"},
    DroppedProperty{ICAL_ORGANIZER_PROPERTY, "the organizer is not kept on the device"},
    DroppedProperty{ICAL_ATTACH_PROPERTY, "attachments are not kept on the device"},
    DroppedProperty{ICAL_URL_PROPERTY, "the web address is not kept on the device"},
    DroppedProperty{ICAL_GEO_PROPERTY, "the position on the map is not kept on the device"},
    DroppedProperty{ICAL_COMMENT_PROPERTY, "comments are not kept on the device"},
    DroppedProperty{ICAL_CONTACT_PROPERTY, "contacts are not kept on the device"},
};

/// Without these an item would be at another time; the parser leaves out those that it can't read.
constexpr std::array<std::string_view, 9> kTimeProperties = {
    "DTSTART", "DTEND", "DURATION", "RRULE", "RDATE", "EXDATE", "EXRULE", "RECURRENCE-ID", "DUE"};

std::u16string decode(icalproperty& property) {
  try {
    return withFileLineEnds(toUtf16(copyText(icalvalue_get_text(icalproperty_get_value(&property)))));
  } catch (const InputError&) {
    throw ItemRefused(copyText(icalproperty_get_property_name(&property)) + " is no UTF-8 text");
  }
}

}  // namespace

icalproperty* firstProperty(icalcomponent& component, icalproperty_kind kind) {
  return icalcomponent_get_first_property(&component, kind);
}

bool hasProperty(icalcomponent& component, icalproperty_kind kind) {
  return firstProperty(component, kind) != nullptr;
}

std::string uidOf(icalcomponent& component) {
  icalproperty* uid = firstProperty(component, ICAL_UID_PROPERTY);
  return uid == nullptr ? std::string() : copyText(icalproperty_get_uid(uid));
}

std::u16string readText(icalcomponent& component, icalproperty_kind kind) {
  icalproperty* property = firstProperty(component, kind);
  return property == nullptr ? std::u16string() : decode(*property);
}

std::u16string readCategories(icalcomponent& component) {
  std::u16string list;
  forEachProperty(component, ICAL_CATEGORIES_PROPERTY,
                  [&](icalproperty& property) { list += decode(property) + u','; });
  return tidyList(asOneLine(list));
}

std::u16string fitting(const std::u16string& text, std::size_t limit, std::string_view name, Notes& notes) {
  if (text.size() <= limit) return text;
  notes.add("the " + std::string(name) + " is cut to the device's " + std::to_string(limit) + " characters");
  return std::u16string(cutTo(text, limit));
}

bool readPrivacy(icalcomponent& component, Notes& notes) {
  icalproperty* property = firstProperty(component, ICAL_CLASS_PROPERTY);
  if (property == nullptr) return false;
  const icalproperty_class access = icalproperty_get_class(property);
  if (access == ICAL_CLASS_CONFIDENTIAL)
    notes.add("the entry is confidential; the device knows only private");
  return access == ICAL_CLASS_PRIVATE || access == ICAL_CLASS_CONFIDENTIAL;
}

void noteDropped(icalcomponent& component, std::span<const DroppedProperty> properties, Notes& notes) {
  for (const std::span<const DroppedProperty> table :
       {std::span<const DroppedProperty>(kNeverKept), properties}) {
    for (const DroppedProperty& dropped : table) {
      if (hasProperty(component, dropped.kind)) notes.add(std::string(dropped.note));
    }
  }
}

void refuseBrokenTimes(icalcomponent& component) {
  forEachProperty(component, ICAL_XLICERROR_PROPERTY, [](icalproperty& property) {
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

}  // namespace desktop
