// Reading calendar files: which events belong together, and what becomes of each.
#include <map>
#include <utility>

#include "desktop/icalendar.h"
#include "desktop/icalendar_blocks.h"
#include "desktop/icalendar_event.h"
#include "desktop/icalendar_exceptions.h"
#include "desktop/icalendar_handles.h"
#include "desktop/icalendar_notes.h"
#include "desktop/icalendar_properties.h"
#include "desktop/icalendar_refused.h"
#include "desktop/icalendar_series.h"
#include "desktop/icalendar_zone.h"

namespace desktop {
namespace {

struct FileItem {
  CalendarBlock block;
  ComponentHandle component;  ///< null when the parser made nothing of it
  std::string uid;
  std::string where;
  std::string fault;  ///< why it is no event to look at; empty when it is one

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
    FileItem item{std::move(block), std::move(component), {}, {}, {}};
    if (item.component) item.uid = uidOf(*item.component);
    item.where =
        fileName_ + ":" + std::to_string(item.block.line) + (item.uid.empty() ? "" : ": " + item.uid);
    items_.push_back(std::move(item));
  }

  CalendarFile read() {
    group();
    for (const FileItem& item : items_) {
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
    const FileItem* master = nullptr;
    std::vector<ChangedOccurrence> changes;
  };

  void refuse(const FileItem& item, std::string why) {
    file_.problems.push_back({item.where, std::move(why)});
  }

  /// Finds the events of one UID, and what is no event at all.
  void group() {
    for (FileItem& item : items_) {
      item.fault = faultOf(item);
      if (!item.fault.empty() || item.uid.empty()) continue;
      Group& group = groups_[item.uid];
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

  static std::string faultOf(const FileItem& item) {
    if (item.block.kind != "VEVENT") return item.block.kind + " is no calendar entry";
    if (!item.block.complete || !item.component)
      return "the event isn't closed: END:VEVENT is missing or misplaced";
    return {};
  }

  bool isWithItsSeries(const FileItem& item) const {
    const auto group = groups_.find(item.uid);
    return item.isChange() && group != groups_.end() && group->second.master != nullptr;
  }

  void attempt(const FileItem& item) {
    const std::vector<ChangedOccurrence> changes =
        item.uid.empty() || item.isChange() ? std::vector<ChangedOccurrence>() : groups_[item.uid].changes;
    try {
      file_.entries.push_back(entryOf(item, changes));
    } catch (const ItemRefused& refusal) {
      refuse(item, refusal.what());
      for (const ChangedOccurrence& change : changes) {
        file_.problems.push_back({change.where, "the series that it belongs to could not be taken"});
      }
    }
  }

  CalendarEntry entryOf(const FileItem& item, const std::vector<ChangedOccurrence>& changes) {
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
    if (item.uid.empty()) notes.add("the entry has no UID");
    if (item.isChange())
      notes.add("one occurrence of a series that isn't in the file; taken as an entry of its own");
    return {item.uid, item.where, std::move(appointment), notes.take()};
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
  std::vector<FileItem> items_;
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
