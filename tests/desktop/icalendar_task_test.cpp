// Tasks of calendar files: what becomes of each property, what is named as lost, and what comes back.
#include <gmock/gmock.h>

#include "tests/desktop/icalendar_patterns.h"
#include "tests/desktop/icalendar_support.h"

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class CalendarTasks : public CalendarTest {};

const std::string kDue = "DUE;VALUE=DATE:20050315\r\n";

std::string alarm(const std::string& trigger, const std::string& action = "DISPLAY") {
  return "BEGIN:VALARM\r\nACTION:" + action + "\r\nTRIGGER" + trigger + "\r\nEND:VALARM\r\n";
}

TEST_F(CalendarTasks, giveTextsAndDates) {
  const CalendarTask read = onlyTask(
      todoOf("SUMMARY:File\\, copy\r\nDESCRIPTION:One\\ntwo\r\nCATEGORIES:Work,Home\r\nCATEGORIES:Late\r\n"
             "DTSTART;VALUE=DATE:20050314\r\n" +
             kDue + "CLASS:PRIVATE\r\n"));
  EXPECT_EQ(read.uid, "1");
  EXPECT_EQ(read.where, "file.ics:4: 1");
  EXPECT_EQ(read.task.subject, u"File, copy");
  EXPECT_EQ(read.task.body, u"One\r\ntwo");
  EXPECT_EQ(read.task.categories, u"Work,Home,Late");
  EXPECT_EQ(read.task.start, at(2005, 3, 14));
  EXPECT_EQ(read.task.due, at(2005, 3, 15));
  EXPECT_TRUE(read.task.isPrivate);
  EXPECT_FALSE(read.task.complete);
  EXPECT_FALSE(read.task.reminderSet);
  EXPECT_THAT(read.notes, IsEmpty());
}

TEST_F(CalendarTasks, needNothingAtAll) {
  const CalendarTask read = onlyTask(todoOf(""));
  EXPECT_TRUE(read.task == Task());
  EXPECT_THAT(read.notes, IsEmpty());
}

TEST_F(CalendarTasks, keepTheDayOfADueTime) {
  const CalendarTask read = onlyTask(todoOf("DUE:20050315T170000\r\n"));
  EXPECT_EQ(read.task.due, at(2005, 3, 15));
  EXPECT_THAT(read.notes, ElementsAre("of the due time 2005-03-15 17:00 only the day is kept"));
}

TEST_F(CalendarTasks, areDueOnTheDayOfThisComputersClock) {
  const ComputerZone berlin("Europe/Berlin");
  // An hour after midnight here.
  EXPECT_EQ(onlyTask(todoOf("DUE:20050315T000000Z\r\n")).task.due, at(2005, 3, 15));
  EXPECT_EQ(onlyTask(todoOf("DUE:20050314T233000Z\r\n")).task.due, at(2005, 3, 15));
  EXPECT_THAT(onlyTask(todoOf("DUE:20050314T230000Z\r\n")).notes, IsEmpty());
}

TEST_F(CalendarTasks, mayLastInsteadOfBeingDue) {
  EXPECT_EQ(onlyTask(todoOf("DTSTART;VALUE=DATE:20050314\r\nDURATION:P2D\r\n")).task.due, at(2005, 3, 16));
}

struct Priority {
  const char* priority;
  std::uint32_t importance;
  const char* note;
};

TEST_F(CalendarTasks, haveThreeImportances) {
  for (const Priority& priority :
       {Priority{"0", 1, ""}, Priority{"1", 2, ""}, Priority{"3", 2, "the priority 3 is kept as high"},
        Priority{"5", 1, ""}, Priority{"6", 0, "the priority 6 is kept as low"}, Priority{"9", 0, ""},
        Priority{"11", 1, "the priority 11 is not kept"}}) {
    const CalendarTask read = onlyTask(todoOf("PRIORITY:" + std::string(priority.priority) + "\r\n"));
    EXPECT_EQ(read.task.importance, priority.importance) << priority.priority;
    EXPECT_EQ(read.notes.empty() ? "" : read.notes[0], priority.note) << priority.priority;
  }
}

