#include "desktop/icalendar_exceptions.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <optional>
#include <utility>

#include "desktop/icalendar_occurrences.h"
#include "desktop/icalendar_properties.h"
#include "desktop/icalendar_zone.h"
#include "desktop/item_refused.h"
#include "desktop/local_time.h"

namespace desktop {
namespace {

using std::chrono::sys_days;

bool isCancelled(icalcomponent& event) {
  icalproperty* status = icalcomponent_get_first_property(&event, ICAL_STATUS_PROPERTY);
  return status != nullptr && icalproperty_get_status(status) == ICAL_STATUS_CANCELLED;
}

/// The occurrence that a changed event stands for.
icaltimetype replacedTime(icalcomponent& event, const ZoneTable& zones) {
  icalproperty& id = *icalcomponent_get_first_property(&event, ICAL_RECURRENCEID_PROPERTY);
  if (icalproperty_get_first_parameter(&id, ICAL_RANGE_PARAMETER) != nullptr) {
    throw ItemRefused("a change of this and all later occurrences can't be held by the device");
  }
  return zones.timeOf(id);
}

template <typename Value>
std::optional<Value> ifDifferent(const Value& changed, const Value& original) {
  return changed == original ? std::nullopt : std::optional<Value>(changed);
}

/// The midnight at or after the time.
LocalTime nextMidnight(const LocalTime& time) {
  return isMidnight(time) ? time : addDays(midnightOf(dayOf(time)), 1);
}

class ExceptionReader {
 public:
  ExceptionReader(const SeriesInFile& series, const ZoneTable& zones, Notes& notes,
                  std::vector<FileProblem>& problems)
      : series_(series), zones_(zones), notes_(notes), problems_(problems) {}

  std::vector<AppointmentException> read(const std::vector<AppointmentException>& shifted) {
    for (const AppointmentException& entry : shifted) exceptions_[dayOf(entry.originalDate)] = entry;
    const std::vector<icaltimetype> deleted = deletedTimes();
    const std::vector<Change> changes = readableChanges();
    findOccurrences(deleted, changes);
    for (const icaltimetype& time : deleted) markDeleted(time);
    for (const Change& change : changes) apply(change);
    std::vector<AppointmentException> result;
    for (auto& [day, exception] : exceptions_) result.push_back(std::move(exception));
    return result;
  }

 private:
  struct Change {
    icaltimetype replaced;
    bool cancelled;
    Appointment appointment;
  };

  const Appointment& original() const { return series_.first.appointment; }

  std::vector<icaltimetype> deletedTimes() const {
    std::vector<icaltimetype> times;
    forEachProperty(series_.event, ICAL_EXDATE_PROPERTY,
                    [&](icalproperty& property) { times.push_back(zones_.timeOf(property)); });
    return times;
  }

  std::vector<Change> readableChanges() {
    std::vector<Change> changes;
    for (const ChangedOccurrence& change : series_.changes) {
      try {
        refuseBrokenTimes(*change.event);
        const icaltimetype replaced = replacedTime(*change.event, zones_);
        const bool cancelled = isCancelled(*change.event);
        changes.push_back(
            {replaced, cancelled, cancelled ? Appointment() : changedAppointment(*change.event)});
      } catch (const ItemRefused& refusal) {
        problems_.push_back({change.where, refusal.what()});
      }
    }
    return changes;
  }

  Appointment changedAppointment(icalcomponent& event) {
    return readEvent(event, zones_, /*repeats=*/false, notes_).appointment;
  }

  /// The day and time here; for all-day series the date as it is written, whatever zone it claims.
  LocalTime namedTime(const icaltimetype& time) const {
    return original().allDay ? midnightOf(dayOf(localOf(floating(time)))) : localOf(time);
  }

  void findOccurrences(const std::vector<icaltimetype>& deleted, const std::vector<Change>& changes) {
    sys_days last = sys_days::min();
    for (const icaltimetype& time : deleted) last = std::max(last, dayOf(namedTime(time)));
    for (const Change& change : changes) last = std::max(last, dayOf(namedTime(change.replaced)));
    const icalrecurrencetype rule = withComparableEnd(series_.rule, series_.first.start);
    occurrences_ = expandThrough(rule, series_.first.start, last);
  }

  /// The day of the occurrence named by a time, or by its date alone.
  std::optional<sys_days> occurrenceAt(const icaltimetype& time) const {
    const LocalTime named = namedTime(time);
    const auto found = occurrences_.find(dayOf(named));
    if (found == occurrences_.end()) return std::nullopt;
    if (time.is_date == 0 && found->second != named) return std::nullopt;
    return found->first;
  }

  AppointmentException& replace(sys_days day) {
    AppointmentException& exception = exceptions_[day];
    exception = {};
    exception.originalDate = midnightOf(day);
    return exception;
  }

  void markDeleted(const icaltimetype& time) {
    if (const auto day = occurrenceAt(time)) {
      replace(*day).deleted = true;
    } else {
      notes_.add("the excluded date " + spellTime(namedTime(time)) + " is no occurrence of the series");
    }
  }

  void apply(const Change& change) {
    const auto day = occurrenceAt(change.replaced);
    if (!day) {
      notes_.add("the changed occurrence of " + spellTime(namedTime(change.replaced)) +
                 " is dropped: the series has none there");
      return;
    }
    AppointmentException& exception = replace(*day);
    exception.deleted = change.cancelled;
    if (!change.cancelled) setDifferences(exception, change.appointment);
  }

  void setDifferences(AppointmentException& exception, const Appointment& changed) {
    setTimes(exception, changed);
    exception.reminderSet = ifDifferent(changed.reminderSet, original().reminderSet);
    if (changed.reminderSet) {
      exception.reminderMinutes = ifDifferent(changed.reminderMinutes, original().reminderMinutes);
    }
    exception.busyStatus = ifDifferent(changed.busyStatus, original().busyStatus);
    exception.subject = ifDifferent(changed.subject, original().subject);
    exception.location = ifDifferent(changed.location, original().location);
    exception.body = ifDifferent(changed.body, original().body);
    const std::string which = "the occurrence of " + spellDay(exception.originalDate);
    if (changed.categories != original().categories)
      notes_.add(which + " keeps the categories of its series");
    if (changed.isPrivate != original().isPrivate) notes_.add(which + " is as private as its series");
  }

  /// An occurrence is all-day when its series is; on the device it then ends on the day after.
  void setTimes(AppointmentException& exception, const Appointment& changed) {
    exception.start = changed.start;
    exception.end = changed.allDay ? addDays(changed.end, 1) : changed.end;
    if (changed.allDay == original().allDay) return;
    const std::string which = "the occurrence of " + spellDay(exception.originalDate);
    if (!original().allDay) {
      notes_.add(which + " lasts from midnight to midnight: its series has times");
      return;
    }
    exception.start = midnightOf(dayOf(changed.start));
    exception.end = std::max(nextMidnight(changed.end), addDays(exception.start, 1));
    notes_.add(which + " loses its times: its series lasts whole days");
  }

  const SeriesInFile& series_;
  const ZoneTable& zones_;
  Notes& notes_;
  std::vector<FileProblem>& problems_;
  std::map<sys_days, LocalTime> occurrences_;
  std::map<sys_days, AppointmentException> exceptions_;
};

}  // namespace

std::vector<AppointmentException> readExceptions(const SeriesInFile& series, const ZoneTable& zones,
                                                 const std::vector<AppointmentException>& shifted,
                                                 Notes& notes, std::vector<FileProblem>& problems) {
  return ExceptionReader(series, zones, notes, problems).read(shifted);
}

}  // namespace desktop
