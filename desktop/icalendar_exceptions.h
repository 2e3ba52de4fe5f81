// Deleted and changed occurrences of a series in a calendar file.
#pragma once

#include <libical/ical.h>
#include <string>
#include <vector>

#include "desktop/icalendar.h"
#include "desktop/icalendar_event.h"
#include "desktop/icalendar_notes.h"
#include "desktop/icalendar_series.h"

namespace desktop {

/// An event with a RECURRENCE-ID: one occurrence that differs from its series.
struct ChangedOccurrence {
  icalcomponent* event;
  std::string where;  ///< as in FileProblem
};

struct SeriesInFile {
  icalcomponent& event;
  CalendarEvent first;
  icalrecurrencetype rule;
  std::vector<ChangedOccurrence> changes;
};

/// Exceptions in the order of their days: those that `shifted` brings, replaced by what EXDATE and then the
/// changed occurrences say. One that is no occurrence of the series is noted, one that can't be read is a
/// problem; both are left out.
std::vector<AppointmentException> readExceptions(const SeriesInFile& series, const ZoneTable& zones,
                                                 const std::vector<AppointmentException>& shifted,
                                                 Notes& notes, std::vector<FileProblem>& problems);

}  // namespace desktop
