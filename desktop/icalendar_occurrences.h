// When the entries of a series happen.
#pragma once

#include <chrono>
#include <cstddef>
#include <libical/ical.h>
#include <map>
#include <vector>

#include "desktop/appointment.h"
#include "desktop/icalendar_handles.h"

namespace desktop {

/// Series are compared over this many entries: every counted one is then compared whole (the device counts to
/// 999), and an endless one over years enough for leap days and for clock changes.
constexpr std::size_t kComparedOccurrences = 1000;

/// The rule with its UNTIL by the clock of `start`: a DATE for dates, else a floating time, a day meaning its
/// end. Calendar programs mix these up, and libical compares what it is given. One after the device's last
/// year is none.
icalrecurrencetype withComparableEnd(icalrecurrencetype rule, const icaltimetype& start);

/// The first entries of a series as this computer's clock shows them, `limit` at most; none for a rule that
/// is broken.
std::vector<LocalTime> expand(const icalrecurrencetype& rule, const icaltimetype& start, std::size_t limit);

/// The entries up to the end of `last`, by their day here.
std::map<std::chrono::sys_days, LocalTime> expandThrough(const icalrecurrencetype& rule,
                                                         const icaltimetype& start,
                                                         std::chrono::sys_days last);

}  // namespace desktop
