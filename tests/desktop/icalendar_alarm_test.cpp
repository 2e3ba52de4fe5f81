// Alarms of calendar files and the device's one reminder.
#include <gmock/gmock.h>

#include "tests/desktop/icalendar_support.h"

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class CalendarAlarms : public CalendarTest {};

std::string alarm(const std::string& trigger, const std::string& action = "DISPLAY") {
  return "BEGIN:VALARM\r\nACTION:" + action + "\r\nDESCRIPTION:x\r\nTRIGGER" + trigger + "\r\nEND:VALARM\r\n";
}

/// An event from nine to half past ten.
CalendarEntry entryWith(const std::string& alarms) {
  return onlyEntry(eventOf("DTSTART:20050314T090000\r\nDTEND:20050314T103000\r\n" + alarms));
}

void expectReminder(const std::string& alarms, std::uint32_t minutes) {
  const CalendarEntry entry = entryWith(alarms);
  EXPECT_TRUE(entry.appointment.reminderSet);
  EXPECT_EQ(entry.appointment.reminderMinutes, minutes);
  EXPECT_THAT(entry.notes, IsEmpty());
}

void expectReminder(const std::string& alarms, std::uint32_t minutes, const std::string& note) {
  const CalendarEntry entry = entryWith(alarms);
  EXPECT_TRUE(entry.appointment.reminderSet);
  EXPECT_EQ(entry.appointment.reminderMinutes, minutes);
  EXPECT_THAT(entry.notes, ElementsAre(note));
}

void expectNone(const std::string& alarms, const std::string& note) {
  const CalendarEntry entry = entryWith(alarms);
  EXPECT_FALSE(entry.appointment.reminderSet);
  EXPECT_EQ(entry.appointment.reminderMinutes, 15U);
  EXPECT_THAT(entry.notes, ElementsAre(note));
}

TEST_F(CalendarAlarms, beforeTheStartAreReminders) {
  expectReminder(alarm(":-PT15M"), 15);
  expectReminder(alarm(":PT0S"), 0);
  expectReminder(alarm(":-P1DT2H"), 26 * 60);
  expectReminder(alarm(":-P1W"), 7 * 24 * 60);
  expectReminder(alarm(":-PT30M", "AUDIO"), 30);
  expectReminder(alarm(";VALUE=DURATION;RELATED=START:-PT5M"), 5);
}

TEST_F(CalendarAlarms, countedFromTheEndAreConverted) {
  // The event lasts 90 minutes: two hours before its end are 30 minutes before its start.
  expectReminder(alarm(";RELATED=END:-PT2H"), 30);
  expectNone(alarm(";RELATED=END:-PT1H"), "a reminder after the start is not kept");
}

TEST_F(CalendarAlarms, atAFixedTimeAreConverted) {
  expectReminder(alarm(";VALUE=DATE-TIME:20050314T081500Z"), 45);
  expectNone(alarm(";VALUE=DATE-TIME:20050314T091500Z"), "a reminder after the start is not kept");
}

TEST_F(CalendarAlarms, atAFixedTimeCountByTheClockOfThisComputer) {
  const ComputerZone berlin("Europe/Berlin");
  // Nine o'clock in winter is eight o'clock UTC.
  expectReminder(alarm(";VALUE=DATE-TIME:20050314T074500Z"), 15);
}

TEST_F(CalendarAlarms, atAFixedTimeAreNotForASeries) {
  const CalendarEntry entry = onlyEntry(eventOf("DTSTART:20050314T090000\r\nRRULE:FREQ=DAILY\r\n" +
                                                alarm(";VALUE=DATE-TIME:20050314T081500Z")));
  EXPECT_FALSE(entry.appointment.reminderSet);
  EXPECT_THAT(entry.notes, ElementsAre("a reminder at a fixed time is not kept with a series"));
}

TEST_F(CalendarAlarms, afterTheStartAreNotKept) {
  expectNone(alarm(":PT10M"), "a reminder after the start is not kept");
}

TEST_F(CalendarAlarms, areLimitedToOneYear) {
  expectReminder(alarm(":-P365D"), 525600);
  expectReminder(alarm(":-PT525601M"), 525600,
                 "the reminder is set to one year before the start, the device's earliest");
}

TEST_F(CalendarAlarms, areSetToWholeMinutes) {
  expectReminder(alarm(":-PT90S"), 2, "the reminder is set to whole minutes");
}

TEST_F(CalendarAlarms, ofSeveralKeepTheEarliest) {
  expectReminder(alarm(":-PT15M") + alarm(":-P1D") + alarm(":PT0S"), 24 * 60,
                 "of 3 reminders only the earliest is kept");
}

TEST_F(CalendarAlarms, thatSendMailAreNotKept) {
  const std::string note = "a reminder that sends mail or runs a program is not kept";
  expectNone(alarm(":-PT15M", "EMAIL"), note);
  expectReminder(alarm(":-PT15M", "EMAIL") + alarm(":-PT10M"), 10, note);
}

TEST_F(CalendarAlarms, withoutAReadableTimeAreNotKept) {
  expectNone(alarm(":soon"), "a reminder whose time can't be read is not kept");
}

TEST_F(CalendarAlarms, thatOnlySayThatThereIsNoneAreNone) {
  const CalendarEntry entry = entryWith(alarm(";VALUE=DATE-TIME:19760401T005545Z", "NONE"));
  EXPECT_FALSE(entry.appointment.reminderSet);
  EXPECT_THAT(entry.notes, IsEmpty());
}

TEST_F(CalendarAlarms, beforeTheFirstMomentOfAnAllDayEntryAreReminders) {
  const CalendarEntry entry = onlyEntry(eventOf("DTSTART;VALUE=DATE:20050314\r\n" + alarm(":-PT15H")));
  EXPECT_TRUE(entry.appointment.reminderSet);
  EXPECT_EQ(entry.appointment.reminderMinutes, 15U * 60U);
}

}  // namespace
}  // namespace desktop
