#include "desktop/task_record.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "desktop/device_error.h"
#include "desktop/item_kind.h"
#include "tests/desktop/wire_bytes.h"

namespace {

using namespace desktop;
using namespace wire_bytes;

// 14 March 2005 was a Monday (1), the 15th a Tuesday, the 16th a Wednesday; 1 January 4501 is a Saturday (6),
// 1 January 2000 was one too.
const Bytes kMonday = hex("D5 07 03 00 01 00 0E 00  00 00 00 00 00 00 00 00");
const Bytes kTuesday = hex("D5 07 03 00 02 00 0F 00  00 00 00 00 00 00 00 00");
const Bytes kTuesdayAtEight = hex("D5 07 03 00 02 00 0F 00  08 00 00 00 00 00 00 00");
const Bytes kMondayAtEight = hex("D5 07 03 00 01 00 0E 00  08 00 00 00 00 00 00 00");
const Bytes kWednesday = hex("D5 07 03 00 03 00 10 00  00 00 00 00 00 00 00 00");
const Bytes kNoDate = hex("95 11 01 00 06 00 01 00  00 00 00 00 00 00 00 00");
const Bytes kAnyDay = hex("D0 07 01 00 06 00 01 00  00 00 00 00 00 00 00 00");

Task errand() {
  Task task;
  task.subject = u"File";
  task.categories = u"Work";
  task.body = u"Hi";
  task.start = {2005, 3, 14};
  task.due = {2005, 3, 15};
  return task;
}

Task reminded(const LocalTime& moment) {
  Task task = errand();
  task.reminderSet = true;
  task.reminderTime = moment;
  return task;
}

struct Times {
  Bytes start, due, reminder;
};

/// The errand as it is sent: tags 1 to 7, 9, 10, 11; 9 says whether there is a reminder.
Bytes sent(const Times& times, std::uint32_t reminderSet, std::uint32_t fields = 10) {
  return u32(fields) + u32(1) + sentText(u"File") + u32(2) + sentText(u"Work") + u32(3) + times.start +
         u32(4) + times.due + u32(5) + u32(1) + u32(6) + u32(0) + u32(7) + u32(0) + u32(9) +
         u32(reminderSet) + u32(10) + times.reminder + u32(11) + sentText(u"Hi");
}

/// The errand as the device sends it: header, then its fields in the device's order 3, 4, 7, 5, 10, 9, 6, 1,
/// 2, 11.
Bytes received(const Times& times, std::uint32_t reminderSet, std::uint8_t fields = 10) {
  return hex("01 00 13 00 00 00") + Bytes{fields} + u32(3) + times.start + u32(4) + times.due + u32(7) +
         u32(0) + u32(5) + u32(1) + u32(10) + times.reminder + u32(9) + u32(reminderSet) + u32(6) + u32(0) +
         u32(1) + deviceText(u"File") + u32(2) + deviceText(u"Work") + u32(11) + deviceText(u"Hi");
}

/// Weekly on Mondays from 14 March 2005 for ever; what isn't used is 0.
const Bytes kWeeklyBlock =
    kMonday + zeros(48) + hex("01  00 00 00 00  03  00 00 00 00") + u32(1) + u32(2) + zeros(12) + u32(0);

Recurrence weekly() {
  Recurrence rule;
  rule.start = {2005, 3, 14};
  rule.dayOfWeekMask = 2;
  return rule;
}

Task read(const Bytes& bytes) {
  WireReader reader(bytes);
  Task task = readTask(reader, 19);
  EXPECT_EQ(reader.left(), 0u);
  return task;
}

TEST(TaskRecord, isWrittenFieldByField) {
  EXPECT_EQ(writeTask(errand()), sent({kMonday, kTuesday, kNoDate}, 0));
}

TEST(TaskRecord, spellsDatesThatAreNotThere) {
  Task task = errand();
  task.start = task.due = {};
  EXPECT_EQ(writeTask(task), sent({kNoDate, kNoDate, kNoDate}, 0));
}

TEST(TaskRecord, sendsFlagsAndNumbers) {
  Task task;
  task.importance = 2;
  task.complete = task.isPrivate = true;
  EXPECT_EQ(writeTask(task), u32(10) + u32(1) + sentText(u"") + u32(2) + sentText(u"") + u32(3) + kNoDate +
                                 u32(4) + kNoDate + u32(5) + u32(2) + u32(6) + u32(1) + u32(7) + u32(1) +
                                 u32(9) + u32(0) + u32(10) + kNoDate + u32(11) + sentText(u""));
}

TEST(TaskRecord, sendsASeriesLast) {
  Task task = errand();
  task.recurrence = weekly();
  EXPECT_EQ(writeTask(task), sent({kMonday, kTuesday, kNoDate}, 0, 11) + u32(19) + kWeeklyBlock);
}

TEST(TaskRecords, areOneWhenTheDeviceTakesTheReminderWithIt) {
  EXPECT_EQ(taskRecords(errand(), true), (std::vector<Bytes>{sent({kMonday, kTuesday, kNoDate}, 0)}));
  EXPECT_EQ(taskRecords(reminded({2005, 3, 14, 8}), false),
            (std::vector<Bytes>{sent({kMonday, kTuesday, kMondayAtEight}, 1)}));
  EXPECT_EQ(taskRecords(reminded({2005, 3, 15}), false),
            (std::vector<Bytes>{sent({kMonday, kTuesday, kTuesday}, 1)}));
}

TEST(TaskRecords, setAReminderAfterTheDueDateWithAnotherDueDateFirst) {
  EXPECT_EQ(taskRecords(reminded({2005, 3, 15, 8}), false),
            (std::vector<Bytes>{sent({kMonday, kWednesday, kTuesdayAtEight}, 1),
                                u32(2) + u32(4) + kTuesday + u32(9) + u32(1)}));
}

TEST(TaskRecords, setAReminderWithoutADueDateInTheSameWay) {
  Task task = reminded({2005, 3, 15, 8});
  task.due = {};
  EXPECT_EQ(taskRecords(task, false), (std::vector<Bytes>{sent({kMonday, kWednesday, kTuesdayAtEight}, 1),
                                                          u32(2) + u32(4) + kNoDate + u32(9) + u32(1)}));
}

TEST(TaskRecords, turnOffTheReminderOfAnItemThatIsThere) {
  Task task = errand();
  task.due = {};
  EXPECT_EQ(taskRecords(task, false), (std::vector<Bytes>{sent({kMonday, kNoDate, kNoDate}, 0)}));
  EXPECT_EQ(taskRecords(task, true), (std::vector<Bytes>{sent({kMonday, kAnyDay, kNoDate}, 0),
                                                         u32(2) + u32(4) + kNoDate + u32(9) + u32(0)}));
}

TEST(TaskRecord, isReadFieldByField) {
  Task expected = reminded({2005, 3, 14, 8});
  expected.oid = 19;
  EXPECT_TRUE(read(received({kMonday, kTuesday, kMondayAtEight}, 1)) == expected);
}

TEST(TaskRecord, isReadWithoutDatesThatAreNotThere) {
  for (const Bytes& none : {kNoDate, zeros(16)}) {
    const Task task = read(received({none, none, none}, 1));
    EXPECT_EQ(task.start, LocalTime{});
    EXPECT_EQ(task.due, LocalTime{});
    EXPECT_EQ(task.reminderTime, LocalTime{});
    EXPECT_TRUE(task.reminderSet);
  }
}

TEST(TaskRecord, leavesOutTheTimeOfAReminderThatIsOff) {
  EXPECT_EQ(read(received({kMonday, kTuesday, kMondayAtEight}, 0)).reminderTime, LocalTime{});
}

TEST(TaskRecord, isReadWithItsSeries) {
  const Task task = read(received({kMonday, kTuesday, kNoDate}, 0, 11) + u32(19) + kWeeklyBlock);
  EXPECT_EQ(task.recurrence, weekly());
}

TEST(TaskRecord, mustBeWholeAndItsOwn) {
  const Bytes whole = received({kMonday, kTuesday, kNoDate}, 0);
  const auto refuses = [](const Bytes& bytes, std::uint32_t oid) {
    WireReader reader(bytes);
    EXPECT_THROW(readTask(reader, oid), ProtocolError);
  };
  refuses(whole, 20);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    refuses(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)), 19);
  }
  // Tag 8 is no field of a task; a record of nine fields lacks the body.
  refuses(received({kMonday, kTuesday, kNoDate}, 0, 11) + u32(8) + u32(0), 19);
  refuses(received({kMonday, kTuesday, kNoDate}, 0, 9), 19);
  // 30 February.
  refuses(received({hex("D5 07 02 00 00 00 1E 00  00 00 00 00 00 00 00 00"), kTuesday, kNoDate}, 0), 19);
}

