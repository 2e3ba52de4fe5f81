#include <gtest/gtest.h>

#include "tests/pim/item_test.h"
#include "tests/support/appointments.h"
#include "tests/support/recurrence_bytes.h"

namespace qorv {
namespace {

using namespace test;
using Names = std::vector<std::string>;

constexpr unsigned kSubject = 1;
constexpr unsigned kCategories = 2;
constexpr unsigned kStartDate = 3;
constexpr unsigned kDueDate = 4;
constexpr unsigned kImportance = 5;
constexpr unsigned kComplete = 6;
constexpr unsigned kSensitivity = 7;
constexpr unsigned kReminderSet = 9;
constexpr unsigned kReminderTime = 10;
constexpr unsigned kBody = 11;
constexpr unsigned kRecurrence = 19;

/// Every Monday from 2005-03-14 on.
Bytes weekly() {
  return Bytes()
      .u32(kRecurrence)
      .append(block(day(2005, 3, 14), day(2005, 3, 14), {.type = 1, .dayOfWeekMask = 2}));
}

class TaskWrite : public TaskTest {
 protected:
  /// What was put through the property, in order.
  std::vector<double> put(const std::string& property) {
    std::vector<double> values;
    for (const auto& call : calls("ITask.put_" + property)) values.push_back(call["args"][0]);
    return values;
  }
};

TEST_F(TaskWrite, addAnswersTheNewOid) {
  // 02 03 add task, reference 7, one field: tag 1, four bytes "Hi".
  const Bytes answer = reply(hex("02 03 07000000 01000000 01000000 04000000 4800 6900"));
  ASSERT_EQ(answer.size(), 20u);
  const DWORD oid = answer.dwordAt(2);
  EXPECT_NE(oid, 0u);
  EXPECT_EQ(answer, Bytes().u8(1).u8(0).u32(oid).u32(7).zeros(10));
  EXPECT_EQ(stored(oid)["Subject"], "Hi");
}

TEST_F(TaskWrite, everyFieldReachesItsProperty) {
  const DWORD oid =
      add(recordOf({textField(kSubject, u"File"), textField(kCategories, u"Work"),
                    timeField(kStartDate, 8, 30), timeField(kDueDate, 0, 0, 16), numberField(kImportance, 2),
                    numberField(kComplete, 1), numberField(kSensitivity, 1), numberField(kReminderSet, 1),
                    timeField(kReminderTime, 17, 15, 15), textField(kBody, u"All of it")}));
  const Json task = stored(oid);
  EXPECT_EQ(task["Subject"], "File");
  EXPECT_EQ(task["Categories"], "Work");
  EXPECT_EQ(task["StartDate"], "2005-03-14T08:30:00.000");
  EXPECT_EQ(task["DueDate"], "2005-03-16T00:00:00.000");
  EXPECT_EQ(task["Importance"], 2);
  EXPECT_EQ(task["Complete"], true);
  EXPECT_EQ(task["Sensitivity"], 2);
  EXPECT_EQ(task["ReminderSet"], true);
  EXPECT_EQ(task["ReminderTime"], "2005-03-15T17:15:00.000");
  EXPECT_EQ(task["Body"], "All of it");
}

TEST_F(TaskWrite, patternComesBehindTheFieldsAndTheReminderBehindThePattern) {
  observeCalls();
  add(recordOf({numberField(kReminderSet, 1), timeField(kReminderTime, 9), weekly(),
                timeField(kDueDate, 0, 0, 16), textField(kSubject, u"File")}));
  const Names all = callsOf({"ITask.", "IRecurrencePattern."});
  const auto first = std::ranges::find(all, "ITask.put_DueDate");
  EXPECT_EQ(Names(first, all.end()),
            (Names{"ITask.put_DueDate", "ITask.put_Subject", "ITask.GetRecurrencePattern",
                   "IRecurrencePattern.put_RecurrenceType", "IRecurrencePattern.put_DayOfWeekMask",
                   "IRecurrencePattern.put_Interval", "IRecurrencePattern.put_PatternStartDate",
                   "IRecurrencePattern.put_NoEndDate", "IRecurrencePattern.get_Interval",
                   "IRecurrencePattern.Release", "ITask.put_ReminderSet", "ITask.put_ReminderTime",
                   "ITask.Save", "ITask.get_Oid", "ITask.Release"}));
}

TEST_F(TaskWrite, changeFillsTheTaskThatIsThere) {
  load({{"Oid", 17}, {"Subject", "old"}, {"Categories", "Work"}, {"StartDate", "2005-03-14T00:00:00.000"}});
  EXPECT_EQ(changeReply(17, recordOf({textField(kSubject, u"new")})), hex("01 00 11000000 11000000"));
  const Json task = stored(17);
  EXPECT_EQ(task["Subject"], "new");
  EXPECT_EQ(task["Categories"], "Work");
  EXPECT_EQ(task["StartDate"], "2005-03-14T00:00:00.000");
}

TEST_F(TaskWrite, dueDateLosesItsTimeOfDayAndTheStartDateKeepsIt) {
  observeCalls();
  add(recordOf({Bytes().u32(kStartDate).time(2005, 3, 0, 14, 14, 35, 10, 250),
                Bytes().u32(kDueDate).time(2005, 3, 0, 16, 14, 35, 10, 250)}));
  // 2005-03-14 is day 38425 of the object model's count; 14:35:10 are 52510 of a day's 86400 seconds.
  ASSERT_EQ(put("StartDate").size(), 1u);
  EXPECT_DOUBLE_EQ(put("StartDate")[0], 38425 + 52510.0 / 86400);
  EXPECT_EQ(put("DueDate"), (std::vector<double>{38427}));
  EXPECT_EQ(argumentsOf("IPOutlookApp.SystemTimeToVariantTime"),
            Json::parse(R"([["2005-03-14T14:35:10.250"], ["2005-03-16T00:00:00.250"]])"))
      << "the milliseconds stay";
}

TEST_F(TaskWrite, anythingButZeroIsPrivateAndComplete) {
  observeCalls();
  add(recordOf({numberField(kSensitivity, 0), numberField(kSensitivity, 1), numberField(kSensitivity, 2),
                numberField(kSensitivity, 5), numberField(kComplete, 0), numberField(kComplete, 1),
                numberField(kComplete, 0x10000), numberField(kImportance, 0),
                numberField(kImportance, 0xFFFFFFFF)}));
  EXPECT_EQ(put("Sensitivity"), (std::vector<double>{0, 2, 2, 2}));
  EXPECT_EQ(put("Complete"), (std::vector<double>{0, -1, -1}));
  EXPECT_EQ(put("Importance"), (std::vector<double>{0, -1}));
}

struct Reminder {
  const char* name;
  Bytes record;
  std::vector<double> flags;  ///< put as ReminderSet
  std::vector<double> times;  ///< put as ReminderTime
};

void PrintTo(const Reminder& reminder, std::ostream* out) {
  *out << reminder.name;
}

class TaskReminder : public TaskWrite, public testing::WithParamInterface<Reminder> {};

TEST_P(TaskReminder, goesByTheDueDate) {
  observeCalls();
  EXPECT_EQ(addReply(GetParam().record).vector()[0], 1);
  EXPECT_EQ(put("ReminderSet"), GetParam().flags);
  EXPECT_EQ(put("ReminderTime"), GetParam().times);
}

const Bytes kDue = timeField(kDueDate, 14, 35, 16);
const Bytes kSet = numberField(kReminderSet, 1);
const Bytes kNoDue = Bytes().u32(kDueDate).time(4501, 1, 0, 1);

// The due date is 2005-03-16, day 38427. 9:00 on the 14th is 38425.375.
INSTANTIATE_TEST_SUITE_P(
    Rules, TaskReminder,
    testing::Values(
        Reminder{"withoutADueDate", recordOf({kSet, timeField(kReminderTime, 9)}), {}, {}},
        Reminder{"withADueDateAlone", recordOf({kDue}), {0}, {}},
        Reminder{"beforeTheDueDate", recordOf({kDue, kSet, timeField(kReminderTime, 9)}), {-1}, {38425.375}},
        Reminder{"inFrontOfTheDueDateInTheRecord",
                 recordOf({timeField(kReminderTime, 9), kSet, kDue}),
                 {-1},
                 {38425.375}},
        Reminder{"atTheDueDate", recordOf({kDue, kSet, timeField(kReminderTime, 0, 0, 16)}), {-1}, {38427}},
        Reminder{
            "aMinuteAfterTheDueDate", recordOf({kDue, kSet, timeField(kReminderTime, 0, 1, 16)}), {-1}, {}},
        Reminder{"withoutATime", recordOf({kDue, kSet}), {-1}, {}},
        Reminder{"withoutTheFlag", recordOf({kDue, timeField(kReminderTime, 9)}), {0}, {}},
        Reminder{"turnedOff",
                 recordOf({kDue, numberField(kReminderSet, 0), timeField(kReminderTime, 9)}),
                 {0},
                 {}},
        Reminder{"withAnyFlagButZero",
                 recordOf({kDue, numberField(kReminderSet, 0x10000), timeField(kReminderTime, 9)}),
                 {-1},
                 {38425.375}},
        Reminder{"whenNoDateIsDue", recordOf({kNoDue, kSet, timeField(kReminderTime, 9)}), {}, {}},
        Reminder{"whenTheDueDateDoesNotExist",
                 recordOf({Bytes().u32(kDueDate).time(2005, 2, 0, 30), kSet, timeField(kReminderTime, 9)}),
                 {},
                 {}},
        Reminder{
            "atNoDate", recordOf({kDue, kSet, Bytes().u32(kReminderTime).time(4501, 1, 0, 1)}), {-1}, {}},
        Reminder{"atATimeThatDoesNotExist",
                 recordOf({kDue, kSet, Bytes().u32(kReminderTime).time(2005, 2, 0, 30)}),
                 {-1},
                 {}}),
    [](const auto& reminder) { return std::string(reminder.param.name); });

TEST_F(TaskWrite, aChangeWithADueDateAndNoReminderTurnsItOff) {
  const Json task{{"Oid", 17},
                  {"DueDate", "2005-03-16T00:00:00.000"},
                  {"ReminderSet", true},
                  {"ReminderTime", "2005-03-15T09:00:00.000"}};
  load(task);
  changeReply(17, recordOf({numberField(kReminderSet, 0), timeField(kReminderTime, 8)}));
  EXPECT_EQ(stored(17)["ReminderSet"], true) << "without a due date nothing changes";
  EXPECT_EQ(stored(17)["ReminderTime"], "2005-03-15T09:00:00.000");
  changeReply(17, recordOf({timeField(kDueDate, 0, 0, 20)}));
  EXPECT_EQ(stored(17)["ReminderSet"], false);
  EXPECT_EQ(stored(17)["DueDate"], "2005-03-20T00:00:00.000");
}

TEST_F(TaskWrite, theNoDateValueTakesDatesAway) {
  load({{"Oid", 17}, {"StartDate", "2005-03-14T00:00:00.000"}, {"DueDate", "2005-03-16T00:00:00.000"}});
  observeCalls();
  changeReply(17, recordOf({Bytes().u32(kStartDate).time(4501, 1, 0, 1), kNoDue}));
  EXPECT_EQ(put("StartDate"), (std::vector<double>{949998}));
  EXPECT_EQ(put("DueDate"), (std::vector<double>{949998}));
  EXPECT_FALSE(stored(17).contains("StartDate"));
  EXPECT_FALSE(stored(17).contains("DueDate"));
}

TEST_F(TaskWrite, tagsThatCarryNothingConsumeNoValue) {
  Bytes bytes = record(13);
  for (const DWORD tag : {0u, 8u, 12u, 13u, 14u, 15u, 16u, 17u, 18u, 20u, 21u, 0xFFFFFFFFu}) bytes.u32(tag);
  EXPECT_EQ(stored(add(bytes.append(textField(kSubject, u"After"))))["Subject"], "After");
}

TEST_F(TaskWrite, textsOfNoneAndOfAnOddNumberOfBytes) {
  load({{"Oid", 17}, {"Subject", "old"}, {"Categories", "old"}});
  // Tag 1 with no byte; tag 2 with three bytes: "A" and half a "B", whose other half is 0.
  changeReply(17, record(2).append(hex("01000000 00000000 02000000 03000000 4100 42")));
  EXPECT_EQ(stored(17)["Subject"], "");
  EXPECT_EQ(stored(17)["Categories"], "AB");
}

TEST_F(TaskWrite, aRefusedPropertyIsLeftAsItWas) {
  load({{"Oid", 17}, {"Subject", "old"}});
  // The device takes subjects of up to 4095 characters.
  changeReply(17,
              recordOf({textField(kSubject, std::u16string(4096, u's')), textField(kCategories, u"new")}));
  EXPECT_EQ(stored(17)["Subject"], "old");
  EXPECT_EQ(stored(17)["Categories"], "new");
}

TEST_F(TaskWrite, failedSaveAnswersResultZeroAndTellsNobody) {
  for (const std::string code : {"0x80004005", "0x80040067"}) {
    clearFaults();
    fault("ITask.Save=" + code);
    observeCalls();
    EXPECT_EQ(addReply(recordOf({textField(kSubject, u"x"), weekly()})), hex("00 00 00000000 07000000"));
    EXPECT_EQ(callNames("ITask.Save").size(), 1u) << "one attempt";
    EXPECT_TRUE(callNames("MessageBoxW").empty());
    EXPECT_TRUE(callNames("ITask.get_Oid").empty());
  }
  EXPECT_EQ(storedItems(), Json::array());
}

TEST_F(TaskWrite, failedSaveOfAChangeKeepsTheOidOfTheRequestAndTheTask) {
  load({{"Oid", 17}, {"Subject", "old"}});
  fault("ITask.Save=0x80004005");
  EXPECT_EQ(changeReply(17, recordOf({textField(kSubject, u"new")})), hex("00 00 11000000 11000000"));
  EXPECT_EQ(stored(17)["Subject"], "old");
}

TEST_F(TaskWrite, aRecordThatIsCutShortIsNotSaved) {
  load({{"Oid", 17}, {"Subject", "old"}});
  observeCalls();
  const Bytes whole =
      recordOf({textField(kSubject, u"new"), kDue, kSet, weekly(), textField(kBody, u"Body")});
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(changeReply(17, whole.slice(0, size)), hex("00 00 11000000 11000000")) << size;
    EXPECT_TRUE(callNames("ITask.Save").empty()) << size;
    EXPECT_TRUE(callNames("ITask.GetRecurrencePattern").empty()) << size;
  }
  EXPECT_EQ(stored(17)["Subject"], "old");
}

TEST_F(TaskWrite, batchGoesOnBehindATaskThatIsNotSaved) {
  load({{"Oid", 17}, {"Subject", "old"}});
  fault("ITask.Save#2=0x80004005*1");
  // The second entry's record is longest: what follows it is found behind its block.
  const Bytes answer = reply(
      command(15)
          .u32(3)
          .append(Bytes().u8(2).u8(3).u32(70).append(recordOf({textField(kSubject, u"first")})))
          .append(Bytes().u8(2).u8(3).u32(71).append(recordOf({textField(kSubject, u"lost"), weekly()})))
          .append(Bytes().u8(3).u8(3).u32(17).append(recordOf({textField(kSubject, u"last")}))));
  ASSERT_EQ(answer.size(), 30u);
  const DWORD added = answer.dwordAt(2);
  EXPECT_EQ(answer, Bytes()
                        .append(Bytes().u8(1).u8(0).u32(added).u32(70))
                        .append(Bytes().u8(0).u8(0).u32(0).u32(71))
                        .append(Bytes().u8(1).u8(0).u32(17).u32(17)));
  EXPECT_EQ(stored(added)["Subject"], "first");
  EXPECT_EQ(stored(17)["Subject"], "last");
  EXPECT_EQ(storedItems().size(), 2u);
}

TEST_F(TaskWrite, batchDoesNotCarryAReminderFromOneTaskToTheNext) {
  const Bytes first =
      recordOf({kDue, kSet, timeField(kReminderTime, 9), weekly(), textField(kBody, u"Body")});
  const Bytes answer = reply(command(15)
                                 .u32(2)
                                 .append(Bytes().u8(2).u8(3).u32(70).append(first))
                                 .append(Bytes().u8(2).u8(3).u32(71).append(recordOf({kDue}))));
  const Json second = stored(answer.dwordAt(12));
  EXPECT_EQ(second["ReminderSet"], false);
  EXPECT_EQ(second["Body"], "");
  EXPECT_FALSE(second.contains("Recurrence"));
}

TEST_F(TaskWrite, itemsOfOtherTypesAreNotFound) {
  emulator::loadSnapshot(device(), R"({"contacts": [{"Oid": 18}], "appointments": [{"Oid": 19}]})");
  for (const DWORD oid : {18u, 19u}) {
    EXPECT_EQ(changeReply(oid, recordOf({})), hex("00 03 00000000 00000000"));
    EXPECT_EQ(read(oid), hex("00 03"));
    EXPECT_EQ(reply(command(4).u32(oid)), hex("00 03"));
  }
}

}  // namespace
}  // namespace qorv
