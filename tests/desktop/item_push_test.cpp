#include "desktop/item_push.h"

#include <gmock/gmock.h>

#include "desktop/appointment_record.h"
#include "desktop/task_record.h"
#include "tests/desktop/scripted_stream.h"

namespace {

using namespace desktop;
using namespace wire_bytes;
using testing::ElementsAre;
using testing::IsEmpty;

Appointment& appointmentIn(FileItem& made) {
  return std::get<Appointment>(made.item);
}

FileItem item(const std::u16string& subject, const std::string& uid = "1@calendar.example") {
  FileItem made;
  made.file = "a.ics";
  made.uid = uid;
  Appointment appointment;
  appointment.subject = subject;
  appointment.start = {2005, 3, 14, 9, 0};
  appointment.end = {2005, 3, 14, 9, 15};
  made.item = appointment;
  return made;
}

FileItem weekly(FileItem made) {
  Recurrence rule;
  rule.start = {2005, 3, 14};
  rule.dayOfWeekMask = 2;
  appointmentIn(made).recurrence = rule;
  return made;
}

Bytes recordOf(const FileItem& made) {
  return writeAppointment(std::get<Appointment>(made.item));
}

// 14 March 2005, a Monday; 9:00 and 9:15.
const Bytes kNine = hex("D5 07 03 00 01 00 0E 00  09 00 00 00 00 00 00 00");
const Bytes kQuarterPastNine = hex("D5 07 03 00 01 00 0E 00  09 00 0F 00 00 00 00 00");

/// The entry of `item` as the device sends it.
Bytes held(std::uint32_t oid, const std::u16string& subject) {
  return hex("01 00") + u32(oid) + hex("0B") + u32(16) + kNine + u32(18) + kQuarterPastNine + u32(5) +
         u32(0) + u32(6) + u32(2) + u32(8) + u32(15) + u32(7) + u32(0) + u32(4) + u32(0) + u32(1) +
         deviceText(subject) + u32(2) + deviceText(u"") + u32(3) + deviceText(u"") + u32(9) + deviceText(u"");
}

class ItemPush : public ScriptedSession {
 protected:
  /// The device is called "PDA" and has the items 18 and 19.
  void SetUp() override {
    script->expect(hex("0E 02"), u32(72) + deviceText(u"PDA"));
    script->expect(hex("0D 02"), hex("01 00 02 00 00 00 00") + u32(18) + u32(19));
  }

  void expectRead(std::uint32_t oid, const Bytes& record) {
    script->expect(hex("10 02 01 00 00 00") + u32(oid), hex("01 00 01 00 00 00 0B") + record);
  }

