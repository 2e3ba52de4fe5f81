// What the tests of calendar files share: a zone for the computer, and short ways to texts and times.
#pragma once

#include <cstdlib>
#include <ctime>
#include <gtest/gtest.h>
#include <string>

#include "desktop/icalendar.h"

namespace desktop {

/// Puts this computer into a zone, for one test.
class ComputerZone {
 public:
  explicit ComputerZone(const char* name) {
    if (const char* before = std::getenv("TZ")) before_ = before;
    set(name);
  }
  ~ComputerZone() { before_.empty() ? unset() : set(before_.c_str()); }
  ComputerZone(const ComputerZone&) = delete;
  ComputerZone& operator=(const ComputerZone&) = delete;

 private:
  static void set(const char* name) {
    setenv("TZ", name, 1);
    tzset();
  }
  static void unset() {
    unsetenv("TZ");
    tzset();
  }

  std::string before_;
};

/// Tests run in a computer whose clock shows UTC unless they say otherwise.
class CalendarTest : public testing::Test {
  ComputerZone utc_{"UTC"};
};

/// A calendar around the lines.
inline std::string calendarOf(const std::string& lines) {
  return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//test//EN\r\n" + lines + "END:VCALENDAR\r\n";
}

/// An event with the UID "1" around the lines, in a calendar; its BEGIN is line 4.
inline std::string eventOf(const std::string& lines) {
  return calendarOf("BEGIN:VEVENT\r\nUID:1\r\n" + lines + "END:VEVENT\r\n");
}

inline LocalTime at(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  LocalTime time;
  time.year = static_cast<std::uint16_t>(year);
  time.month = static_cast<std::uint16_t>(month);
  time.day = static_cast<std::uint16_t>(day);
  time.hour = static_cast<std::uint16_t>(hour);
  time.minute = static_cast<std::uint16_t>(minute);
  time.second = static_cast<std::uint16_t>(second);
  return time;
}

/// The only entry of a text that has no problems.
inline CalendarEntry onlyEntry(const std::string& text) {
  CalendarFile file = readCalendar(text, "file.ics");
  for (const FileProblem& problem : file.problems) ADD_FAILURE() << problem.where << ": " << problem.what;
  EXPECT_EQ(file.entries.size(), 1U);
  return file.entries.empty() ? CalendarEntry() : std::move(file.entries.front());
}

/// A task with the UID "1" around the lines, in a calendar; its BEGIN is line 4.
inline std::string todoOf(const std::string& lines) {
  return calendarOf("BEGIN:VTODO\r\nUID:1\r\n" + lines + "END:VTODO\r\n");
}

/// The only task of a text that has no problems.
inline CalendarTask onlyTask(const std::string& text) {
  CalendarFile file = readCalendar(text, "file.ics");
  for (const FileProblem& problem : file.problems) ADD_FAILURE() << problem.where << ": " << problem.what;
  EXPECT_EQ(file.tasks.size(), 1U);
  return file.tasks.empty() ? CalendarTask() : std::move(file.tasks.front());
}

/// "where: what" of the only problem of a text that has no entries.
inline std::string onlyProblem(const std::string& text) {
  const CalendarFile file = readCalendar(text, "file.ics");
  EXPECT_TRUE(file.entries.empty());
  EXPECT_TRUE(file.tasks.empty());
  EXPECT_EQ(file.problems.size(), 1U);
  return file.problems.empty() ? std::string()
                               : file.problems.front().where + ": " + file.problems.front().what;
}

}  // namespace desktop
