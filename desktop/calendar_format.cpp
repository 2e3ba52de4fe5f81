// Calendar files as a format of files that items are kept in.
#include <utility>

#include "desktop/file_format.h"
#include "desktop/icalendar.h"

namespace desktop {

namespace {

FileItems readCalendarItems(std::string_view text, const std::string& fileName) {
  CalendarFile file = readCalendar(text, fileName);
  FileItems result;
  for (CalendarEntry& entry : file.entries) {
    result.items.push_back(
        {fileName, std::move(entry.uid), std::move(entry.appointment), std::move(entry.notes)});
  }
  for (CalendarTask& task : file.tasks) {
    result.items.push_back({fileName, std::move(task.uid), std::move(task.task), std::move(task.notes)});
  }
  result.problems = std::move(file.problems);
  return result;
}

}  // namespace

const FileFormat kCalendarFormat{"icalendar", ".ics", "BEGIN:VCALENDAR", nullptr, readCalendarItems};

}  // namespace desktop
