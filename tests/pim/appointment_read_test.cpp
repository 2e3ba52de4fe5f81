#include <gtest/gtest.h>

#include "tests/support/agent_test.h"
#include "tests/support/appointments.h"
#include "tests/support/recurrence_bytes.h"

namespace qorv {
namespace {

using namespace test;

class AppointmentRead : public AgentTest {
 protected:
  DWORD add(const Bytes& itemRecord) {
    return reply(request(2, kAppointment).u32(1).append(itemRecord)).dwordAt(2);
  }
};

Bytes taggedNumber(unsigned tag, DWORD value) {
  return Bytes().u32(tag).u32(value);
}
Bytes taggedText(unsigned tag, std::u16string_view text) {
  return Bytes().u32(tag).terminatedText(text);
}

TEST_F(AppointmentRead, fieldsComeInTheirFixedOrder) {
  const DWORD oid = add(record(9)
                            .append(textField(1, u"Standup"))
                            .append(textField(2, u"Room 4"))
                            .append(textField(3, u"Work"))
                            .append(numberField(5, 1))
                            .append(numberField(6, 3))
                            .append(timeField(16, 9))
                            .append(timeField(18, 9, 30))
                            .append(numberField(7, 0xFFFF))
                            .append(textField(9, u"Notes")));
  // 2005-03-14 was a Monday, day 1 of the week.
  const Bytes expected = Bytes()
                             .u8(1)
                             .u8(0)
                             .u32(oid)
                             .u8(11)
                             .append(Bytes().u32(16).time(2005, 3, 1, 14, 9))
                             .append(Bytes().u32(18).time(2005, 3, 1, 14, 9, 30))
                             .append(taggedNumber(5, 1))
                             .append(taggedNumber(6, 3))
                             .append(taggedNumber(8, 15))
                             .append(taggedNumber(7, 1))
                             .append(taggedNumber(4, 0))
                             .append(taggedText(1, u"Standup"))
                             .append(taggedText(2, u"Room 4"))
                             .append(taggedText(3, u"Work"))
                             .append(taggedText(9, u"Notes"));
  EXPECT_EQ(reply(request(7, kAppointment).u32(oid)), expected);
}

TEST_F(AppointmentRead, allDayEndIsTheLastDay) {
  const DWORD oid =
      add(record(3).append(timeField(16, 0)).append(timeField(18, 0, 0, 16)).append(numberField(4, 0xFFFF)));
  const Bytes answer = reply(request(7, kAppointment).u32(oid));
  // Behind the header: start, then end. 2005-03-16 was a Wednesday.
  EXPECT_EQ(answer.slice(7, 20), Bytes().u32(16).time(2005, 3, 1, 14));
  EXPECT_EQ(answer.slice(27, 20), Bytes().u32(18).time(2005, 3, 3, 16));
  EXPECT_EQ(answer.slice(47 + 4 * 8, 8), taggedNumber(4, 1));
}

TEST_F(AppointmentRead, aSeriesHasItsBlockAfterTheTexts) {
  const DWORD oid = add(record(3)
                            .append(timeField(16, 9))
                            .append(timeField(18, 10))
                            .append(Bytes().u32(19).append(
                                block(day(2005, 3, 14), day(2005, 3, 14),
                                      {.type = 1, .occurrences = 4, .endKind = 2, .dayOfWeekMask = 2}))));
  const Bytes answer = reply(request(7, kAppointment).u32(oid));
  EXPECT_EQ(answer.slice(0, 7), Bytes().u8(1).u8(0).u32(oid).u8(12));
  const std::size_t fixed = 7 + 2 * 20 + 5 * 8 + 4 * 10;
  ASSERT_EQ(answer.size(), fixed + 4 + 98);
  // Four Mondays: March 14, 21, 28 and April 4. The end is computed by the object model.
  EXPECT_EQ(answer.slice(fixed, 4 + 98),
            Bytes().u32(19).append(block(Bytes().time(2005, 3, 1, 14), Bytes().time(2005, 4, 1, 4),
                                         {.type = 1, .occurrences = 4, .endKind = 2, .dayOfWeekMask = 2})));
}

TEST_F(AppointmentRead, exceptionsFollowTheBlockUncounted) {
  const Bytes weekly =
      block(day(2005, 3, 14), day(2005, 3, 14), {.type = 1, .dayOfWeekMask = 2, .exceptions = 2});
  const Bytes gone = exception(day(2005, 3, 21), day(2005, 3, 21), day(2005, 3, 21), {.deleted = 1});
  const Bytes late =
      exception(day(2005, 3, 28), day(2005, 3, 28, 10), day(2005, 3, 28, 11), {.busyStatus = 1}, u"Late");
  const DWORD oid = add(record(4)
                            .append(textField(1, u"Weekly"))
                            .append(timeField(16, 9))
                            .append(timeField(18, 10))
                            .append(Bytes().u32(19).append(weekly).append(gone).append(late)));
  const Bytes answer = reply(request(7, kAppointment).u32(oid));
  EXPECT_EQ(answer.vector()[6], 12) << "the records are no fields";
  const std::size_t blockAt = 7 + 2 * 20 + 5 * 8 + 4 * 10 + 6 * 2 + 4;
  EXPECT_EQ(answer.dwordAt(blockAt + 94), 2u);
  // A deleted one: its date, no times, deleted, and everything else unset. 2005-03-21 was a Monday.
  Bytes expected = Bytes().time(2005, 3, 1, 21).zeros(32).u32(1);
  for (int i = 0; i < 4; ++i) expected.u32(0xFFFFFFFF);
  expected.zeros(12);
  // The changed one: reminder off is 0, the series' lead time is the default, texts are always there.
  expected.append(Bytes()
                      .time(2005, 3, 1, 28)
                      .time(2005, 3, 1, 28, 10)
                      .time(2005, 3, 1, 28, 11)
                      .u32(0)
                      .u32(0xFFFFFFFF)
                      .u32(0)
                      .u32(15)
                      .u32(1)
                      .u32(1)
                      .u32(1)
                      .u32(1)
                      .terminatedText(u"Late")
                      .terminatedText(u"")
                      .terminatedText(u""));
  EXPECT_EQ(answer.slice(blockAt + 98, answer.size() - blockAt - 98), expected);
}

TEST_F(AppointmentRead, textsAreFreedAndNothingIsHeldAfterARead) {
  const DWORD oid = add(simpleAppointment(u"x"));
  observeCalls();
  reply(request(7, kAppointment).u32(oid));
  EXPECT_EQ(callNames("IPOutlookApp.SysFreeString").size(), 4u);
}

class FailingGetter : public AppointmentRead, public testing::WithParamInterface<const char*> {};

TEST_P(FailingGetter, leavesTheRecordWhole) {
  const Bytes weekly = block(day(2005, 3, 14), day(2005, 6, 14),
                             {.type = 1, .endKind = 1, .dayOfWeekMask = 2, .exceptions = 1});
  const Bytes late = exception(day(2005, 3, 28), day(2005, 3, 28, 10), day(2005, 3, 28, 11), {}, u"Late");
  const DWORD oid = add(simpleAppointment(u"x"));
  reply(request(3, kAppointment)
            .u32(oid)
            .append(record(1).append(Bytes().u32(19).append(weekly).append(late))));
  fault(GetParam());
  const Bytes answer = reply(request(7, kAppointment).u32(oid));
  EXPECT_EQ(answer.slice(0, 2), hex("01 00"));
  EXPECT_GE(answer.vector()[6], 11);
}

INSTANTIATE_TEST_SUITE_P(
    Calls, FailingGetter,
    testing::Values(
        "IAppointment.get_Start=0x80004005", "IAppointment.get_End=0x80004005",
        "IAppointment.get_AllDayEvent=0x80004005", "IAppointment.get_Sensitivity=0x80004005",
        "IAppointment.get_BusyStatus=0x80004005", "IAppointment.get_ReminderMinutesBeforeStart=0x80004005",
        "IAppointment.get_ReminderSet=0x80004005", "IAppointment.get_Subject=0x80004005",
        "IAppointment.get_Location=0x80004005", "IAppointment.get_Categories=0x80004005",
        "IAppointment.get_Body=0x80004005", "IAppointment.get_IsRecurring=0x80004005",
        "IAppointment.GetRecurrencePattern=0x80004005", "IAppointment.get_Oid=0x80004005",
        "IPOutlookApp.VariantTimeToSystemTime=0x80070057", "IPOutlookApp.GetItemFromOid#2=0x80070057",
        "IAppointment.QueryInterface#2=0x80004002", "IItem.GetProps=0x8007000E",
        "IRecurrencePattern.get_RecurrenceType=0x80004005",
        "IRecurrencePattern.get_PatternStartDate=0x80004005", "IRecurrencePattern.get_Interval=0x80004005",
        "IRecurrencePattern.get_DayOfWeekMask=0x80004005", "IRecurrencePattern.get_NoEndDate=0x80004005",
        "IRecurrencePattern.get_Exceptions=0x80004005", "IExceptions.get_Count=0x80004005",
        "IExceptions.Item=0x80004005", "IException.get_OriginalDate=0x80004005",
        "IException.get_AppointmentItem=0x80004005"));

}  // namespace
}  // namespace qorv
