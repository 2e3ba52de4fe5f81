#include "desktop/icalendar_occurrences.h"

#include "desktop/icalendar_zone.h"
#include "desktop/local_time.h"

namespace desktop {
namespace {

/// Calls `use(LocalTime)` for one entry after another until it returns false or the series ends.
template <typename Use>
void walk(const icalrecurrencetype& rule, const icaltimetype& start, Use use) {
  const RecurrenceIterator iterator(icalrecur_iterator_new(rule, start));
  if (!iterator) return;
  for (icaltimetype next = icalrecur_iterator_next(iterator.get()); icaltime_is_null_time(next) == 0;
       next = icalrecur_iterator_next(iterator.get())) {
    if (!use(localOf(next))) return;
  }
}

}  // namespace

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
