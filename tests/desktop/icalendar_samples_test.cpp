// The sample calendars: what becomes of each, and that no damage to them does harm.
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>

#include "desktop/input_error.h"
#include "desktop/text.h"
#include "tests/desktop/icalendar_support.h"

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string sampleText(const std::string& name) {
  std::ifstream file(QORV_TEST_DATA "/../../samples/calendar/" + name, std::ios::binary);
  EXPECT_TRUE(file) << name;
  return {std::istreambuf_iterator<char>(file), {}};
}

CalendarFile readSample(const std::string& name) {
  return readCalendar(sampleText(name), name);
}

/// Each entry as "line subject", "+N" for N exceptions, and its notes in brackets.
std::vector<std::string> summaryOf(const CalendarFile& file) {
  std::vector<std::string> lines;
  for (const CalendarEntry& entry : file.entries) {
    std::string line = entry.where.substr(entry.where.find(':') + 1);
    line = line.substr(0, line.find(':')) + " " + toUtf8(entry.appointment.subject);
    if (!entry.appointment.exceptions.empty()) {
      line += " +" + std::to_string(entry.appointment.exceptions.size());
    }
    for (const std::string& note : entry.notes) line += " [" + note + "]";
    lines.push_back(line);
  }
  return lines;
}

/// Each problem as "line reason".
std::vector<std::string> problemsOf(const CalendarFile& file) {
  std::vector<std::string> lines;
  for (const FileProblem& problem : file.problems) {
    const std::string line = problem.where.substr(problem.where.find(':') + 1);
    lines.push_back(line.substr(0, line.find(':')) + " " + problem.what);
  }
  return lines;
}

class SampleCalendars : public CalendarTest {};

TEST_F(SampleCalendars, workWeek) {
  const CalendarFile file = readSample("work-week.ics");
  EXPECT_THAT(
      summaryOf(file),
      ElementsAre("7 Morning round",
                  "30 Design review [attendees are not kept on the device] [the organizer is not kept on the "
                  "device]",
                  "59 Board meeting", "72 Hand in hours", "90 Close the books", "103 Lunch with the printers",
                  "114 Dentist"));
  EXPECT_THAT(problemsOf(file), IsEmpty());
}

TEST_F(SampleCalendars, allDayAndAlarms) {
  const CalendarFile file = readSample("all-day-and-alarms.ics");
  EXPECT_THAT(
      summaryOf(file),
      ElementsAre("7 Holidays by the sea", "21 Ann's birthday", "35 Thanksgiving",
                  "55 Concert [of 2 reminders only the earliest is kept] [the web address is not kept on the "
                  "device]",
                  "74 Call the landlord", "86 Water the plants [a reminder after the start is not kept]"));
  EXPECT_THAT(problemsOf(file),
              ElementsAre("47 recurrence rule FREQ=YEARLY can't be held by the device: the device's "
                          "pattern would fall on other days"));
}

TEST_F(SampleCalendars, zones) {
  const std::vector<std::string> single = {"52 Call with the New York office",
                                           "59 Call with the Berlin office", "66 Maintenance window",
                                           "73 Tokyo markets open", "80 Trade fair opens"};
  const CalendarFile inUtc = readSample("zones.ics");
  std::vector<std::string> expected = single;
  expected.push_back(
      "87 Five Mondays in New York +2 [occurrences at another hour here, kept as exceptions: 2]");
  EXPECT_EQ(summaryOf(inUtc), expected);
  EXPECT_THAT(problemsOf(inUtc),
              ElementsAre("95 recurrence rule FREQ=WEEKLY;BYDAY=FR can't be held by the device: its "
                          "zone America/New_York shifts against this computer's in the course of "
                          "the series",
                          "103 time zone \"Customized Time Zone 2\" is not known"));

  const ComputerZone newYork("America/New_York");
  const CalendarFile inNewYork = readSample("zones.ics");
  expected = single;
  expected.insert(expected.end(), {"87 Five Mondays in New York", "95 Every Friday in New York"});
  EXPECT_EQ(summaryOf(inNewYork), expected);
  EXPECT_THAT(problemsOf(inNewYork), ElementsAre("103 time zone \"Customized Time Zone 2\" is not known"));
}

TEST_F(SampleCalendars, seriesWithExceptions) {
  const CalendarFile file = readSample("series-with-exceptions.ics");
  EXPECT_THAT(
      summaryOf(file),
      ElementsAre(
          "4 Choir +4", "45 On call +2",
          "64 Book club +1 [the excluded date 2005-06-02 20:00 is no occurrence of the series]",
          "82 Piano tuner comes an hour later this time [one occurrence of a series that isn't in the "
          "file; taken as an entry of its own]"));
  EXPECT_THAT(problemsOf(file), ElementsAre("74 RDATE (single added dates) can't be held by the device"));
}

