// Reading calendar files: which events belong together, and what becomes of each and of the tasks.
#include <map>
#include <utility>

#include "desktop/icalendar.h"
#include "desktop/icalendar_blocks.h"
#include "desktop/icalendar_event.h"
#include "desktop/icalendar_exceptions.h"
#include "desktop/icalendar_handles.h"
#include "desktop/icalendar_notes.h"
#include "desktop/icalendar_properties.h"
#include "desktop/icalendar_series.h"
#include "desktop/icalendar_task.h"
#include "desktop/icalendar_zone.h"
#include "desktop/item_refused.h"

namespace desktop {
namespace {

struct ParsedItem {
  CalendarBlock block;
  ComponentHandle component;  ///< null when the parser made nothing of it
  std::string uid;
  std::string where;
  std::string fault;  ///< why it is no item to look at; empty when it is one

  bool isTask() const { return block.kind == "VTODO"; }
  bool isChange() const { return hasProperty(*component, ICAL_RECURRENCEID_PROPERTY); }
};

/// Throws ItemRefused for kinds of repetition of which the device has none.
void checkRepetition(icalcomponent& event) {
  if (hasProperty(event, ICAL_RDATE_PROPERTY))
    throw ItemRefused("RDATE (single added dates) can't be held by the device");
  if (hasProperty(event, ICAL_EXRULE_PROPERTY))
    throw ItemRefused("EXRULE (an excluding rule) can't be held by the device");
  if (icalcomponent_count_properties(&event, ICAL_RRULE_PROPERTY) > 1) {
    throw ItemRefused("several recurrence rules can't be held by the device");
  }
}

class CalendarReader {
 public:
  explicit CalendarReader(std::string fileName) : fileName_(std::move(fileName)) {}

  void add(CalendarBlock block) {
    ComponentHandle component(icalparser_parse_string(block.text.c_str()));
    if (block.kind == "VTIMEZONE") {
      if (block.complete) zones_.add(std::move(component));
      return;
    }
    ParsedItem item{std::move(block), std::move(component), {}, {}, {}};
    if (item.component) item.uid = uidOf(*item.component);
    item.where =
        fileName_ + ":" + std::to_string(item.block.line) + (item.uid.empty() ? "" : ": " + item.uid);
    items_.push_back(std::move(item));
  }

  CalendarFile read() {
    group();
    for (const ParsedItem& item : items_) {
      if (!item.fault.empty()) {
        refuse(item, item.fault);
      } else if (!isWithItsSeries(item)) {
        attempt(item);
      }
    }
    return std::move(file_);
  }

 private:
  struct Group {
    const ParsedItem* master = nullptr;
    std::vector<ChangedOccurrence> changes;
  };

  /// A task and an event may have the same UID.
  static std::string keyOf(const ParsedItem& item) { return item.block.kind + item.uid; }

  void refuse(const ParsedItem& item, std::string why) {
    file_.problems.push_back({item.where, std::move(why)});
  }

  /// Finds the events of one UID, and what is no event at all.
  void group() {
    for (ParsedItem& item : items_) {
      item.fault = faultOf(item);
      if (!item.fault.empty() || item.uid.empty()) continue;
      Group& group = groups_[keyOf(item)];
      if (item.isChange()) {
        group.changes.push_back({item.component.get(), item.where});
      } else if (group.master == nullptr) {
        group.master = &item;
      } else {
        item.fault = "its UID stands for another entry of the file, at line " +
                     std::to_string(group.master->block.line);
      }
    }
  }

  static std::string faultOf(const ParsedItem& item) {
    const std::string& kind = item.block.kind;
    if (kind != "VEVENT" && !item.isTask()) return kind + " is no calendar entry";
    if (item.block.complete && item.component) return {};
    const std::string name = item.isTask() ? "task" : "event";
    return "the " + name + " isn't closed: END:" + kind + " is missing or misplaced";
  }

  bool isWithItsSeries(const ParsedItem& item) const {
    const auto group = groups_.find(keyOf(item));
    return item.isChange() && group != groups_.end() && group->second.master != nullptr;
  }

  void attempt(const ParsedItem& item) {
    const std::vector<ChangedOccurrence> changes =
        item.uid.empty() || item.isChange() ? std::vector<ChangedOccurrence>() : groups_[keyOf(item)].changes;
    try {
      if (item.isTask()) {
        takeTask(item, changes);
      } else {
        file_.entries.push_back(entryOf(item, changes));
      }
    } catch (const ItemRefused& refusal) {
      refuse(item, refusal.what());
      for (const ChangedOccurrence& change : changes) {
        file_.problems.push_back({change.where, "the series that it belongs to could not be taken"});
      }
    }
  }

  CalendarEntry entryOf(const ParsedItem& item, const std::vector<ChangedOccurrence>& changes) {
    icalcomponent& event = *item.component;
    refuseBrokenTimes(event);
    checkRepetition(event);
    const bool repeats = hasProperty(event, ICAL_RRULE_PROPERTY);
    Notes notes;
    CalendarEvent first = readEvent(event, zones_, repeats, notes);
    Appointment appointment = first.appointment;
    if (repeats) {
      icalproperty* property = icalcomponent_get_first_property(&event, ICAL_RRULE_PROPERTY);
      const SeriesInFile series{event, std::move(first), icalproperty_get_rrule(property), changes};
      addSeries(series, appointment, notes);
    } else if (!changes.empty()) {
      notes.add("changed occurrences are dropped: the entry doesn't repeat");
    }
    noteOrigin(item, notes);
    return {item.uid, item.where, std::move(appointment), notes.take()};
  }

  void takeTask(const ParsedItem& item, const std::vector<ChangedOccurrence>& changes) {
    icalcomponent& todo = *item.component;
    refuseBrokenTimes(todo);
    checkRepetition(todo);
    Notes notes;
    Task task = readTodo(todo, zones_, notes);
    noteOrigin(item, notes);
    file_.tasks.push_back({item.uid, item.where, std::move(task), notes.take()});
    for (const ChangedOccurrence& change : changes) {
      file_.problems.push_back({change.where, "a changed occurrence of a task can't be held by the device"});
    }
  }

  static void noteOrigin(const ParsedItem& item, Notes& notes) {
    if (item.uid.empty()) notes.add("the entry has no UID");
    if (item.isChange())
      notes.add("one occurrence of a series that isn't in the file; taken as an entry of its own");
  }

  void addSeries(const SeriesInFile& series, Appointment& appointment, Notes& notes) {
    const Series held = readSeries(series.rule, series.first.start, series.first.appointment);
    appointment.recurrence = held.recurrence;
    if (!held.shifted.empty()) {
      notes.add("occurrences at another hour here, kept as exceptions: " +
                std::to_string(held.shifted.size()));
    }
    appointment.exceptions = readExceptions(series, zones_, held.shifted, notes, file_.problems);
  }

  std::string fileName_;
  ZoneTable zones_;
  std::vector<ParsedItem> items_;
  std::map<std::string, Group> groups_;
  CalendarFile file_;
};

}  // namespace

CalendarFile readCalendar(std::string_view text, const std::string& fileName) {
  CalendarReader reader(fileName);
  for (CalendarBlock& block : splitCalendar(text, fileName)) reader.add(std::move(block));
  return reader.read();
}

}  // namespace desktop
