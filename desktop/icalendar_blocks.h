// Cuts a calendar text into its components, so that a broken one harms no other and each knows its line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace desktop {

/// One component of a calendar, from its BEGIN line to its END line.
struct CalendarBlock {
  std::string kind;  ///< "VEVENT", "VTIMEZONE" ..., in upper case
  int line = 0;      ///< of BEGIN, counted from 1
  std::string text;  ///< ready for a parser: LF line ends, and closed even where the file doesn't close it
  bool complete = true;  ///< false when the file ends, or the next component begins, before its END
};

/// Throws InputError when the text is no iCalendar.
std::vector<CalendarBlock> splitCalendar(std::string_view text, const std::string& fileName);

}  // namespace desktop
