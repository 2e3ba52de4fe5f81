#include <gtest/gtest.h>

#include "tests/pim/item_test.h"

namespace qorv {
namespace {

using namespace test;

class TaskRead : public TaskTest {};

Bytes taggedNumber(unsigned tag, DWORD value) {
  return Bytes().u32(tag).u32(value);
}
Bytes taggedText(unsigned tag, std::u16string_view text) {
  return Bytes().u32(tag).terminatedText(text);
}
/// 4501-01-01 stands for no date: day 949998 after 1899-12-30, a Saturday, and a multiple of seven days later.
Bytes taggedNoDate(unsigned tag) {
  return Bytes().u32(tag).time(4501, 1, 6, 1);
}

TEST_F(TaskRead, fieldsComeInTheirFixedOrder) {
  load({{"Oid", 17},
        {"Subject", "File"},
        {"Categories", "Work"},
        {"StartDate", "2005-03-14T08:30:00.000"},
        {"DueDate", "2005-03-16T00:00:00.000"},
        {"Importance", 2},
        {"Complete", true},
        {"Sensitivity", 2},
        {"ReminderSet", true},
        {"ReminderTime", "2005-03-15T17:15:00.000"},
        {"Body", "All"}});
  // The 14th was a Monday, day 1 of the week.
  const Bytes expected = hex("01 00 11000000 0A")
                             .append(Bytes().u32(3).time(2005, 3, 1, 14, 8, 30))
                             .append(Bytes().u32(4).time(2005, 3, 3, 16))
                             .append(taggedNumber(7, 1))
                             .append(taggedNumber(5, 2))
                             .append(Bytes().u32(10).time(2005, 3, 2, 15, 17, 15))
                             .append(taggedNumber(9, 1))
                             .append(taggedNumber(6, 1))
                             .append(taggedText(1, u"File"))
                             .append(taggedText(2, u"Work"))
                             .append(taggedText(11, u"All"));
  observeCalls();
  EXPECT_EQ(read(17), expected);
  EXPECT_EQ(callsOf({"ITask.get_", "IPOutlookApp.SysFreeString"}),
            (std::vector<std::string>{
                "ITask.get_StartDate", "ITask.get_DueDate", "ITask.get_Sensitivity", "ITask.get_Importance",
                "ITask.get_ReminderTime", "ITask.get_ReminderSet", "ITask.get_Complete", "ITask.get_Subject",
                "IPOutlookApp.SysFreeString", "ITask.get_Categories", "IPOutlookApp.SysFreeString",
                "ITask.get_Body", "IPOutlookApp.SysFreeString", "ITask.get_IsRecurring", "ITask.get_Oid"}));
}

/// A new task: no dates, importance 1, everything else off or empty, but for a subject and a body of the size.
Bytes plainTask(DWORD oid, unsigned fields) {
  return Bytes()
      .u8(1)
      .u8(0)
      .u32(oid)
      .u8(fields)
      .append(taggedNoDate(3))
      .append(taggedNoDate(4))
      .append(taggedNumber(7, 0))
      .append(taggedNumber(5, 1))
      .append(taggedNoDate(10))
      .append(taggedNumber(9, 0))
      .append(taggedNumber(6, 0));
}

TEST_F(TaskRead, datesThatAreNotSetAreSentAsTheyStand) {
  load({{"Oid", 17}});
  EXPECT_EQ(
      read(17),
      plainTask(17, 10).append(taggedText(1, u"")).append(taggedText(2, u"")).append(taggedText(11, u"")));
}

TEST_F(TaskRead, onlyPrivateIsOne) {
  for (const int sensitivity : {1, 2, 3}) {
    load({{"Oid", 17}, {"Sensitivity", sensitivity}});
    EXPECT_EQ(read(17).slice(7 + 40, 8), taggedNumber(7, sensitivity == 2 ? 1 : 0)) << sensitivity;
  }
}

TEST_F(TaskRead, aTaskTravelsBothWaysUnchanged) {
  // What the device sends is a record for it too, behind the field count: the texts' NULs end them.
  load({{"Oid", 17},
        {"Subject", "File"},
        {"StartDate", "2005-03-14T08:30:00.000"},
        {"DueDate", "2005-03-16T00:00:00.000"},
        {"Sensitivity", 2},
        {"ReminderSet", true},
        {"ReminderTime", "2005-03-15T17:15:00.000"},
        {"Body", "All"}});
  const Bytes sent = read(17);
  const DWORD copy = add(Bytes().u32(10).append(sent.slice(7, sent.size() - 7)));
  Json expected = stored(17);
  expected["Oid"] = copy;
  EXPECT_EQ(stored(copy), expected);
}

TEST_F(TaskRead, aTextBeyondTheLimitIsLeftOutAndWhatFollowsIsKept) {
  // 40 + 16 + 20 + 16 bytes and the header lie in front of the subject, 99 in all, then 10 each for the empty subject
  // and categories: 119 + (n + 1) * 2 <= 110592 lets a body of 55235 characters pass.
  load({{"Oid", 17}, {"Body", std::string(55235, 'x')}});
  load({{"Oid", 18},
        {"Body", std::string(55236, 'x')},
        {"StartDate", "2005-03-14T00:00:00.000"},
        {"Recurrence",
         {{"RecurrenceType", 0},
          {"PatternStartDate", "2005-03-14T00:00:00.000"},
          {"Interval", 1},
          {"NoEndDate", true}}}});
  const Bytes whole = read(17);
  EXPECT_EQ(whole.vector()[6], 10);
  EXPECT_EQ(whole.size(), 119u + 8 + 110472);
  const Bytes without = read(18);
  // Nine fields and the block.
  EXPECT_EQ(without.vector()[6], 10);
  ASSERT_EQ(without.size(), 119u + 4 + 98);
  EXPECT_EQ(without.dwordAt(119), 19u);
}

TEST_F(TaskRead, aListEndsWithTheTaskThatLostAText) {
  load({{"Oid", 17}});
  load({{"Oid", 18}, {"Body", std::string(60000, 'x')}});
  const Bytes subjectAndCategories = taggedText(1, u"").append(taggedText(2, u""));
  EXPECT_EQ(reply(command(16).u32(3).u32(17).u32(18).u32(17)), hex("01 00 01000000 09")
                                                                   .append(plainTask(17, 10))
                                                                   .append(subjectAndCategories)
                                                                   .append(taggedText(11, u""))
                                                                   .append(plainTask(18, 9))
                                                                   .append(subjectAndCategories));
}

}  // namespace
}  // namespace qorv
