// Calendar texts with something wrong: each bad item is named, the rest goes on.
#include <gmock/gmock.h>

#include "desktop/input_error.h"
#include "tests/desktop/icalendar_support.h"

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class BrokenCalendars : public CalendarTest {};

std::string problemOf(const std::string& lines) {
  const std::string problem = onlyProblem(eventOf(lines));
  const std::string where = "file.ics:4: 1: ";
  EXPECT_TRUE(problem.starts_with(where)) << problem;
  return problem.substr(std::min(where.size(), problem.size()));
}

std::string errorOf(const std::string& text) {
  try {
    readCalendar(text, "file.ics");
  } catch (const InputError& error) {
    return error.what();
  }
  return "no error";
}

TEST_F(BrokenCalendars, thatAreNoneAreRefused) {
  for (const std::string& text : {std::string(), std::string("\n\n"), std::string("Hello\nworld\n"),
                                  std::string("BEGIN:VCARD\nEND:VCARD\n"),
                                  std::string("BEGIN:VEVENT\nUID:1\nDTSTART:20050314T090000\nEND:VEVENT\n"),
                                  std::string("BEGIN:VCALENDAR\0x", 17),
                                  std::string("\xFF\xFE"
                                              "B\0E\0G\0I\0N\0",
                                              12)}) {
    EXPECT_EQ(errorOf(text), "file.ics: not an iCalendar file");
  }
}

TEST_F(BrokenCalendars, ofTheOlderFormatAreRefused) {
  EXPECT_EQ(errorOf("BEGIN:VCALENDAR\nVERSION:1.0\nBEGIN:VEVENT\nEND:VEVENT\nEND:VCALENDAR\n"),
            "file.ics:2: vCalendar 1.0 is not read, only iCalendar 2.0");
}

TEST_F(BrokenCalendars, withoutEntriesAreEmpty) {
  const CalendarFile file = readCalendar(calendarOf(""), "file.ics");
  EXPECT_THAT(file.entries, IsEmpty());
  EXPECT_THAT(file.problems, IsEmpty());
}

TEST_F(BrokenCalendars, nameTimesThatCannotBe) {
  EXPECT_EQ(problemOf("SUMMARY:x\r\n"), "there is no DTSTART");
  EXPECT_EQ(problemOf("DTSTART:\r\n"), "there is no DTSTART");
  EXPECT_EQ(problemOf("DTSTART:tomorrow\r\n"), "DTSTART can't be read: tomorrow");
  EXPECT_EQ(problemOf("DTSTART:at: nine\r\n"), "DTSTART can't be read: at: nine");
  EXPECT_EQ(problemOf("DTSTART:20050230T090000\r\n"), "DTSTART is no real time");
  EXPECT_EQ(problemOf("DTSTART;VALUE=DATE:20050230\r\n"), "DTSTART is no real time");
  EXPECT_EQ(problemOf("DTSTART:20050314T250000\r\n"), "DTSTART is no real time");
  EXPECT_EQ(problemOf("DTSTART:18991231T090000\r\n"),
            "the year 1899 is outside the device's calendar (1900 to 2999)");
  EXPECT_EQ(problemOf("DTSTART:20050314T090000\r\nDTEND:30000101T000000\r\n"),
            "the year 3000 is outside the device's calendar (1900 to 2999)");
  EXPECT_EQ(problemOf("DTSTART:20050314T090000\r\nDTEND:later\r\n"), "DTEND can't be read: later");
  EXPECT_EQ(problemOf("DTSTART:20050314T090000\r\nDURATION:long\r\n"), "DURATION can't be read: long");
}

TEST_F(BrokenCalendars, nameEndsThatDoNotFitTheStart) {
  EXPECT_EQ(problemOf("DTSTART:20050314T090000\r\nDTEND:20050314T085959\r\n"), "the end is before the start");
  EXPECT_EQ(problemOf("DTSTART;VALUE=DATE:20050314\r\nDTEND;VALUE=DATE:20050313\r\n"),
            "the end is before the start");
  EXPECT_EQ(problemOf("DTSTART:20050314T090000\r\nDURATION:-PT1H\r\n"), "the end is before the start");
  EXPECT_EQ(problemOf("DTSTART;VALUE=DATE:20050314\r\nDURATION:-P1D\r\n"), "the end is before the start");
  EXPECT_EQ(problemOf("DTSTART:20050314T090000\r\nDTEND;VALUE=DATE:20050315\r\n"),
            "DTEND is a date, DTSTART a time");
  EXPECT_EQ(problemOf("DTSTART;VALUE=DATE:20050314\r\nDTEND:20050315T000000\r\n"),
            "DTSTART is a date, DTEND a time");
}

TEST_F(BrokenCalendars, nameRulesThatAreNone) {
  const std::string start = "DTSTART:20050314T090000\r\n";
  EXPECT_EQ(problemOf(start + "RRULE:FREQ=SOMETIMES\r\n"), "RRULE can't be read: FREQ=SOMETIMES");
  EXPECT_EQ(problemOf(start + "RRULE:INTERVAL=2\r\n"), "RRULE can't be read: INTERVAL=2");
  EXPECT_EQ(problemOf(start + "RRULE:FREQ=DAILY;INTERVAL=0\r\n"),
            "RRULE can't be read: FREQ=DAILY;INTERVAL=0");
  EXPECT_EQ(problemOf(start + "RRULE:FREQ=DAILY;INTERVAL=99999\r\n"),
            "RRULE can't be read: FREQ=DAILY;INTERVAL=99999");
  EXPECT_EQ(problemOf(start + "RRULE:FREQ=DAILY;COUNT=2;UNTIL=20050401\r\n"),
            "RRULE can't be read: FREQ=DAILY;COUNT=2;UNTIL=20050401");
  EXPECT_EQ(problemOf(start + "RRULE:FREQ=DAILY\r\nEXDATE:never\r\n"), "EXDATE can't be read: never");
}

