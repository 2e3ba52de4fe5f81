// A time zone by its name in the host's time zone database, with the rules that are in force.
#pragma once

#include <string>
#include <string_view>

#include "platform/time.h"

namespace emulator {

/// The zone of an IANA name such as "Europe/Berlin". A rule that the platform's form cannot hold exactly (a
/// change at an hour of another day than the rule's) falls on the right day of `year`. Throws
/// std::invalid_argument, naming the zone, when there is none of that name.
TIME_ZONE_INFORMATION zoneNamed(const std::string& name, int year);

/// The zone that a POSIX rule describes: "CET-1CEST,M3.5.0,M10.5.0/3". Throws std::invalid_argument for a
/// text that is no such rule, or that counts a transition's day from the beginning of the year.
TIME_ZONE_INFORMATION zoneFromRule(std::string_view rule, int year);

}  // namespace emulator
