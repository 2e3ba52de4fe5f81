// Deleted and changed occurrences of series in calendar files.
#include <gmock/gmock.h>

#include "tests/desktop/icalendar_support.h"

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class CalendarExceptions : public CalendarTest {};

constexpr const char* kWeekly =
    "DTSTART:20050314T090000\r\nDTEND:20050314T093000\r\nRRULE:FREQ=WEEKLY;COUNT=5\r\n"
    "SUMMARY:Standup\r\nLOCATION:Room 4\r\n";

constexpr const char* kWholeDays =
    "DTSTART;VALUE=DATE:20050314\r\nDTEND;VALUE=DATE:20050316\r\nRRULE:FREQ=WEEKLY\r\nSUMMARY:Days\r\n";

std::string master(const std::string& lines) {
  return "BEGIN:VEVENT\r\nUID:1\r\n" + lines + "END:VEVENT\r\n";
}

AppointmentException deletedOn(const LocalTime& day) {
  AppointmentException exception;
  exception.originalDate = day;
  exception.deleted = true;
  return exception;
}

AppointmentException movedTo(const LocalTime& day, const LocalTime& start, const LocalTime& end) {
  AppointmentException exception;
  exception.originalDate = day;
  exception.start = start;
  exception.end = end;
  return exception;
}

CalendarEntry series(const std::string& lines, const std::string& changes = "") {
  return onlyEntry(calendarOf(master(lines) + changes));
}

TEST_F(CalendarExceptions, excludedDatesAreDeletedOccurrences) {
  const CalendarEntry entry = series(std::string(kWeekly) + "EXDATE:20050328T090000,20050321T090000\r\n");
  EXPECT_TRUE(
      (entry.appointment.exceptions == std::vector{deletedOn(at(2005, 3, 21)), deletedOn(at(2005, 3, 28))}));
  EXPECT_THAT(entry.notes, IsEmpty());
}

TEST_F(CalendarExceptions, excludedDaysCountForSeriesWithTimesAndTheOtherWayRound) {
  EXPECT_TRUE(series(std::string(kWeekly) + "EXDATE;VALUE=DATE:20050321\r\n").appointment.exceptions ==
              std::vector{deletedOn(at(2005, 3, 21))});
  EXPECT_TRUE(series(std::string(kWholeDays) + "EXDATE;VALUE=DATE:20050321\r\n").appointment.exceptions ==
              std::vector{deletedOn(at(2005, 3, 21))});
  EXPECT_TRUE(series(std::string(kWholeDays) + "EXDATE:20050321T000000Z\r\n").appointment.exceptions ==
              std::vector{deletedOn(at(2005, 3, 21))});
}

TEST_F(CalendarExceptions, excludedTimesAreFoundAcrossZones) {
  const ComputerZone berlin("Europe/Berlin");
  // Nine in Berlin is 08:00 UTC in winter and 07:00 UTC from 2005-03-27; three in New York once both have
  // summer time, from 2005-04-03.
  const CalendarEntry entry =
      series(std::string(kWeekly) + "EXDATE:20050321T080000Z\r\nEXDATE:20050328T070000Z\r\n" +
             "EXDATE;TZID=America/New_York:20050404T030000\r\n");
  EXPECT_TRUE(
      (entry.appointment.exceptions ==
       std::vector{deletedOn(at(2005, 3, 21)), deletedOn(at(2005, 3, 28)), deletedOn(at(2005, 4, 4))}));
}

TEST_F(CalendarExceptions, excludedDatesThatAreNoOccurrenceAreNoted) {
  const CalendarEntry entry =
      series(std::string(kWeekly) +
             "EXDATE:20050322T090000\r\nEXDATE:20050321T100000\r\nEXDATE:20050418T090000\r\n");
  EXPECT_THAT(entry.appointment.exceptions, IsEmpty());
  EXPECT_THAT(entry.notes, ElementsAre("the excluded date 2005-03-22 09:00 is no occurrence of the series",
                                       "the excluded date 2005-03-21 10:00 is no occurrence of the series",
                                       "the excluded date 2005-04-18 09:00 is no occurrence of the series"));
}

TEST_F(CalendarExceptions, areFoundFarAheadInASeriesWithoutEnd) {
  // 10,000 days after 1980-01-01.
  const CalendarEntry entry =
      series("DTSTART:19800101T090000\r\nRRULE:FREQ=DAILY\r\nEXDATE:20070519T090000\r\n");
  EXPECT_TRUE(entry.appointment.exceptions == std::vector{deletedOn(at(2007, 5, 19))});
}