  std::vector<PushOutcome> push(const std::vector<FileItem>& items) {
    std::vector<PushOutcome> outcomes;
    pushItems(session(), items,
              [&](const FileItem&, const PushOutcome& outcome) { outcomes.push_back(outcome); });
    return outcomes;
  }
};

Bytes add(const FileItem& entry) {
  return hex("02 02 01 00 00 00") + recordOf(entry);
}
Bytes change(std::uint32_t oid, const Bytes& record) {
  return hex("03 02") + u32(oid) + record;
}

TEST_F(ItemPush, addsAnEntryAndReadsItBack) {
  script->expect(hex("0F 02 01 00 00 00") + add(item(u"Standup")), hex("01 00") + u32(20) + u32(1));
  expectRead(20, held(20, u"Standup"));
  const auto outcomes = push({item(u"Standup")});
  ASSERT_EQ(outcomes.size(), 1u);
  EXPECT_FALSE(outcomes[0].changed);
  EXPECT_EQ(outcomes[0].oid, 20u);
  EXPECT_EQ(outcomes[0].failure, "");
  EXPECT_THAT(outcomes[0].differences, IsEmpty());
}

TEST_F(ItemPush, tellsWhatTheDeviceMadeOfAnEntry) {
  script->expect(hex("0F 02 01 00 00 00") + add(item(u"Standup")), hex("01 00") + u32(20) + u32(1));
  expectRead(20, held(20, u"Stand"));
  const auto outcomes = push({item(u"Standup")});
  ASSERT_EQ(outcomes[0].differences.size(), 1u);
  EXPECT_EQ(spell(outcomes[0].differences[0]), "subject: sent \"Standup\", device has \"Stand\"");
}

TEST_F(ItemPush, changesTheItemThatTheUidNames) {
  const FileItem entry = item(u"Standup", "appointment-19@PDA");
  script->expect(hex("0F 02 01 00 00 00") + change(19, recordOf(entry)), hex("01 00") + u32(19) + u32(19));
  expectRead(19, held(19, u"Standup"));
  const auto outcomes = push({entry});
  EXPECT_TRUE(outcomes[0].changed);
  EXPECT_EQ(outcomes[0].oid, 19u);
}

TEST_F(ItemPush, addsAnEntryWhoseItemIsGone) {
  const FileItem entry = item(u"Standup", "appointment-17@PDA");
  script->expect(hex("0F 02 01 00 00 00") + add(entry), hex("01 00") + u32(20) + u32(1));
  expectRead(20, held(20, u"Standup"));
  EXPECT_FALSE(push({entry})[0].changed);
}

TEST_F(ItemPush, makesAChangedSeriesAnew) {
  const FileItem entry = weekly(item(u"Standup", "appointment-19@PDA"));
  script->expect(hex("0F 02 01 00 00 00") + change(19, u32(0)), hex("01 00") + u32(19) + u32(19));
  script->expect(hex("0F 02 01 00 00 00") + change(19, recordOf(entry)), hex("01 00") + u32(19) + u32(19));
  expectRead(19, held(19, u"Standup"));
  const auto outcomes = push({entry});
  ASSERT_EQ(outcomes.size(), 1u);
  ASSERT_EQ(outcomes[0].differences.size(), 1u);
  EXPECT_EQ(spell(outcomes[0].differences[0]), "repetition: sent weekly, device has none");
}

TEST_F(ItemPush, sendsTwoWholeDaysFromMidnightToMidnight) {
  FileItem entry = item(u"Fair");
  Appointment& appointment = appointmentIn(entry);
  appointment.allDay = true;
  appointment.start = {2005, 3, 14};
  appointment.end = {2005, 3, 15};
  FileItem timed = entry;
  appointmentIn(timed).allDay = false;
  appointmentIn(timed).end = {2005, 3, 16};
  script->expect(hex("0F 02 01 00 00 00") + add(timed), hex("01 00") + u32(0) + u32(1));
  EXPECT_THAT(push({entry})[0].notes,
              ElementsAre("the device can't hold two whole days; it gets them as from midnight to midnight"));
}

TEST_F(ItemPush, goesOnAfterAnEntryThatTheDeviceCouldNotSave) {
  const Bytes entries =
      hex("02 02 01 00 00 00") + recordOf(item(u"One")) + hex("02 02 02 00 00 00") + recordOf(item(u"Two"));
  script->expect(hex("0F 02 02 00 00 00") + entries,
                 hex("01 00") + u32(0) + u32(1) + hex("01 00") + u32(21) + u32(2));
  expectRead(21, held(21, u"Two"));
  const auto outcomes = push({item(u"One"), item(u"Two")});
  EXPECT_EQ(outcomes[0].failure, "the device could not save it");
  EXPECT_EQ(outcomes[0].oid, 0u);
  EXPECT_EQ(outcomes[1].failure, "");
  EXPECT_EQ(outcomes[1].oid, 21u);
}

TEST_F(ItemPush, tellsAnItemThatCannotBeReadBack) {
  script->expect(hex("0F 02 01 00 00 00") + add(item(u"Standup")), hex("01 00") + u32(20) + u32(1));
  script->expect(hex("10 02 01 00 00 00") + u32(20), hex("01 00 00 00 00 00 00") + zeros(7));
  EXPECT_EQ(push({item(u"Standup")})[0].failure, "can't be read back: the device has no such item");
}

TEST_F(ItemPush, sendsTasksAsTasks) {
  FileItem errand;
  errand.item = Task();
  script->steps.pop_back();
  script->expect(hex("0D 03"), hex("01 00 00 00 00 00 00"));
  script->expect(hex("0F 03 01 00 00 00 02 03 01 00 00 00") + writeTask(Task()),
                 hex("00 01") + u32(0) + u32(1));
  EXPECT_EQ(push({errand})[0].failure, "the device refused it");
}

TEST_F(ItemPush, sendsTheSecondRecordToTheItemThatTheFirstMade) {
  Task task;
  task.due = {2005, 3, 15};
  task.reminderSet = true;
  task.reminderTime = {2005, 3, 15, 8, 0};
  FileItem errand;
  errand.item = task;
  const std::vector<Bytes> records = taskRecords(task, false);
  ASSERT_EQ(records.size(), 2u);
  script->steps.pop_back();
  script->expect(hex("0D 03"), hex("01 00 00 00 00 00 00"));
  script->expect(hex("0F 03 01 00 00 00 02 03 01 00 00 00") + records[0], hex("01 00") + u32(21) + u32(1));
  script->expect(hex("0F 03 01 00 00 00 03 03 15 00 00 00") + records[1], hex("01 00") + u32(21) + u32(21));
  script->expect(hex("10 03 01 00 00 00") + u32(21), hex("01 00 00 00 00 00 00") + zeros(7));
  const auto outcomes = push({errand});
  EXPECT_EQ(outcomes[0].oid, 21u);
  EXPECT_FALSE(outcomes[0].changed);
}

TEST_F(ItemPush, sendsNoSecondRecordAfterARefusal) {
  FileItem entry = weekly(item(u"Standup", "appointment-19@PDA"));
  script->expect(hex("0F 02 01 00 00 00") + change(19, u32(0)), hex("00 00") + u32(19) + u32(19));
  EXPECT_EQ(push({entry})[0].failure, "the device refused it");
}

TEST_F(ItemPush, goesOnWithTheOtherKindsWhenOneCannotBeListed) {
  FileItem errand;
  errand.item = Task();
  script->steps.pop_back();
  script->expect(hex("0D 02"), hex("00 00 00 00 00 00 00"));
  script->expect(hex("0D 03"), hex("01 00 00 00 00 00 00"));
  script->expect(hex("0F 03 01 00 00 00 02 03 01 00 00 00") + writeTask(Task()),
                 hex("01 00") + u32(0) + u32(1));
  const auto outcomes = push({errand, item(u"Standup")});
  ASSERT_EQ(outcomes.size(), 2u);
  EXPECT_EQ(outcomes[0].failure, "the device can't list all its items");
  EXPECT_EQ(outcomes[1].failure, "the device could not save it");
}

}  // namespace