TEST_F(BrokenCalendars, nameRepetitionsThatTheDeviceLacks) {
  const std::string start = "DTSTART:20050314T090000\r\n";
  EXPECT_EQ(problemOf(start + "RDATE:20050315T090000\r\n"),
            "RDATE (single added dates) can't be held by the device");
  EXPECT_EQ(problemOf(start + "RRULE:FREQ=DAILY\r\nEXRULE:FREQ=WEEKLY\r\n"),
            "EXRULE (an excluding rule) can't be held by the device");
  EXPECT_EQ(problemOf(start + "RRULE:FREQ=DAILY;COUNT=3\r\nRRULE:FREQ=WEEKLY\r\n"),
            "several recurrence rules can't be held by the device");
}

TEST_F(BrokenCalendars, nameTextsThatAreNotUtf8) {
  EXPECT_EQ(problemOf("DTSTART:20050314T090000\r\nSUMMARY:Gr\xFC\xDF"
                      "e\r\n"),
            "SUMMARY is no UTF-8 text");
}

TEST_F(BrokenCalendars, tellTheLineOfEachBadItemAndTakeTheOthers) {
  const CalendarFile file = readCalendar(
      "BEGIN:VCALENDAR\n"          // 1
      "VERSION:2.0\n"              // 2
      "BEGIN:VEVENT\n"             // 3
      "UID:no-start\n"             // 4
      "DESCRIPTION:folded\n"       // 5
      " BEGIN:VEVENT\n"            // 6
      "END:VEVENT\n"               // 7
      "\n"                         // 8
      "BEGIN:VEVENT\n"             // 9
      "UID:good\n"                 // 10
      "DTSTART:20050314T090000\n"  // 11
      "this line is nothing\n"     // 12
      "END:VEVENT\n"               // 13
      "BEGIN:VJOURNAL\n"           // 14
      "UID:diary\n"                // 15
      "END:VJOURNAL\n"             // 16
      "BEGIN:VEVENT\n"             // 17
      "UID:not-closed\n"           // 18
      "DTSTART:20050314T090000\n"  // 19
      "begin:vevent\n"             // 20
      "uid:good\n"                 // 21
      "dtstart:20050314T090000\n"  // 22
      "end:vevent\n"               // 23
      "BEGIN:VEVENT\n"             // 24
      "DTSTART:20050314T090000\n"  // 25
      "END:VEVENT\n"               // 26
      "BEGIN:VEVENT\n"             // 27
      "DTSTART:20050314T090000\n"  // 28
      "RRULE:FREQ=SECONDLY\n"      // 29
      "END:VEVENT\n"               // 30
      "END:VCALENDAR\n",
      "file.ics");
  std::vector<std::string> problems;
  for (const FileProblem& problem : file.problems) problems.push_back(problem.where + ": " + problem.what);
  EXPECT_THAT(
      problems,
      ElementsAre("file.ics:3: no-start: there is no DTSTART",
                  "file.ics:14: diary: VJOURNAL is no calendar entry",
                  "file.ics:17: not-closed: the event isn't closed: END:VEVENT is missing or misplaced",
                  "file.ics:20: good: its UID stands for another entry of the file, at line 9",
                  "file.ics:27: recurrence rule FREQ=SECONDLY can't be held by the device: it repeats within "
                  "a day"));
  ASSERT_THAT(file.entries, SizeIs(2));
  EXPECT_EQ(file.entries[0].uid, "good");
  EXPECT_EQ(file.entries[0].where, "file.ics:9: good");
  EXPECT_EQ(file.entries[1].uid, "");
  EXPECT_EQ(file.entries[1].where, "file.ics:24");
  EXPECT_THAT(file.entries[1].notes, ElementsAre("the entry has no UID"));
}

TEST_F(BrokenCalendars, thatEndTooEarlyGiveWhatIsWhole) {
  const std::string whole =
      "BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nUID:a\r\nDTSTART:20050314T090000\r\nEND:VEVENT\r\n";
  EXPECT_EQ(onlyEntry(whole).uid, "a");
  const CalendarFile file =
      readCalendar(whole + "BEGIN:VEVENT\r\nUID:b\r\nDTSTART:20050314T0900", "file.ics");
  EXPECT_THAT(file.entries, SizeIs(1));
  ASSERT_THAT(file.problems, SizeIs(1));
  EXPECT_EQ(file.problems[0].where, "file.ics:6: b");
  EXPECT_THAT(file.problems[0].what, HasSubstr("END:VEVENT is missing"));
}

TEST_F(BrokenCalendars, mayFollowOneAnotherInOneFile) {
  const auto one = [](const std::string& uid) {
    return calendarOf("BEGIN:VEVENT\r\nUID:" + uid + "\r\nDTSTART:20050314T090000\r\nEND:VEVENT\r\n");
  };
  const CalendarFile file = readCalendar(one("a") + "\r\nnoise\r\n" + one("b"), "file.ics");
  EXPECT_THAT(file.entries, SizeIs(2));
  EXPECT_EQ(file.entries[1].where, "file.ics:14: b");
}

}  // namespace
}  // namespace desktop
