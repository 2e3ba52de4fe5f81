// Writing tasks into calendar files.
#include <cstdlib>

#include "desktop/icalendar.h"
#include "desktop/icalendar_components.h"
#include "desktop/icalendar_zone.h"
#include "desktop/item_text.h"
#include "desktop/local_time.h"

namespace desktop {
namespace {

constexpr std::uint32_t kLow = 0;
constexpr std::uint32_t kHigh = 2;
constexpr int kLowestPriority = 9;
constexpr int kHighestPriority = 1;
constexpr int kDone = 100;

/// A rule counts from the start, without one from the due date: a series that begins on neither gets its
/// first day as its start.
LocalTime startInFile(const Task& task) {
  if (!isNone(task.start) || !task.recurrence) return task.start;
  const bool countsFromDue = !isNone(task.due) && dayOf(task.due) == dayOf(task.recurrence->start);
  return countsFromDue ? task.start : task.recurrence->start;
}

bool isWholeDay(const LocalTime& time) {
  return isNone(time) || isMidnight(time);
}

void addTimes(icalcomponent& todo, const Task& task) {
  const LocalTime start = startInFile(task);
  // Both are dates, or both are times.
  const bool wholeDays = isWholeDay(start) && isWholeDay(task.due);
  if (!isNone(start)) addProperty(todo, icalproperty_new_dtstart(fileTime(start, wholeDays)));
  if (!isNone(task.due)) addProperty(todo, icalproperty_new_due(fileTime(task.due, wholeDays)));
  if (task.recurrence) addRule(todo, *task.recurrence, wholeDays);
}

void addTexts(icalcomponent& todo, const Task& task) {
  addText(todo, icalproperty_new_summary, task.subject);
  addText(todo, icalproperty_new_categories, tidyList(task.categories));
  addText(todo, icalproperty_new_description, task.body);
}

void addImportance(icalcomponent& todo, std::uint32_t importance) {
  if (importance == kLow) addProperty(todo, icalproperty_new_priority(kLowestPriority));
  if (importance == kHigh) addProperty(todo, icalproperty_new_priority(kHighestPriority));
}

void addCompletion(icalcomponent& todo, bool complete) {
  addProperty(todo, icalproperty_new_status(complete ? ICAL_STATUS_COMPLETED : ICAL_STATUS_NEEDSACTION));
  if (complete) addProperty(todo, icalproperty_new_percentcomplete(kDone));
}

/// A duration can't be longer than some decades.
constexpr std::int64_t kLongestLead = std::int64_t{20} * 366 * 24 * 60 * 60;

/// From the due date on, so that the file means the same in every zone, as the task does.
icalproperty* triggerFromDue(const Task& task) {
  icaltriggertype trigger{};
  trigger.time = icaltime_null_time();
  trigger.duration = icaldurationtype_from_int(static_cast<int>(secondsBetween(task.due, task.reminderTime)));
  icalproperty* property = icalproperty_new_trigger(trigger);
  icalproperty_add_parameter(property, icalparameter_new_related(ICAL_RELATED_END));
  return property;
}

icalproperty* triggerAt(const LocalTime& moment) {
  icaltriggertype trigger{};
  trigger.time = icaltime_from_timet_with_zone(instantOf(moment), 0, icaltimezone_get_utc_timezone());
  return icalproperty_new_trigger(trigger);
}

void addReminder(icalcomponent& todo, const Task& task) {
  if (!task.reminderSet || isNone(task.reminderTime)) return;
  const bool isNearDue =
      !isNone(task.due) && std::abs(secondsBetween(task.due, task.reminderTime)) <= kLongestLead;
  addAlarm(todo, isNearDue ? triggerFromDue(task) : triggerAt(task.reminderTime), task.subject);
}

}  // namespace

std::string writeCalendar(const Task& task, const std::string& uid) {
  const ComponentHandle calendar = newCalendar();
  ComponentHandle todo = newItem(icalcomponent_new_vtodo(), uid);
  addTimes(*todo, task);
  addTexts(*todo, task);
  addPrivacy(*todo, task.isPrivate);
  addImportance(*todo, task.importance);
  addCompletion(*todo, task.complete);
  addReminder(*todo, task);
  icalcomponent_add_component(calendar.get(), todo.release());
  return takeText(icalcomponent_as_ical_string_r(calendar.get()));
}

}  // namespace desktop