TEST_F(SampleCalendars, foldedAndEscaped) {
  const CalendarFile file = readSample("folded-and-escaped.ics");
  ASSERT_EQ(file.entries.size(), 2U);
  EXPECT_THAT(problemsOf(file), IsEmpty());
  const Appointment& trip = file.entries[0].appointment;
  EXPECT_EQ(trip.subject,
            u"Ausflug auf die Insel: F\u00E4hre, Fr\u00FChst\u00FCck, Gr\u00F6\u00DFe der Gruppe "
            u"pr\u00FCfen; Gep\u00E4ck nicht vergessen");
  EXPECT_EQ(trip.location, u"Alter Anleger Kai 3");
  EXPECT_EQ(trip.categories, u"Reise,Familie,Sommer");
  EXPECT_GT(trip.body.size(), 4096U);
  EXPECT_TRUE(trip.body.starts_with(u"1. \u00DCberfahrt bei Sturm nur nach R\u00FCckfrage"));
  EXPECT_THAT(file.entries[0].notes, ElementsAre("the position on the map is not kept on the device"));
  EXPECT_EQ(file.entries[1].appointment.body,
            u"Backslash \\ and quote \"here\", colon: done; new line\r\nNEW LINE\r\nlast line");
}

TEST_F(SampleCalendars, damaged) {
  const CalendarFile file = readSample("damaged.ics");
  EXPECT_THAT(summaryOf(file), ElementsAre("4 Whole", "41 Whole again"));
  EXPECT_THAT(problemsOf(file),
              ElementsAre("11 there is no DTSTART", "16 DTSTART can't be read: 14.03.2005 09:00",
                          "22 the end is before the start", "29 RRULE can't be read: FREQ=FORTNIGHTLY",
                          "36 the event isn't closed: END:VEVENT is missing or misplaced",
                          "52 the event isn't closed: END:VEVENT is missing or misplaced"));
  ASSERT_EQ(file.tasks.size(), 1U);
  EXPECT_EQ(file.tasks[0].task.subject, u"A task among the events");
}

TEST_F(SampleCalendars, errands) {
  const CalendarFile file = readSample("../tasks/errands.ics");
  EXPECT_THAT(problemsOf(file), IsEmpty());
  ASSERT_EQ(file.tasks.size(), 6U);
  EXPECT_EQ(file.tasks[0].task.subject, u"Renew the passport");
  EXPECT_EQ(file.tasks[0].task.due, at(2005, 4, 1));
  EXPECT_EQ(file.tasks[0].task.importance, 2U);
  EXPECT_EQ(file.tasks[0].task.reminderTime, at(2005, 3, 30, 18));
  ASSERT_TRUE(file.tasks[2].task.recurrence);
  EXPECT_EQ(file.tasks[2].task.recurrence->type, RecurrenceType::Weekly);
  EXPECT_TRUE(file.tasks[4].task.complete);
  for (const CalendarTask& task : file.tasks) EXPECT_THAT(task.notes, IsEmpty()) << task.where;
}

class EverySample : public CalendarTest, public testing::WithParamInterface<const char*> {};

TEST_P(EverySample, isTheSameAfterItWasWritten) {
  for (const CalendarEntry& entry : readSample(GetParam()).entries) {
    SCOPED_TRACE(entry.where);
    const CalendarEntry again = onlyEntry(writeCalendar(entry.appointment, entry.uid));
    EXPECT_TRUE(again.appointment == entry.appointment);
    EXPECT_EQ(again.uid, entry.uid);
  }
  for (const CalendarTask& task : readSample(GetParam()).tasks) {
    SCOPED_TRACE(task.where);
    EXPECT_TRUE(onlyTask(writeCalendar(task.task, task.uid)).task == task.task);
  }
}

/// Either a calendar or a clear refusal; what is read can be written.
void readWithoutHarm(const std::string& text) {
  try {
    for (const CalendarEntry& entry : readCalendar(text, "file.ics").entries) {
      EXPECT_FALSE(writeCalendar(entry.appointment, entry.uid).empty());
    }
    for (const CalendarTask& task : readCalendar(text, "file.ics").tasks) {
      EXPECT_FALSE(writeCalendar(task.task, task.uid).empty());
    }
  } catch (const InputError&) {
  }
}

TEST_P(EverySample, doesNoHarmWhenItIsCutShort) {
  const std::string text = sampleText(GetParam());
  for (std::size_t length = 0; length < text.size(); length += 97) readWithoutHarm(text.substr(0, length));
}

TEST_P(EverySample, doesNoHarmWithABadByte) {
  const std::string text = sampleText(GetParam());
  for (std::size_t i = 0; i < text.size(); i += 61) {
    std::string damaged = text;
    damaged[i] = static_cast<char>(damaged[i] ^ (1 << (i % 8)));
    readWithoutHarm(damaged);
  }
}

INSTANTIATE_TEST_SUITE_P(All, EverySample,
                         testing::Values("work-week.ics", "all-day-and-alarms.ics", "zones.ics",
                                         "series-with-exceptions.ics", "folded-and-escaped.ics",
                                         "damaged.ics", "../tasks/errands.ics"));

}  // namespace
}  // namespace desktop
