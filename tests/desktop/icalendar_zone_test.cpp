// Times of other zones, as this computer's clock shows them.
#include <gmock/gmock.h>

#include "tests/desktop/icalendar_patterns.h"
#include "tests/desktop/icalendar_support.h"

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class CalendarZones : public CalendarTest {};

std::string vtimezone(const std::string& name, const std::string& rules) {
  return "BEGIN:VTIMEZONE\r\nTZID:" + name + "\r\n" + rules + "END:VTIMEZONE\r\n";
}

std::string fixedOffset(const std::string& offset) {
  return "BEGIN:STANDARD\r\nDTSTART:19700101T000000\r\nTZOFFSETFROM:" + offset + "\r\nTZOFFSETTO:" + offset +
         "\r\nEND:STANDARD\r\n";
}

/// Central European rules in the way of programs that begin their zones in 1601.
const char* const kCentralEurope =
    "BEGIN:STANDARD\r\nDTSTART:16010101T030000\r\nTZOFFSETFROM:+0200\r\nTZOFFSETTO:+0100\r\n"
    "RRULE:FREQ=YEARLY;INTERVAL=1;BYDAY=-1SU;BYMONTH=10\r\nEND:STANDARD\r\n"
    "BEGIN:DAYLIGHT\r\nDTSTART:16010101T020000\r\nTZOFFSETFROM:+0100\r\nTZOFFSETTO:+0200\r\n"
    "RRULE:FREQ=YEARLY;INTERVAL=1;BYDAY=-1SU;BYMONTH=3\r\nEND:DAYLIGHT\r\n";

std::string eventAt(const std::string& start, const std::string& more = "") {
  return "BEGIN:VEVENT\r\nUID:1\r\nDTSTART" + start + "\r\n" + more + "END:VEVENT\r\n";
}

LocalTime startOf(const std::string& text) {
  return onlyEntry(calendarOf(text)).appointment.start;
}

TEST_F(CalendarZones, ofUtcTimesIsThisComputers) {
  EXPECT_EQ(startOf(eventAt(":20050314T130000Z")), at(2005, 3, 14, 13));
  const ComputerZone newYork("America/New_York");
  EXPECT_EQ(startOf(eventAt(":20050314T130000Z")), at(2005, 3, 14, 8));
  EXPECT_EQ(startOf(eventAt(":20050714T130000Z")), at(2005, 7, 14, 9));
  EXPECT_EQ(startOf(eventAt(":20050314T030000Z")), at(2005, 3, 13, 22));
}

TEST_F(CalendarZones, doNotTouchFloatingTimesAndDays) {
  const ComputerZone tokyo("Asia/Tokyo");
  EXPECT_EQ(startOf(eventAt(":20050314T130000")), at(2005, 3, 14, 13));
  EXPECT_EQ(startOf(eventAt(";VALUE=DATE:20050314")), at(2005, 3, 14));
  EXPECT_EQ(startOf(eventAt(";TZID=America/New_York;VALUE=DATE:20050314")), at(2005, 3, 14));
}

TEST_F(CalendarZones, withWellKnownNamesNeedNoDefinition) {
  EXPECT_EQ(startOf(eventAt(";TZID=Europe/Berlin:20050314T130000")), at(2005, 3, 14, 12));
  EXPECT_EQ(startOf(eventAt(";TZID=\"Europe/Berlin\":20050714T130000")), at(2005, 7, 14, 11));
  EXPECT_EQ(startOf(eventAt(";TZID=/example.org/20070129_1/Europe/Berlin:20050314T130000")),
            at(2005, 3, 14, 12));
}

TEST_F(CalendarZones, ofTheFileComeFirst) {
  EXPECT_EQ(startOf(vtimezone("Office", fixedOffset("+0530")) + eventAt(";TZID=Office:20050314T130000")),
            at(2005, 3, 14, 7, 30));
  // A zone may be defined after it is used, and may contradict what its name says.
  EXPECT_EQ(startOf(eventAt(";TZID=Europe/Berlin:20050314T130000") +
                    vtimezone("Europe/Berlin", fixedOffset("+0300"))),
            at(2005, 3, 14, 10));
}

