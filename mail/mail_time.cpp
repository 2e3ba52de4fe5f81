#include "mail/mail_time.h"

#include "pim/time_zone.h"

namespace qorv {

namespace {

/// Without a zone the device's time is taken for UTC.
TIME_ZONE_INFORMATION deviceZone() {
  TIME_ZONE_INFORMATION zone{};
  if (GetTimeZoneInformation(&zone) == TIME_ZONE_ID_INVALID) zone = {};
  return zone;
}

}  // namespace

// A zone whose transitions are no dates leaves the time as it is, in both directions.

SYSTEMTIME toRecordTime(FILETIME time) {
  UtcToLocal(deviceZone(), time);
  SYSTEMTIME local{};
  return FileTimeToSystemTime(&time, &local) ? local : SYSTEMTIME{};
}

std::optional<FILETIME> toMessageTime(const SYSTEMTIME& time) {
  FILETIME converted{};
  if (!SystemTimeToFileTime(&time, &converted)) return std::nullopt;
  LocalToUtc(deviceZone(), converted);
  return converted;
}

}  // namespace qorv
