#include "desktop/icalendar_components.h"

#include <stdexcept>

#include "desktop/icalendar_rule.h"
#include "desktop/icalendar_zone.h"
#include "desktop/item_text.h"
#include "desktop/text.h"

namespace desktop {
namespace {

constexpr const char* kProducer = "-//qorv-sync//EN";

/// Every item must tell when it was written. The device keeps no such time, and an unchanged entry must give
/// an unchanged file, so the stamp is always the same.
constexpr const char* kStamp = "19700101T000000Z";

/// An alarm must have a text; this one stands in for an item without a subject.
constexpr const char* kNamelessAlarm = "Reminder";

std::string fileText(const std::u16string& text) {
  return toUtf8(withFileLineEnds(text));
}

}  // namespace

ComponentHandle newCalendar() {
  ComponentHandle calendar(icalcomponent_new_vcalendar());
  addProperty(*calendar, icalproperty_new_version("2.0"));
  addProperty(*calendar, icalproperty_new_prodid(kProducer));
  return calendar;
}

ComponentHandle newItem(icalcomponent* component, const std::string& uid) {
  ComponentHandle item(component);
  addProperty(*item, icalproperty_new_uid(uid.c_str()));
  addProperty(*item, icalproperty_new_dtstamp(icaltime_from_string(kStamp)));
  return item;
}

void addProperty(icalcomponent& item, icalproperty* property) {
  icalcomponent_add_property(&item, property);
}

void addText(icalcomponent& item, icalproperty* (*make)(const char*), const std::u16string& text) {
  if (!text.empty()) addProperty(item, make(fileText(text).c_str()));
}

void addPrivacy(icalcomponent& item, bool isPrivate) {
  if (isPrivate) addProperty(item, icalproperty_new_class(ICAL_CLASS_PRIVATE));
}

void addRule(icalcomponent& item, const Recurrence& recurrence, bool allDay) {
  const std::string text = ruleText(recurrence, allDay);
  const icalrecurrencetype rule = icalrecurrencetype_from_string(text.c_str());
  if (rule.freq == ICAL_NO_RECURRENCE) throw std::invalid_argument("no recurrence rule: " + text);
  addProperty(item, icalproperty_new_rrule(rule));
}

void addAlarm(icalcomponent& item, icalproperty* trigger, const std::u16string& subject) {
  const std::string text = fileText(subject);
  ComponentHandle alarm(icalcomponent_new_valarm());
  addProperty(*alarm, icalproperty_new_action(ICAL_ACTION_DISPLAY));
  addProperty(*alarm, icalproperty_new_description(text.empty() ? kNamelessAlarm : text.c_str()));
  addProperty(*alarm, trigger);
  icalcomponent_add_component(&item, alarm.release());
}

icaltimetype fileTime(const LocalTime& time, bool allDay) {
  return allDay ? dateOf(time) : floatingOf(time);
}

}  // namespace desktop