TEST_F(CalendarExceptions, changedOccurrencesSayOnlyWhatDiffers) {
  const CalendarEntry entry = series(
      kWeekly, master("RECURRENCE-ID:20050321T090000\r\nDTSTART:20050322T140000\r\nDTEND:20050322T150000\r\n"
                      "SUMMARY:Standup\r\nLOCATION:Room 7\r\nTRANSP:TRANSPARENT\r\n"
                      "BEGIN:VALARM\r\nACTION:DISPLAY\r\nDESCRIPTION:x\r\nTRIGGER:-PT5M\r\nEND:VALARM\r\n"));
  AppointmentException expected = movedTo(at(2005, 3, 21), at(2005, 3, 22, 14), at(2005, 3, 22, 15));
  expected.location = u"Room 7";
  expected.busyStatus = 0;
  expected.reminderSet = true;
  expected.reminderMinutes = 5;
  EXPECT_TRUE(entry.appointment.exceptions == std::vector{expected});
  EXPECT_THAT(entry.notes, IsEmpty());
}

TEST_F(CalendarExceptions, textsThatAChangedOccurrenceLacksAreEmptyThere) {
  const CalendarEntry entry = series(
      kWeekly, master("RECURRENCE-ID:20050321T090000\r\nDTSTART:20050321T090000\r\nDTEND:20050321T093000\r\n"
                      "SUMMARY:Standup\r\n"));
  AppointmentException expected = movedTo(at(2005, 3, 21), at(2005, 3, 21, 9), at(2005, 3, 21, 9, 30));
  expected.location = u"";
  EXPECT_TRUE(entry.appointment.exceptions == std::vector{expected});
}

TEST_F(CalendarExceptions, changedOccurrencesMayStandBeforeTheirSeries) {
  const std::string change = "RECURRENCE-ID:20050321T090000\r\nDTSTART:20050321T100000\r\nSUMMARY:Late\r\n";
  const CalendarEntry entry = onlyEntry(calendarOf(master(change) + master(kWeekly)));
  EXPECT_EQ(entry.where, "file.ics:10: 1");
  EXPECT_THAT(entry.appointment.exceptions, SizeIs(1));
}

TEST_F(CalendarExceptions, cancelledOccurrencesAreDeleted) {
  const CalendarEntry entry = series(
      kWeekly, master("RECURRENCE-ID:20050321T090000\r\nDTSTART:20050321T090000\r\nSTATUS:CANCELLED\r\n"));
  EXPECT_TRUE(entry.appointment.exceptions == std::vector{deletedOn(at(2005, 3, 21))});
  EXPECT_THAT(entry.notes, IsEmpty());
}

TEST_F(CalendarExceptions, ofAllDaySeriesEndOnTheDayAfter) {
  const CalendarEntry entry = series(
      kWholeDays,
      master(
          "RECURRENCE-ID;VALUE=DATE:20050321\r\nDTSTART;VALUE=DATE:20050322\r\nDTEND;VALUE=DATE:20050325\r\n"
          "SUMMARY:Days\r\n"));
  EXPECT_TRUE(entry.appointment.exceptions ==
              std::vector{movedTo(at(2005, 3, 21), at(2005, 3, 22), at(2005, 3, 25))});
}

TEST_F(CalendarExceptions, areAllDayExactlyWhenTheirSeriesIs) {
  const CalendarEntry timed = series(
      kWholeDays,
      master("RECURRENCE-ID;VALUE=DATE:20050321\r\nDTSTART:20050321T100000\r\nDTEND:20050321T120000\r\n"
             "SUMMARY:Days\r\n"));
  EXPECT_TRUE(timed.appointment.exceptions ==
              std::vector{movedTo(at(2005, 3, 21), at(2005, 3, 21), at(2005, 3, 22))});
  EXPECT_THAT(timed.notes,
              ElementsAre("the occurrence of 2005-03-21 loses its times: its series lasts whole days"));

  const CalendarEntry allDay =
      series(kWeekly, master("RECURRENCE-ID:20050321T090000\r\nDTSTART;VALUE=DATE:20050321\r\n"
                             "SUMMARY:Standup\r\nLOCATION:Room 4\r\n"));
  EXPECT_TRUE(allDay.appointment.exceptions ==
              std::vector{movedTo(at(2005, 3, 21), at(2005, 3, 21), at(2005, 3, 22))});
  EXPECT_THAT(
      allDay.notes,
      ElementsAre("the occurrence of 2005-03-21 lasts from midnight to midnight: its series has times"));
}