struct Progress {
  const char* lines;
  bool complete;
  const char* note;
};

TEST_F(CalendarTasks, areOpenOrDone) {
  for (const Progress& progress : {
           Progress{"STATUS:NEEDS-ACTION\r\n", false, ""},
           Progress{"STATUS:COMPLETED\r\n", true, ""},
           Progress{"PERCENT-COMPLETE:100\r\n", true, ""},
           Progress{"COMPLETED:20050315T120000Z\r\n", true,
                    "the time of its completion is not kept on the device"},
           Progress{"STATUS:NEEDS-ACTION\r\nPERCENT-COMPLETE:100\r\n", false,
                    "that 100 % of it are done is not kept"},
           Progress{"STATUS:IN-PROCESS\r\nPERCENT-COMPLETE:40\r\n", false,
                    "that 40 % of it are done is not kept"},
           Progress{"STATUS:IN-PROCESS\r\n", false, "that it is begun is not kept"},
           Progress{"STATUS:CANCELLED\r\n", false,
                    "the task is cancelled; the device shows it like any other"},
       }) {
    const CalendarTask read = onlyTask(todoOf(progress.lines));
    EXPECT_EQ(read.task.complete, progress.complete) << progress.lines;
    EXPECT_EQ(read.notes.empty() ? "" : read.notes[0], progress.note) << progress.lines;
  }
}

TEST_F(CalendarTasks, nameWhatTheDeviceDoesNotKeep) {
  EXPECT_THAT(
      onlyTask(todoOf("LOCATION:Town\r\nRELATED-TO:2\r\nURL:http://example.org\r\n"
                      "CLASS:CONFIDENTIAL\r\n"))
          .notes,
      ElementsAre("the entry is confidential; the device knows only private",
                  "the web address is not kept on the device", "the location is not kept on the device",
                  "its place among other tasks is not kept on the device"));
}

TEST_F(CalendarTasks, areCutToTheDevicesLengths) {
  const CalendarTask read = onlyTask(todoOf("SUMMARY:" + std::string(5000, 'x') + "\r\n"));
  EXPECT_EQ(read.task.subject.size(), 4095U);
  EXPECT_THAT(read.notes, ElementsAre("the summary is cut to the device's 4095 characters"));
}

TEST_F(CalendarTasks, areRemindedRelativeToTheirDates) {
  EXPECT_EQ(onlyTask(todoOf(kDue + alarm(";RELATED=END:-PT15M"))).task.reminderTime, at(2005, 3, 14, 23, 45));
  EXPECT_EQ(onlyTask(todoOf("DTSTART:20050314T090000\r\n" + kDue + alarm(":-PT15M"))).task.reminderTime,
            at(2005, 3, 14, 8, 45));
  EXPECT_EQ(onlyTask(todoOf(kDue + alarm(";RELATED=END:PT8H"))).task.reminderTime, at(2005, 3, 15, 8));
  // The reminder counts from the due time that is in the file.
  EXPECT_EQ(onlyTask(todoOf("DUE:20050315T170000\r\n" + alarm(";RELATED=END:-PT1H"))).task.reminderTime,
            at(2005, 3, 15, 16));
}

TEST_F(CalendarTasks, areRemindedAtAFixedTime) {
  const ComputerZone berlin("Europe/Berlin");
  const Task task = onlyTask(todoOf(kDue + alarm(";VALUE=DATE-TIME:20050314T070000Z"))).task;
  EXPECT_TRUE(task.reminderSet);
  EXPECT_EQ(task.reminderTime, at(2005, 3, 14, 8));
}

TEST_F(CalendarTasks, keepTheEarliestReminderThatRings) {
  const CalendarTask read = onlyTask(todoOf(kDue + alarm(";RELATED=END:-PT1H") + alarm(";RELATED=END:-PT2H") +
                                            alarm(";RELATED=END:-PT3H", "EMAIL") + alarm(":-PT4H")));
  EXPECT_EQ(read.task.reminderTime, at(2005, 3, 14, 22));
  EXPECT_THAT(read.notes,
              ElementsAre("a reminder that sends mail or runs a program is not kept",
                          "a reminder that counts from a date which the task doesn't have is not kept",
                          "of 2 reminders only the earliest is kept"));
}

