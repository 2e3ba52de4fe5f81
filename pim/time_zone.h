// Moves times between UTC and a zone's local time, by the zone's own transition rules.
#pragma once

#include "platform/time.h"

namespace qorv {

/// Adds a signed number of minutes; the sum wraps at 64 bits.
void AddMinutes(FILETIME& time, std::int64_t minutes);

/// Both convert in place, with the zone as GetTimeZoneInformation fills it. False, and the time is left as it
/// is, when the time or one of the zone's transitions is no date. The transitions are local times and are
/// compared with the time as given, whichever the direction; so a UTC time counts for the other period within
/// some hours of a transition. Desktops convert with the same rule.
bool LocalToUtc(const TIME_ZONE_INFORMATION& zone, FILETIME& time);
bool UtcToLocal(const TIME_ZONE_INFORMATION& zone, FILETIME& time);

}  // namespace qorv
