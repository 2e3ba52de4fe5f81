// The device's time zone: which bias applies at a moment, and local time.
#pragma once

#include <optional>

#include "emulator/system/file_time.h"
#include "platform/time.h"

namespace emulator {

/// "UTC", without daylight saving.
TIME_ZONE_INFORMATION utcZone();

class TimeZone {
 public:
  explicit TimeZone(const TIME_ZONE_INFORMATION& information) : information_(information) {}

  const TIME_ZONE_INFORMATION& information() const { return information_; }

  /// What GetTimeZoneInformation returns: TIME_ZONE_ID_UNKNOWN for a zone without daylight saving, else
  /// STANDARD or DAYLIGHT.
  DWORD periodAt(Ticks utc) const;

  Ticks toLocal(Ticks utc) const;
  /// In the hour that daylight saving repeats, daylight time; in the one that it skips, as if it had begun.
  Ticks toUtc(Ticks local) const;

 private:
  bool hasDaylightTime() const;
  /// Whether a moment lies in daylight time. `standardBias` and `daylightBias` are in minutes and say how far
  /// the zone's two transitions, which are wall-clock times, lie from the moment's own scale.
  bool isDaylight(Ticks moment, LONG standardBias, LONG daylightBias) const;
  /// Minutes from local time to UTC.
  LONG bias(bool daylight) const;

  TIME_ZONE_INFORMATION information_;
};

/// The wall-clock moment of a transition in a year: a date as it stands, or the n-th weekday of a month, 5
/// for the last. Nothing for a rule that names no date.
std::optional<Ticks> transitionIn(int year, const SYSTEMTIME& rule);

}  // namespace emulator
