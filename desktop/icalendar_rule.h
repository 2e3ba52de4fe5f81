// The device's recurrence patterns as recurrence rules, and rules as the patterns that they may mean.
//
//   pattern             rule
//   Daily               FREQ=DAILY
//   Weekly              FREQ=WEEKLY;BYDAY=MO,WE (WKST=SU: the device's week begins on Sunday)
//   Monthly             FREQ=MONTHLY;BYMONTHDAY=15; day 30: BYMONTHDAY=28,29,30;BYSETPOS=-1; day 31:
//   BYMONTHDAY=-1 MonthlyNth          FREQ=MONTHLY;BYDAY=2TU or -1FR; several days: BYDAY=MO,TU;BYSETPOS=2
//   Yearly, YearlyNth   FREQ=YEARLY;BYMONTH=3 with the same
//
// Days 29 to 31 are spelled so because in a shorter month the device takes the last day, where a rule skips
// the month altogether.
#pragma once

#include <libical/ical.h>
#include <optional>
#include <string>

#include "desktop/appointment.h"

namespace desktop {

/// The rule of a pattern, with UNTIL as a DATE or as a floating DATE-TIME at the last day's end.
/// Throws std::invalid_argument for a month outside the year; other numbers that make no rule are left for
/// the parser of rules to refuse.
std::string ruleText(const Recurrence& recurrence, bool allDay);

/// The pattern closest to the rule, for a series whose first entry begins at `start` here, `dayShift` days
/// after its date in its own zone (-1, 0 or 1). Only an expansion of both can tell whether they mean the
/// same: parts of a rule that no pattern has are passed over. Nothing when no pattern comes near. The pattern
/// has no end yet.
std::optional<Recurrence> closestPattern(const icalrecurrencetype& rule, const LocalTime& start,
                                         int dayShift);

}  // namespace desktop
