#include <gtest/gtest.h>

#include "tests/pim/item_test.h"
#include "tests/support/recurrence_bytes.h"

namespace qorv {
namespace {

using namespace test;

constexpr unsigned kSubject = 1;
constexpr unsigned kRecurrence = 19;
/// Header, three times of 20 bytes, four numbers of 8 and three empty texts of 10.
constexpr std::size_t kPlainRecord = 7 + 3 * 20 + 4 * 8 + 3 * 10;

Bytes recurrence(const Bytes& block) {
  return Bytes().u32(kRecurrence).append(block);
}

class TaskRecurrence : public TaskTest {
 protected:
  DWORD addSeries(const Bytes& block) { return add(recordOf({recurrence(block)})); }
  /// The block of the task's record, which is its last field.
  Bytes blockOf(DWORD oid) {
    const Bytes answer = read(oid);
    EXPECT_EQ(answer.vector()[6], 11);
    EXPECT_EQ(answer.size(), kPlainRecord + 4 + 98);
    EXPECT_EQ(answer.dwordAt(kPlainRecord), kRecurrence);
    return answer.slice(kPlainRecord + 4, 98);
  }
};

struct Series {
  const char* name;
  Bytes sent;
  Bytes read;
};

void PrintTo(const Series& series, std::ostream* out) {
  *out << series.name;
}

class TaskSeries : public TaskRecurrence, public testing::WithParamInterface<Series> {};

TEST_P(TaskSeries, travelsBothWays) {
  const DWORD oid = addSeries(GetParam().sent);
  EXPECT_EQ(blockOf(oid), GetParam().read);
  // What was read can be sent back.
  changeReply(oid, recordOf({recurrence(GetParam().read)}));
  EXPECT_EQ(blockOf(oid), GetParam().read);
}

const Bytes kMonday = day(2005, 3, 14);

/// A day as the device sends it, with its day of the week.
Bytes sentDay(int month, int dayOfMonth, int dayOfWeek) {
  return Bytes().time(2005, month, dayOfWeek, dayOfMonth);
}
/// The end of a series that has none.
const Bytes kNoEnd = Bytes().time(4501, 1, 6, 1);

// 2005-03-14 was a Monday. The object model computes the end date from the occurrences, and these from the date.
INSTANTIATE_TEST_SUITE_P(
    Patterns, TaskSeries,
    testing::Values(
        // March 14, 16, 18 and 20.
        Series{"daily", block(kMonday, kMonday, {.type = 0, .occurrences = 4, .endKind = 2, .interval = 2}),
               block(sentDay(3, 14, 1), sentDay(3, 20, 0),
                     {.type = 0, .occurrences = 4, .endKind = 2, .interval = 2})},
        // The Mondays up to Thursday, June 30: three in March, four in April, five in May, four in June.
        Series{"weeklyToADate",
               block(kMonday, day(2005, 6, 30), {.type = 1, .endKind = 1, .dayOfWeekMask = 2}),
               block(sentDay(3, 14, 1), sentDay(6, 30, 4),
                     {.type = 1, .occurrences = 16, .endKind = 1, .dayOfWeekMask = 2})},
        Series{"weeklyForEver", block(kMonday, kMonday, {.type = 1, .dayOfWeekMask = 2}),
               block(sentDay(3, 14, 1), kNoEnd, {.type = 1, .dayOfWeekMask = 2})},
        // March 14 and April 14, a Thursday.
        Series{"monthly",
               block(kMonday, kMonday, {.type = 2, .occurrences = 2, .endKind = 2, .dayOfMonth = 14}),
               block(sentDay(3, 14, 1), sentDay(4, 14, 4),
                     {.type = 2, .occurrences = 2, .endKind = 2, .dayOfMonth = 14})},
        // The second Mondays: March 14 and April 11.
        Series{"monthlyOnAWeekday",
               block(kMonday, kMonday,
                     {.type = 3, .occurrences = 2, .endKind = 2, .dayOfWeekMask = 2, .instance = 2}),
               block(sentDay(3, 14, 1), sentDay(4, 11, 1),
                     {.type = 3, .occurrences = 2, .endKind = 2, .dayOfWeekMask = 2, .instance = 2})},
        Series{"yearlyForEver", block(kMonday, kMonday, {.type = 5, .dayOfMonth = 14, .monthOfYear = 3}),
               block(sentDay(3, 14, 1), kNoEnd, {.type = 5, .dayOfMonth = 14, .monthOfYear = 3})},
        Series{"yearlyOnAWeekdayForEver",
               block(kMonday, kMonday, {.type = 6, .dayOfWeekMask = 2, .instance = 2, .monthOfYear = 3}),
               block(sentDay(3, 14, 1), kNoEnd,
                     {.type = 6, .dayOfWeekMask = 2, .instance = 2, .monthOfYear = 3})}),
    [](const auto& series) { return std::string(series.param.name); });

TEST_F(TaskRecurrence, hasNoExceptionsAndReadsNone) {
  // A count that no records follow: the next word is the next tag.
  const DWORD oid = add(recordOf(
      {recurrence(block(kMonday, kMonday, {.type = 0, .exceptions = 7})), textField(kSubject, u"After")}));
  EXPECT_EQ(stored(oid)["Subject"], "After");
  changeReply(oid, recordOf({textField(kSubject, u"")}));
  EXPECT_EQ(blockOf(oid).dwordAt(94), 0u);
}

TEST_F(TaskRecurrence, staysWhenARecordHasNone) {
  const DWORD oid = addSeries(block(kMonday, kMonday, {.type = 1, .dayOfWeekMask = 2}));
  const Json before = stored(oid)["Recurrence"];
  observeCalls();
  changeReply(oid, recordOf({textField(kSubject, u"changed")}));
  EXPECT_TRUE(callNames("ITask.ClearRecurrencePattern").empty());
  EXPECT_TRUE(callNames("ITask.GetRecurrencePattern").empty());
  EXPECT_EQ(stored(oid)["Subject"], "changed");
  EXPECT_EQ(stored(oid)["Recurrence"], before);
}

TEST_F(TaskRecurrence, isSetBeforeANewTaskIsSaved) {
  observeCalls();
  addSeries(block(kMonday, kMonday, {.type = 1, .dayOfWeekMask = 2}));
  EXPECT_EQ(callsOf({"ITask.GetRecurrencePattern", "ITask.Save"}),
            (std::vector<std::string>{"ITask.GetRecurrencePattern", "ITask.Save"}))
      << "unlike an appointment, a task needs no save before its pattern";
}

TEST_F(TaskRecurrence, thatCannotBeHadLeavesTheTaskSingle) {
  fault("ITask.GetRecurrencePattern=0x80004005");
  const DWORD oid = addSeries(block(kMonday, kMonday, {.type = 1, .dayOfWeekMask = 2}));
  EXPECT_NE(oid, 0u);
  EXPECT_FALSE(stored(oid).contains("Recurrence"));
}

TEST_F(TaskRecurrence, thatCannotBeHadIsLeftOutOfTheRecord) {
  const DWORD oid = addSeries(block(kMonday, kMonday, {.type = 1, .dayOfWeekMask = 2}));
  fault("ITask.GetRecurrencePattern=0x80004005");
  const Bytes answer = read(oid);
  EXPECT_EQ(answer.vector()[6], 10);
  EXPECT_EQ(answer.size(), kPlainRecord);
}

class TaskEndKind : public TaskRecurrence {
 protected:
  DWORD addSeriesToADate() {
    return addSeries(block(kMonday, day(2005, 6, 30), {.type = 1, .endKind = 1, .dayOfWeekMask = 2}));
  }
  unsigned endKind(DWORD oid) { return blockOf(oid).vector()[69]; }
};

TEST_F(TaskEndKind, isCorrectedFromTheTasksOwnStoredRecurrence) {
  const DWORD oid = addSeriesToADate();
  observeCalls();
  EXPECT_EQ(endKind(oid), 1u);
  const auto asked = calls("IItem.GetProps");
  ASSERT_EQ(asked.size(), 1u);
  EXPECT_EQ(asked[0]["args"][0], Json::array({0x41160041u}));
  EXPECT_EQ(callNames("HeapFree").size(), 1u);
}

TEST_F(TaskEndKind, isNotAskedForWhenTheSeriesNeverEnds) {
  const DWORD oid = addSeries(block(kMonday, kMonday, {.type = 1, .dayOfWeekMask = 2}));
  observeCalls();
  EXPECT_EQ(endKind(oid), 3u);
  EXPECT_TRUE(callNames("IItem.").empty());
}

TEST_F(TaskEndKind, staysWhenTheStoredRecurrenceCannotBeRead) {
  const DWORD oid = addSeriesToADate();
  // The object model tells the occurrences of a series to a date as well, which reads as an end after them.
  for (const char* rule : {"IPOutlookApp.GetItemFromOid#2=0x80070057", "ITask.QueryInterface#2=0x80004002",
                           "IItem.GetProps=0x8007000E"}) {
    clearFaults();
    fault(rule);
    EXPECT_EQ(endKind(oid), 2u) << rule;
  }
}

TEST_F(TaskEndKind, isADateWhenTheOccurrencesAreNotTold) {
  const DWORD oid =
      addSeries(block(kMonday, kMonday, {.type = 1, .occurrences = 3, .endKind = 2, .dayOfWeekMask = 2}));
  fault("IRecurrencePattern.get_Occurrences=0x80004005");
  fault("IItem.GetProps=0x8007000E");
  EXPECT_EQ(endKind(oid), 1u);
}

TEST_F(TaskRecurrence, ofAListLeavesWhatItsTypeDoesNotUseAsTheTaskBeforeHadIt) {
  const DWORD weekly = addSeries(block(kMonday, kMonday, {.type = 1, .dayOfWeekMask = 2}));
  const DWORD daily = addSeries(block(kMonday, kMonday, {.type = 0}));
  const Bytes answer = reply(command(16).u32(2).u32(weekly).u32(daily));
  const std::size_t recordSize = kPlainRecord + 4 + 98;
  ASSERT_EQ(answer.size(), 7 + 2 * recordSize);
  EXPECT_EQ(answer.slice(7 + recordSize + kPlainRecord + 4, 98),
            block(sentDay(3, 14, 1), kNoEnd, {.type = 0, .dayOfWeekMask = 2}));
}

}  // namespace
}  // namespace qorv
