#include "desktop/icalendar_task.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "desktop/icalendar_properties.h"
#include "desktop/icalendar_series.h"
#include "desktop/icalendar_trigger.h"
#include "desktop/item_refused.h"
#include "desktop/item_text.h"
#include "desktop/local_time.h"

namespace desktop {
namespace {

// In UTF-16 units; the object model refuses longer texts.
constexpr std::size_t kMostSubject = 4095;
constexpr std::size_t kMostCategories = 1023;

/// What a person would miss on the device, besides what no item keeps.
constexpr std::array kDropped = {
    DroppedProperty{ICAL_LOCATION_PROPERTY, "the location is not kept on the device"},
    DroppedProperty{ICAL_RELATEDTO_PROPERTY, "its place among other tasks is not kept on the device"},
    DroppedProperty{ICAL_COMPLETED_PROPERTY, "the time of its completion is not kept on the device"},
    DroppedProperty{ICAL_RESOURCES_PROPERTY, "resources are not kept on the device"},
};

constexpr int kDone = 100;

/// Importances by what calendar programs call priorities: 1 is the highest, 9 the lowest, 0 none.
struct PriorityRange {
  int first;
  int last;
  int spelled;  ///< the one that the device's importance is written as; 0 is not written
  std::uint32_t importance;
  const char* name;
};

constexpr std::array kPriorities = {
    PriorityRange{0, 0, 0, 1, "normal"},
    PriorityRange{1, 4, 1, 2, "high"},
    PriorityRange{5, 5, 5, 1, "normal"},
    PriorityRange{6, 9, 9, 0, "low"},
};

/// A task's times as the file has them, where it has them.
struct TodoTimes {
  std::optional<icaltimetype> start;
  std::optional<icaltimetype> due;
};

TodoTimes readTimes(icalcomponent& todo, const ZoneTable& zones) {
  TodoTimes times;
  if (icalproperty* start = firstProperty(todo, ICAL_DTSTART_PROPERTY)) times.start = zones.timeOf(*start);
  if (icalproperty* due = firstProperty(todo, ICAL_DUE_PROPERTY)) {
    times.due = zones.timeOf(*due);
  } else if (icalproperty* duration = firstProperty(todo, ICAL_DURATION_PROPERTY)) {
    if (times.start) times.due = icaltime_add(*times.start, icalproperty_get_duration(duration));
  }
  return times;
}

void takeTimes(const TodoTimes& times, Task& task, Notes& notes) {
  if (times.start) task.start = localOf(*times.start);
  if (!times.due) return;
  const LocalTime due = localOf(*times.due);
  task.due = midnightOf(dayOf(due));
  if (!isMidnight(due)) notes.add("of the due time " + spellTime(due) + " only the day is kept");
}

void readTexts(icalcomponent& todo, Task& task, Notes& notes) {
  const std::u16string subject = asOneLine(readText(todo, ICAL_SUMMARY_PROPERTY));
  task.subject = fitting(subject, kMostSubject, "summary", notes);
  task.categories = fitting(readCategories(todo), kMostCategories, "list of categories", notes);
  task.body = withDeviceLineEnds(readText(todo, ICAL_DESCRIPTION_PROPERTY));
}

std::uint32_t readImportance(icalcomponent& todo, Notes& notes) {
  icalproperty* property = firstProperty(todo, ICAL_PRIORITY_PROPERTY);
  const int priority = property == nullptr ? 0 : icalproperty_get_priority(property);
  for (const PriorityRange& range : kPriorities) {
    if (priority < range.first || priority > range.last) continue;
    if (priority != range.spelled) {
      notes.add("the priority " + std::to_string(priority) + " is kept as " + range.name);
    }
    return range.importance;
  }
  notes.add("the priority " + std::to_string(priority) + " is not kept");
  return kPriorities.front().importance;
}

/// The device knows open tasks and done ones.
bool readCompletion(icalcomponent& todo, Notes& notes) {
  icalproperty* progress = firstProperty(todo, ICAL_PERCENTCOMPLETE_PROPERTY);
  const int percent = progress == nullptr ? 0 : icalproperty_get_percentcomplete(progress);
  icalproperty* property = firstProperty(todo, ICAL_STATUS_PROPERTY);
  const icalproperty_status status =
      property == nullptr ? ICAL_STATUS_NONE : icalproperty_get_status(property);
  if (status == ICAL_STATUS_COMPLETED) return true;
  if (status == ICAL_STATUS_NONE && (percent == kDone || hasProperty(todo, ICAL_COMPLETED_PROPERTY)))
    return true;
  if (status == ICAL_STATUS_CANCELLED) {
    notes.add("the task is cancelled; the device shows it like any other");
  } else if (percent != 0) {
    notes.add("that " + std::to_string(percent) + " % of it are done is not kept");
  } else if (status == ICAL_STATUS_INPROCESS) {
    notes.add("that it is begun is not kept");
  }
  return false;
}

std::optional<LocalTime> momentOf(const AlarmTrigger& trigger, const TodoTimes& times, Notes& notes) {
  if (trigger.time) return localOf(*trigger.time);
  const std::optional<icaltimetype>& anchor = trigger.fromEnd ? times.due : times.start;
  if (anchor) return addSeconds(localOf(*anchor), trigger.seconds);
  notes.add("a reminder that counts from a date which the task doesn't have is not kept");
  return std::nullopt;
}

void readReminder(icalcomponent& todo, const TodoTimes& times, Task& task, Notes& notes) {
  std::vector<LocalTime> moments;
  for (const AlarmTrigger& trigger : readTriggers(todo, notes)) {
    if (const auto moment = momentOf(trigger, times, notes)) moments.push_back(*moment);
  }
  if (moments.empty()) return;
  noteSeveral(moments.size(), notes);
  task.reminderSet = true;
  task.reminderTime = *std::min_element(moments.begin(), moments.end());
}

/// The days of a series count from the start, in a file without one from the due date.
void readRepetition(icalcomponent& todo, const TodoTimes& times, Task& task) {
  icalproperty* rule = firstProperty(todo, ICAL_RRULE_PROPERTY);
  if (rule == nullptr) return;
  if (hasProperty(todo, ICAL_EXDATE_PROPERTY)) {
    throw ItemRefused("EXDATE (excluded dates) can't be held by the device in a task");
  }
  const std::optional<icaltimetype>& anchor = times.start ? times.start : times.due;
  if (!anchor) throw ItemRefused("RRULE without a DTSTART or DUE to count from");
  Appointment first;
  first.start = first.end = localOf(*anchor);
  first.allDay = anchor->is_date != 0;
  // Only the days matter: a task that begins at another hour here is on the same list.
  task.recurrence = readSeries(icalproperty_get_rrule(rule), *anchor, first).recurrence;
}

}  // namespace

Task readTodo(icalcomponent& todo, const ZoneTable& zones, Notes& notes) {
  Task task;
  const TodoTimes times = readTimes(todo, zones);
  takeTimes(times, task, notes);
  readTexts(todo, task, notes);
  task.importance = readImportance(todo, notes);
  task.complete = readCompletion(todo, notes);
  task.isPrivate = readPrivacy(todo, notes);
  readReminder(todo, times, task, notes);
  readRepetition(todo, times, task);
  noteDropped(todo, kDropped, notes);
  return task;
}

}  // namespace desktop