TEST_F(CalendarZones, mayHaveRulesThatBeginIn1601) {
  const std::string zone = vtimezone("W. Europe Standard Time", kCentralEurope);
  EXPECT_EQ(startOf(zone + eventAt(";TZID=\"W. Europe Standard Time\":20050314T130000")),
            at(2005, 3, 14, 12));
  EXPECT_EQ(startOf(zone + eventAt(";TZID=W. Europe Standard Time:20050714T130000")), at(2005, 7, 14, 11));
}

TEST_F(CalendarZones, thatNobodyKnowsAreAProblemOfTheirItem) {
  EXPECT_EQ(onlyProblem(calendarOf(eventAt(";TZID=W. Europe Standard Time:20050314T130000"))),
            "file.ics:4: 1: time zone \"W. Europe Standard Time\" is not known");
  EXPECT_EQ(onlyProblem(calendarOf(eventAt(":20050314T130000", "DTEND;TZID=Nowhere:20050314T140000\r\n"))),
            "file.ics:4: 1: time zone \"Nowhere\" is not known");
}

TEST_F(CalendarZones, withoutOffsetsAreNoDefinition) {
  EXPECT_EQ(startOf(vtimezone("Europe/Berlin", "") + eventAt(";TZID=Europe/Berlin:20050314T130000")),
            at(2005, 3, 14, 12));
  EXPECT_THAT(onlyProblem(calendarOf(vtimezone("Empty", "") + eventAt(";TZID=Empty:20050314T130000"))),
              EndsWith("time zone \"Empty\" is not known"));
}

TEST_F(CalendarZones, keepASeriesThatFollowsThisComputersClock) {
  const ComputerZone berlin("Europe/Berlin");
  for (const std::string& zone : {std::string(), vtimezone("Europe/Berlin", kCentralEurope)}) {
    const CalendarEntry entry =
        onlyEntry(calendarOf(zone + eventAt(";TZID=Europe/Berlin:20050314T090000", "RRULE:FREQ=DAILY\r\n")));
    EXPECT_EQ(entry.appointment.start, at(2005, 3, 14, 9));
    EXPECT_TRUE(*entry.appointment.recurrence == patternOf("daily", at(2005, 3, 14)));
    EXPECT_THAT(entry.notes, IsEmpty());
  }
}

TEST_F(CalendarZones, leaveAnHourThatTheClockSkipsToTheDevice) {
  const ComputerZone berlin("Europe/Berlin");
  const CalendarEntry entry =
      onlyEntry(calendarOf(eventAt(";TZID=Europe/Berlin:20050314T023000", "RRULE:FREQ=DAILY\r\n")));
  EXPECT_TRUE(*entry.appointment.recurrence == patternOf("daily", at(2005, 3, 14)));
  EXPECT_THAT(entry.appointment.exceptions, IsEmpty());
}

TEST_F(CalendarZones, thatShiftAgainstThisComputersRefuseASeriesWithoutEnd) {
  const ComputerZone berlin("Europe/Berlin");
  EXPECT_EQ(onlyProblem(calendarOf(eventAt(":20050314T090000Z", "RRULE:FREQ=WEEKLY\r\n"))),
            "file.ics:4: 1: recurrence rule FREQ=WEEKLY can't be held by the device: its zone UTC shifts "
            "against this "
            "computer's in the course of the series");
  EXPECT_THAT(
      onlyProblem(calendarOf(eventAt(";TZID=America/New_York:20050314T090000", "RRULE:FREQ=WEEKLY\r\n"))),
      HasSubstr("its zone America/New_York shifts"));
}