TEST_F(CalendarTasks, repeatFromTheirStartOrTheirDueDate) {
  const std::string rule = "RRULE:FREQ=WEEKLY;BYDAY=TU;COUNT=5\r\n";
  const Recurrence expected = patternOf("weekly TU times 5", at(2005, 3, 15));
  EXPECT_EQ(onlyTask(todoOf("DTSTART;VALUE=DATE:20050315\r\n" + rule)).task.recurrence, expected);
  const Task due = onlyTask(todoOf(kDue + rule)).task;
  EXPECT_EQ(due.recurrence, expected);
  EXPECT_EQ(due.start, LocalTime());
}

TEST_F(CalendarTasks, areRefusedWhenTheyWouldMeanSomethingElse) {
  const std::string rule = "RRULE:FREQ=DAILY\r\n";
  EXPECT_EQ(onlyProblem(todoOf(rule)), "file.ics:4: 1: RRULE without a DTSTART or DUE to count from");
  EXPECT_EQ(onlyProblem(todoOf(kDue + rule + "EXDATE;VALUE=DATE:20050316\r\n")),
            "file.ics:4: 1: EXDATE (excluded dates) can't be held by the device in a task");
  EXPECT_EQ(
      onlyProblem(todoOf(kDue + "RRULE:FREQ=HOURLY\r\n")),
      "file.ics:4: 1: recurrence rule FREQ=HOURLY can't be held by the device: it repeats within a day");
  EXPECT_EQ(onlyProblem(todoOf("DUE:sometime\r\n")), "file.ics:4: 1: DUE can't be read: sometime");
  EXPECT_EQ(onlyProblem(todoOf("DUE;VALUE=DATE:18991231\r\n")),
            "file.ics:4: 1: the year 1899 is outside the device's calendar (1900 to 2999)");
  EXPECT_EQ(onlyProblem(calendarOf("BEGIN:VTODO\r\nUID:1\r\n")),
            "file.ics:4: 1: the task isn't closed: END:VTODO is missing or misplaced");
}

TEST_F(CalendarTasks, nameChangedOccurrences) {
  const CalendarFile file =
      readCalendar(calendarOf("BEGIN:VTODO\r\nUID:1\r\n" + kDue + "RRULE:FREQ=DAILY\r\nEND:VTODO\r\n" +
                              "BEGIN:VTODO\r\nUID:1\r\nRECURRENCE-ID;VALUE=DATE:20050316\r\nEND:VTODO\r\n"),
                   "file.ics");
  EXPECT_EQ(file.tasks.size(), 1U);
  ASSERT_EQ(file.problems.size(), 1U);
  EXPECT_EQ(file.problems[0].where, "file.ics:9: 1");
  EXPECT_EQ(file.problems[0].what, "a changed occurrence of a task can't be held by the device");
}

TEST_F(CalendarTasks, shareFilesAndEvenUidsWithEvents) {
  const CalendarFile file = readCalendar(
      calendarOf("BEGIN:VTODO\r\nUID:1\r\nSUMMARY:Task\r\nEND:VTODO\r\n"
                 "BEGIN:VEVENT\r\nUID:1\r\nSUMMARY:Event\r\nDTSTART:20050314T090000\r\nEND:VEVENT\r\n"),
      "file.ics");
  EXPECT_THAT(file.problems, IsEmpty());
  ASSERT_EQ(file.tasks.size(), 1U);
  ASSERT_EQ(file.entries.size(), 1U);
  EXPECT_EQ(file.tasks[0].task.subject, u"Task");
  EXPECT_EQ(file.entries[0].appointment.subject, u"Event");
}

Task full() {
  Task task;
  task.subject = u"File; \u20AC, copy";
  task.categories = u"Work,Home";
  task.body = u"One\r\ntwo";
  task.start = at(2005, 3, 14);
  task.due = at(2005, 3, 15);
  task.importance = 2;
  task.complete = task.isPrivate = true;
  task.reminderSet = true;
  task.reminderTime = at(2005, 3, 13, 18, 30);
  return task;
}

