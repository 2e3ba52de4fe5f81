// Times of calendar files: which zone they are in, and what this computer's clock shows then.
#pragma once

#include <ctime>
#include <libical/ical.h>
#include <map>
#include <string>

#include "desktop/icalendar_handles.h"
#include "desktop/local_time.h"

namespace desktop {

// The device's calendar has no other years.
constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2999;

/// The zones that one file defines, before those that the system knows. Times that it gave out refer to it.
class ZoneTable {
 public:
  /// A VTIMEZONE component; one that says no offsets is ignored.
  void add(ComponentHandle definition);

  /// The property's DATE or DATE-TIME with its zone attached; without a zone when it floats.
  /// Throws ItemRefused for a zone that nobody knows and for what is no real time.
  icaltimetype timeOf(icalproperty& property) const;

 private:
  const icaltimezone* find(const std::string& name) const;

  std::map<std::string, ZoneHandle> zones_;
};

/// What this computer's clock shows at that time; dates and floating times as they are.
/// Throws ItemRefused outside the device's years.
LocalTime localOf(const icaltimetype& time);

/// The same reading of the clock in the zone of `other`, or floating as that is.
icaltimetype inZoneOf(icaltimetype time, const icaltimetype& other);

/// What the clock of the time's own zone shows.
icaltimetype floating(icaltimetype time);

/// A floating time, or a DATE of the day.
icaltimetype floatingOf(const LocalTime& time);
icaltimetype dateOf(const LocalTime& time);

/// False in the hour that this computer's clock skips in spring.
bool clockShows(const LocalTime& time);

/// From `from` to `to` by the clock.
std::int64_t secondsBetween(const LocalTime& from, const LocalTime& to);
LocalTime addSeconds(const LocalTime& time, std::int64_t seconds);

/// For messages: the zone's name, "UTC", or "no zone".
std::string spellZone(const icaltimetype& time);

}  // namespace desktop
