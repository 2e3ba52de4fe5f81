#include "desktop/icalendar_occurrences.h"

#include "desktop/icalendar_zone.h"
#include "desktop/local_time.h"

namespace desktop {
namespace {

constexpr std::size_t kMoreThanAYearOfDays = 400;

/// Calls `use(LocalTime)` for one entry after another until it returns false or the series ends. The iterator
/// gets floating times: within a zone it doesn't find back from an hour that the clock skipped.
template <typename Use>
void walk(const icalrecurrencetype& rule, const icaltimetype& start, Use use) {
  const RecurrenceIterator iterator(icalrecur_iterator_new(rule, floating(start)));
  if (!iterator) return;
  for (icaltimetype next = icalrecur_iterator_next(iterator.get()); icaltime_is_null_time(next) == 0;
       next = icalrecur_iterator_next(iterator.get())) {
    if (!use(localOf(inZoneOf(next, start)))) return;
  }
}

}  // namespace

std::size_t comparedOccurrences(const icalrecurrencetype& rule) {
  // One more than counted, so that a pattern that goes on too long is seen.
  return rule.count > 0 ? static_cast<std::size_t>(rule.count) + 1 : kMoreThanAYearOfDays;
}

icalrecurrencetype withComparableEnd(icalrecurrencetype rule, const icaltimetype& start) {
  icaltimetype& until = rule.until;
  if (icaltime_is_null_time(until) != 0) return rule;
  if (until.year > kLastYear) {
    until = icaltime_null_time();
  } else if (start.is_date) {
    until = dateOf(localOf(floating(until)));
  } else if (until.is_date) {
    until.is_date = 0;
    until.hour = 23;
    until.minute = until.second = 59;
  } else if (until.zone != nullptr && start.zone != nullptr) {
    until = floating(icaltime_convert_to_zone(until, const_cast<icaltimezone*>(start.zone)));
  } else if (until.zone != nullptr) {
    until = floatingOf(localOf(until));
  }
  return rule;
}

std::vector<LocalTime> expand(const icalrecurrencetype& rule, const icaltimetype& start, std::size_t limit) {
  std::vector<LocalTime> occurrences;
  walk(rule, start, [&](const LocalTime& occurrence) {
    occurrences.push_back(occurrence);
    return occurrences.size() < limit;
  });
  return occurrences;
}

std::map<std::chrono::sys_days, LocalTime> expandThrough(const icalrecurrencetype& rule,
                                                         const icaltimetype& start,
                                                         std::chrono::sys_days last) {
  std::map<std::chrono::sys_days, LocalTime> occurrences;
  walk(rule, start, [&](const LocalTime& occurrence) {
    if (dayOf(occurrence) > last) return false;
    occurrences.emplace(dayOf(occurrence), occurrence);
    return true;
  });
  return occurrences;
}

}  // namespace desktop