TEST_F(CalendarTasks, areWrittenWithTheirProperties) {
  const std::string text = writeCalendar(full(), "task-19@PDA");
  for (const char* line :
       {"BEGIN:VTODO", "UID:task-19@PDA", "SUMMARY:File\\; \u20AC\\, copy", "DESCRIPTION:One\\ntwo",
        "CATEGORIES:Work,Home", "DTSTART;VALUE=DATE:20050314", "DUE;VALUE=DATE:20050315", "PRIORITY:1",
        "CLASS:PRIVATE", "STATUS:COMPLETED", "PERCENT-COMPLETE:100", "ACTION:DISPLAY",
        "TRIGGER;RELATED=END:-P1DT5H30M", "END:VTODO"}) {
    EXPECT_THAT(text, HasSubstr(std::string("\r\n") + line + "\r\n"));
  }
}

TEST_F(CalendarTasks, areRemindedAtAFixedTimeWithoutADueDate) {
  const ComputerZone berlin("Europe/Berlin");
  Task task = full();
  task.due = {};
  // 18:30 in Berlin, in winter.
  EXPECT_THAT(writeCalendar(task, "1"), HasSubstr("\r\nTRIGGER;VALUE=DATE-TIME:20050313T173000Z\r\n"));
}

TEST_F(CalendarTasks, areWrittenWithoutWhatTheyDoNotHave) {
  const std::string text = writeCalendar(Task(), "task-19@PDA");
  EXPECT_THAT(text, HasSubstr("\r\nSTATUS:NEEDS-ACTION\r\n"));
  for (const char* name : {"DTSTART", "DUE", "PRIORITY", "CLASS", "RRULE", "VALARM", "PERCENT"}) {
    EXPECT_THAT(text, Not(HasSubstr(name)));
  }
}

TEST_F(CalendarTasks, areWrittenTheSameInEveryZone) {
  const std::string utc = writeCalendar(full(), "1");
  const ComputerZone berlin("Europe/Berlin");
  EXPECT_EQ(writeCalendar(full(), "1"), utc);
}

TEST_F(CalendarTasks, comeBackAsTheyWere) {
  const ComputerZone berlin("Europe/Berlin");
  std::vector<Task> tasks(10, full());
  tasks[0].start.hour = 9;
  tasks[1].due = {};
  tasks[2].start = {};
  tasks[3].reminderTime = at(2005, 3, 15, 8);
  tasks[4].reminderTime = tasks[4].due;
  tasks[5].importance = 0;
  tasks[5].complete = tasks[5].isPrivate = false;
  tasks[6].reminderSet = false;
  tasks[6].reminderTime = {};
  tasks[7] = Task();
  tasks[8].reminderTime = at(2005, 3, 27, 0, 30);  // hours before the clock goes forward
  tasks[8].due = at(2005, 3, 28);
  tasks[9].reminderTime = at(1901, 1, 1, 8);
  tasks[9].due = at(2999, 12, 31);
  for (const Task& task : tasks) {
    const CalendarTask again = onlyTask(writeCalendar(task, "1"));
    EXPECT_TRUE(again.task == task) << writeCalendar(task, "1");
    EXPECT_THAT(again.notes, IsEmpty());
  }
}

TEST_F(CalendarTasks, comeBackWithTheirSeries) {
  for (const char* pattern : {"daily every 3", "weekly TU,FR times 7", "monthly 15 until 20060101",
                              "monthly-nth 3 TU", "yearly 3 15", "yearly-nth 3 3 TU times 4"}) {
    Task task = full();
    task.start = task.due;
    task.recurrence = patternOf(pattern, task.due);
    EXPECT_TRUE(onlyTask(writeCalendar(task, "1")).task == task) << pattern;
    task.start = {};
    EXPECT_TRUE(onlyTask(writeCalendar(task, "1")).task == task) << pattern;
  }
}

TEST_F(CalendarTasks, ofASeriesWithoutAnyDateBeginOnItsFirstDay) {
  Task task;
  task.recurrence = patternOf("daily", at(2005, 3, 15));
  EXPECT_EQ(onlyTask(writeCalendar(task, "1")).task.start, at(2005, 3, 15));
}

}  // namespace
}  // namespace desktop
