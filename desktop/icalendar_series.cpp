#include "desktop/icalendar_series.h"

#include <algorithm>
#include <chrono>
#include <optional>
#include <string>

#include "desktop/icalendar_handles.h"
#include "desktop/icalendar_occurrences.h"
#include "desktop/icalendar_rule.h"
#include "desktop/icalendar_zone.h"
#include "desktop/item_refused.h"
#include "desktop/local_time.h"

namespace desktop {
namespace {

// The object model's ceilings.
constexpr int kMostOccurrences = 999;
constexpr int kLargestInterval = 999;

/// With more entries than this at another hour, the series is no series on the device any more.
constexpr std::size_t kMostShifted = 100;

[[noreturn]] void refuse(icalrecurrencetype rule, const std::string& why) {
  throw ItemRefused("recurrence rule " + takeText(icalrecurrencetype_as_string_r(&rule)) +
                    " can't be held by the device: " + why);
}

void checkLimits(const icalrecurrencetype& rule) {
  if (rule.freq < ICAL_DAILY_RECURRENCE) refuse(rule, "it repeats within a day");
  if (rule.count > kMostOccurrences)
    refuse(rule, "it has more than " + std::to_string(kMostOccurrences) + " occurrences");
  if (rule.interval > kLargestInterval)
    refuse(rule, "its interval is larger than " + std::to_string(kLargestInterval));
}

std::int64_t timeOfDay(const LocalTime& time) {
  return secondsBetween(midnightOf(dayOf(time)), time);
}

/// The last day on which an entry can be: an UNTIL earlier in its day than the entries are excludes that day.
std::chrono::sys_days lastDay(const icalrecurrencetype& rule, const icaltimetype& start,
                              const LocalTime& first) {
  const LocalTime until = localOf(inZoneOf(rule.until, start));
  const bool excluded = !rule.until.is_date && timeOfDay(until) < timeOfDay(first);
  return dayOf(until) - std::chrono::days(excluded ? 1 : 0);
}

void setEnd(Recurrence& pattern, const icalrecurrencetype& rule, const icaltimetype& start,
            const std::vector<LocalTime>& occurrences) {
  if (rule.count > 0) {
    pattern.end = RecurrenceEnd::AfterOccurrences;
    pattern.occurrences = static_cast<std::uint32_t>(rule.count);
  } else if (icaltime_is_null_time(rule.until) == 0) {
    pattern.end = RecurrenceEnd::OnDate;
    const bool whole = occurrences.size() < comparedOccurrences(rule);
    std::chrono::sys_days day = lastDay(rule, start, occurrences.front());
    if (whole) day = std::max(day, dayOf(occurrences.back()));
    pattern.endDate = midnightOf(day);
  }
}

std::vector<LocalTime> expandPattern(const Recurrence& pattern, const Appointment& first) {
  const icalrecurrencetype rule = icalrecurrencetype_from_string(ruleText(pattern, first.allDay).c_str());
  const icaltimetype start = first.allDay ? dateOf(first.start) : floatingOf(first.start);
  return expand(rule, start, comparedOccurrences(rule));
}

bool onSameDays(const std::vector<LocalTime>& left, const std::vector<LocalTime>& right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](const LocalTime& a, const LocalTime& b) { return dayOf(a) == dayOf(b); });
}

AppointmentException shiftedEntry(const LocalTime& begin, const Appointment& first) {
  AppointmentException entry;
  entry.originalDate = midnightOf(dayOf(begin));
  entry.start = begin;
  entry.end = addSeconds(begin, secondsBetween(first.start, first.end));
  return entry;
}

/// The entries that begin at another hour than the pattern's. What the device makes of an hour that the clock
/// skips is its own affair.
std::vector<AppointmentException> findShifted(const std::vector<LocalTime>& wanted,
                                              const std::vector<LocalTime>& held, const Appointment& first) {
  std::vector<AppointmentException> shifted;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (wanted[i] != held[i] && clockShows(held[i])) shifted.push_back(shiftedEntry(wanted[i], first));
  }
  return shifted;
}

int daysFromZoneToHere(const icaltimetype& start, const LocalTime& here) {
  return static_cast<int>((dayOf(here) - dayOf(localOf(floating(start)))).count());
}

}  // namespace

Series readSeries(const icalrecurrencetype& rule, const icaltimetype& start, const Appointment& first) {
  checkLimits(rule);
  const icalrecurrencetype comparable = withComparableEnd(rule, start);
  const std::vector<LocalTime> wanted = expand(comparable, start, comparedOccurrences(comparable));
  if (wanted.empty() || wanted.front() != first.start) refuse(rule, "the start is none of its occurrences");

  std::optional<Recurrence> pattern =
      closestPattern(comparable, first.start, daysFromZoneToHere(start, first.start));
  if (!pattern) refuse(rule, "no pattern of the device comes near");
  setEnd(*pattern, comparable, start, wanted);
  const std::vector<LocalTime> held = expandPattern(*pattern, first);
  if (!onSameDays(wanted, held)) refuse(rule, "the device's pattern would fall on other days");

  Series series{*pattern, findShifted(wanted, held, first)};
  const bool endless =
      pattern->end == RecurrenceEnd::Never || wanted.size() == comparedOccurrences(comparable);
  if (!series.shifted.empty() && (endless || series.shifted.size() > kMostShifted)) {
    refuse(rule,
           "its zone " + spellZone(start) + " shifts against this computer's in the course of the series");
  }
  return series;
}

}  // namespace desktop