TEST(TaskDifference, namesWhatTheDeviceHoldsOtherwise) {
  Task task = reminded({2005, 3, 15, 8});
  Task held = task;
  held.due = {2005, 3, 16};
  held.reminderTime = {};
  held.recurrence = weekly();
  std::vector<std::string> spelled;
  for (const Difference& difference : kTaskKind.compare(task, held)) spelled.push_back(spell(difference));
  EXPECT_EQ(spelled, (std::vector<std::string>{"due date: sent 2005-03-15 00:00, device has 2005-03-16 00:00",
                                               "reminder time: sent 2005-03-15 08:00, device has none",
                                               "repetition: sent none, device has weekly"}));
}

TEST(TaskJson, givesEveryField) {
  Task task = reminded({2005, 3, 14, 8});
  task.oid = 19;
  task.recurrence = weekly();
  const nlohmann::json json = kTaskKind.toJson(task);
  EXPECT_EQ(json["oid"], 19);
  EXPECT_EQ(json["subject"], "File");
  EXPECT_EQ(json["due_date"], "2005-03-15T00:00:00");
  EXPECT_EQ(json["reminder_time"], "2005-03-14T08:00:00");
  EXPECT_EQ(json["complete"], false);
  EXPECT_EQ(json["importance"], 1);
  EXPECT_EQ(json["repetition"]["type"], "weekly");
}

}  // namespace