TEST_F(CalendarZones, thatShiftMakeExceptionsOfASeriesWithAnEnd) {
  const ComputerZone berlin("Europe/Berlin");
  // 09:00 UTC is ten o'clock in Berlin, and eleven from 2005-03-27.
  const CalendarEntry entry = onlyEntry(
      calendarOf(eventAt(":20050314T090000Z", "DTEND:20050314T093000Z\r\nRRULE:FREQ=WEEKLY;COUNT=4\r\n")));
  EXPECT_EQ(entry.appointment.start, at(2005, 3, 14, 10));
  EXPECT_TRUE(*entry.appointment.recurrence == patternOf("weekly MO times 4", at(2005, 3, 14)));
  ASSERT_THAT(entry.appointment.exceptions, SizeIs(2));
  AppointmentException expected;
  expected.originalDate = at(2005, 3, 28);
  expected.start = at(2005, 3, 28, 11);
  expected.end = at(2005, 3, 28, 11, 30);
  EXPECT_TRUE(entry.appointment.exceptions[0] == expected);
  EXPECT_EQ(entry.appointment.exceptions[1].start, at(2005, 4, 4, 11));
  EXPECT_THAT(entry.notes, ElementsAre("occurrences at another hour here, kept as exceptions: 2"));
}

TEST_F(CalendarZones, thatShiftGoTogetherWithOtherExceptions) {
  const ComputerZone berlin("Europe/Berlin");
  const CalendarEntry entry = onlyEntry(calendarOf(
      eventAt(":20050314T090000Z",
              "RRULE:FREQ=WEEKLY;COUNT=4\r\nEXDATE:20050328T090000Z\r\nEXDATE:20050321T090000Z\r\n")));
  ASSERT_THAT(entry.appointment.exceptions, SizeIs(3));
  EXPECT_TRUE(entry.appointment.exceptions[0].deleted);
  EXPECT_TRUE(entry.appointment.exceptions[1].deleted);
  EXPECT_EQ(entry.appointment.exceptions[2].start, at(2005, 4, 4, 11));
}

TEST_F(CalendarZones, tooFarApartForTooManyOccurrencesRefuseTheSeries) {
  const ComputerZone berlin("Europe/Berlin");
  // Winter time for 13 days, then 217 days of summer time.
  EXPECT_THAT(onlyProblem(calendarOf(eventAt(":20050314T090000Z", "RRULE:FREQ=DAILY;COUNT=230\r\n"))),
              HasSubstr("its zone UTC shifts"));
}

TEST_F(CalendarZones, mayMoveASeriesToAnotherDay) {
  // Eight o'clock in Tokyo is eleven in the evening before, UTC; neither has summer time.
  const Appointment weekly =
      onlyEntry(calendarOf(eventAt(";TZID=Asia/Tokyo:20050314T080000", "RRULE:FREQ=WEEKLY;BYDAY=MO,SA\r\n")))
          .appointment;
  EXPECT_EQ(weekly.start, at(2005, 3, 13, 23));
  EXPECT_TRUE(*weekly.recurrence == patternOf("weekly SU,FR", at(2005, 3, 13)));

  const Appointment monthly = onlyEntry(calendarOf(eventAt(";TZID=Asia/Tokyo:20050315T080000",
                                                           "RRULE:FREQ=MONTHLY;BYMONTHDAY=15\r\n")))
                                  .appointment;
  EXPECT_TRUE(*monthly.recurrence == patternOf("monthly 14", at(2005, 3, 14)));

  EXPECT_THAT(onlyProblem(calendarOf(eventAt(";TZID=Asia/Tokyo:20050301T080000", "RRULE:FREQ=MONTHLY\r\n"))),
              EndsWith("the device's pattern would fall on other days"));
}

TEST_F(CalendarZones, ofAnEndAreThisComputersToo) {
  const ComputerZone newYork("America/New_York");
  // Midnight UTC is seven in the evening here: that day's entry at nine still belongs to the series.
  const CalendarEntry entry = onlyEntry(calendarOf(
      eventAt(";TZID=America/New_York:19970902T090000", "RRULE:FREQ=DAILY;UNTIL=19971224T000000Z\r\n")));
  EXPECT_TRUE(*entry.appointment.recurrence == patternOf("daily until 19971223", at(1997, 9, 2)));
}

}  // namespace
}  // namespace desktop
