// When the entries of a series happen.
#pragma once

#include <chrono>
#include <cstddef>
#include <libical/ical.h>
#include <map>
#include <vector>

#include "desktop/icalendar_handles.h"
#include "desktop/local_time.h"

namespace desktop {

/// Over how many entries a series is compared: a counted one whole, any other over so many that even a daily
/// one passes every change of the clock and every month of a year.
std::size_t comparedOccurrences(const icalrecurrencetype& rule);

/// The rule with its UNTIL by the clock of `start`: a DATE for dates, else a floating time, a day meaning its
/// end. Calendar programs mix these up, and libical compares what it is given. One past the device's calendar
/// is no end.
icalrecurrencetype withComparableEnd(icalrecurrencetype rule, const icaltimetype& start);

/// The first entries of a series, `limit` at most, as this computer's clock shows them. None for a broken
/// rule.
std::vector<LocalTime> expand(const icalrecurrencetype& rule, const icaltimetype& start, std::size_t limit);

/// The entries up to the end of `last`, by their day here.
std::map<std::chrono::sys_days, LocalTime> expandThrough(const icalrecurrencetype& rule,
                                                         const icaltimetype& start,
                                                         std::chrono::sys_days last);

}  // namespace desktop