TEST_F(CalendarExceptions, shareCategoriesAndPrivacyWithTheirSeries) {
  const CalendarEntry entry = series(
      kWeekly, master("RECURRENCE-ID:20050321T090000\r\nDTSTART:20050321T090000\r\nDTEND:20050321T093000\r\n"
                      "SUMMARY:Standup\r\nLOCATION:Room 4\r\nCATEGORIES:Home\r\nCLASS:PRIVATE\r\n"));
  EXPECT_THAT(entry.notes, ElementsAre("the occurrence of 2005-03-21 keeps the categories of its series",
                                       "the occurrence of 2005-03-21 is as private as its series"));
}

TEST_F(CalendarExceptions, changesOfWhatIsNoOccurrenceAreNoted) {
  const CalendarEntry entry = series(
      kWeekly, master("RECURRENCE-ID:20050323T090000\r\nDTSTART:20050323T100000\r\nSUMMARY:Other\r\n"));
  EXPECT_THAT(entry.appointment.exceptions, IsEmpty());
  EXPECT_THAT(
      entry.notes,
      ElementsAre("the changed occurrence of 2005-03-23 09:00 is dropped: the series has none there"));
}

TEST_F(CalendarExceptions, changesOfAllLaterOccurrencesAreAProblemOfTheirOwn) {
  const CalendarFile file = readCalendar(
      calendarOf(master(kWeekly) +
                 master("RECURRENCE-ID;RANGE=THISANDFUTURE:20050321T090000\r\nDTSTART:20050321T100000\r\n")),
      "file.ics");
  ASSERT_THAT(file.entries, SizeIs(1));
  EXPECT_THAT(file.entries[0].appointment.exceptions, IsEmpty());
  ASSERT_THAT(file.problems, SizeIs(1));
  EXPECT_EQ(file.problems[0].where, "file.ics:12: 1");
  EXPECT_EQ(file.problems[0].what, "a change of this and all later occurrences can't be held by the device");
}

TEST_F(CalendarExceptions, brokenChangesLeaveTheRestOfTheSeries) {
  const CalendarFile file =
      readCalendar(calendarOf(master(kWeekly) + master("RECURRENCE-ID:20050321T090000\r\nDTSTART:soon\r\n") +
                              master("RECURRENCE-ID:20050328T090000\r\nDTSTART:20050328T100000\r\n")),
                   "file.ics");
  ASSERT_THAT(file.entries, SizeIs(1));
  EXPECT_THAT(file.entries[0].appointment.exceptions, SizeIs(1));
  ASSERT_THAT(file.problems, SizeIs(1));
  EXPECT_EQ(file.problems[0].where, "file.ics:12: 1");
  EXPECT_THAT(file.problems[0].what, HasSubstr("DTSTART can't be read: soon"));
}

TEST_F(CalendarExceptions, withoutTheirSeriesAreEntriesOfTheirOwn) {
  const CalendarEntry entry = onlyEntry(
      calendarOf(master("RECURRENCE-ID:20050321T090000\r\nDTSTART:20050321T100000\r\nSUMMARY:Late\r\n")));
  EXPECT_EQ(entry.appointment.start, at(2005, 3, 21, 10));
  EXPECT_THAT(entry.notes,
              ElementsAre("one occurrence of a series that isn't in the file; taken as an entry of its own"));
}

TEST_F(CalendarExceptions, ofWhatDoesNotRepeatAreNoted) {
  const CalendarEntry entry = series("DTSTART:20050314T090000\r\n",
                                     master("RECURRENCE-ID:20050314T090000\r\nDTSTART:20050314T100000\r\n"));
  EXPECT_THAT(entry.notes, ElementsAre("changed occurrences are dropped: the entry doesn't repeat"));
}

TEST_F(CalendarExceptions, ofARefusedSeriesAreRefusedToo) {
  const CalendarFile file =
      readCalendar(calendarOf(master("DTSTART:20050314T090000\r\nRRULE:FREQ=HOURLY\r\n") +
                              master("RECURRENCE-ID:20050314T100000\r\nDTSTART:20050314T103000\r\n")),
                   "file.ics");
  EXPECT_THAT(file.entries, IsEmpty());
  ASSERT_THAT(file.problems, SizeIs(2));
  EXPECT_EQ(file.problems[1].where, "file.ics:9: 1");
  EXPECT_EQ(file.problems[1].what, "the series that it belongs to could not be taken");
}

}  // namespace
}  // namespace desktop
