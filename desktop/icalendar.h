// Calendar files (iCalendar, RFC 5545) to and from the desktop's calendar entries and tasks.
//
// The device keeps local wall-clock times without a zone, so the zone of this computer (TZ, else the
// system's) stands for the device's: times of other zones are converted to it, floating times pass as they
// are. What the device can't hold is never changed silently: a part that is left out becomes a note, an item
// that would mean something else becomes a problem, and the rest of the file goes on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "desktop/appointment.h"
#include "desktop/file_item.h"
#include "desktop/task.h"

namespace desktop {

struct CalendarEntry {
  std::string uid;    ///< empty when the file gives none
  std::string where;  ///< as in FileProblem
  Appointment appointment;
  std::vector<std::string> notes;  ///< what was left out or adapted, one sentence each
};

struct CalendarTask {
  std::string uid;    ///< empty when the file gives none
  std::string where;  ///< as in FileProblem
  Task task;
  std::vector<std::string> notes;  ///< what was left out or adapted, one sentence each
};

struct CalendarFile {
  std::vector<CalendarEntry> entries;  ///< in the file's order; a series is one entry with its exceptions
  std::vector<CalendarTask> tasks;     ///< in the file's order
  std::vector<FileProblem> problems;   ///< likewise; those of changed occurrences with their series
};

/// Reads UTF-8 text, with or without a byte-order mark, lines ending in CRLF or LF. Line ends within a
/// description become CRLF, as the device's editor has them; in the one-line texts they become blanks. Throws
/// InputError when the text is no iCalendar at all.
CalendarFile readCalendar(std::string_view text, const std::string& fileName);

/// One entry as a whole calendar file: floating local times, CRLF, folded. Equal entries give equal bytes.
/// Throws std::invalid_argument for an entry without a start, and when the recurrence holds numbers that make
/// no rule.
std::string writeCalendar(const Appointment& appointment, const std::string& uid);

/// One task, likewise. Throws std::invalid_argument only for a recurrence that makes no rule.
std::string writeCalendar(const Task& task, const std::string& uid);

}  // namespace desktop
