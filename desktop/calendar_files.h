// Folders and files of calendar entries, as they are given for sending and as they are written.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/icalendar.h"

namespace desktop {

struct CalendarItem {
  std::string file;
  CalendarEntry entry;
};

struct CalendarItems {
  std::vector<CalendarItem> items;
  std::vector<CalendarProblem> problems;  ///< items that were left out
};

/// Reads files, and the .ics files of folders and their folders in the order of their names. Throws
/// InputError for the first one that can't be read or is no calendar.
CalendarItems readCalendarFiles(std::span<const std::filesystem::path> paths);

/// The device's entry as the text of a calendar file. Throws DeviceRefusal when it has no meaning in one.
std::string calendarText(const Appointment& appointment, std::u16string_view deviceIdentity);

/// Whether the text of a calendar file has this UID, spelled as calendarText spells it, and no other one.
bool namesOnly(std::string_view text, std::string_view uid);

/// The folder for calendar files in the given one, made when it isn't there. Throws InputError when it can't
/// be.
std::filesystem::path makeCalendarFolder(const std::filesystem::path& folder);

}  // namespace desktop
