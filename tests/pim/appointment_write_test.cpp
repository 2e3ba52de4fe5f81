#include <gtest/gtest.h>

#include "tests/support/agent_test.h"
#include "tests/support/appointments.h"
#include "tests/support/recurrence_bytes.h"

namespace qorv {
namespace {

using namespace test;
using Names = std::vector<std::string>;

class AppointmentWrite : public AgentTest {
 protected:
  DWORD add(const Bytes& itemRecord) {
    return reply(request(2, kAppointment).u32(1).append(itemRecord)).dwordAt(2);
  }
  void change(DWORD oid, const Bytes& itemRecord) {
    reply(request(3, kAppointment).u32(oid).append(itemRecord));
  }

  LONG number(DWORD oid, HRESULT (IAppointment::*get)(LONG*)) {
    LONG value = 0x7EADBEEF;
    ((*appointment(oid)).*get)(&value);
    return value;
  }
  VARIANT_BOOL flag(DWORD oid, HRESULT (IAppointment::*get)(VARIANT_BOOL*)) {
    VARIANT_BOOL value = 0x7EAD;
    ((*appointment(oid)).*get)(&value);
    return value;
  }
  double date(DWORD oid, HRESULT (IAppointment::*get)(DATE*)) {
    DATE value = -1.0;
    ((*appointment(oid)).*get)(&value);
    return value;
  }
  std::u16string text(DWORD oid, HRESULT (IAppointment::*get)(BSTR*)) {
    return textOf(outlook(), *appointment(oid), get);
  }
};

// 2005-03-14 is day 38425 of the object model's count: 1899-12-30 + 38425 days.
constexpr double kMonday = 38425.0;

TEST_F(AppointmentWrite, everyFieldReachesItsProperty) {
  const DWORD oid = add(record(11)
                            .append(textField(1, u"Standup"))
                            .append(textField(2, u"Room 4"))
                            .append(textField(3, u"Work, Team"))
                            .append(numberField(4, 0))
                            .append(numberField(5, 1))
                            .append(numberField(6, 3))
                            .append(timeField(16, 9))
                            .append(timeField(18, 9, 30))
                            .append(numberField(7, 0xFFFF))
                            .append(numberField(8, 45))
                            .append(textField(9, u"Notes")));
  EXPECT_EQ(text(oid, &IAppointment::get_Subject), u"Standup");
  EXPECT_EQ(text(oid, &IAppointment::get_Location), u"Room 4");
  EXPECT_EQ(text(oid, &IAppointment::get_Categories), u"Work, Team");
  EXPECT_EQ(flag(oid, &IAppointment::get_AllDayEvent), VARIANT_FALSE);
  EXPECT_EQ(number(oid, &IAppointment::get_Sensitivity), 2);
  EXPECT_EQ(number(oid, &IAppointment::get_BusyStatus), 3);
  EXPECT_EQ(flag(oid, &IAppointment::get_ReminderSet), VARIANT_TRUE);
  EXPECT_EQ(number(oid, &IAppointment::get_ReminderMinutesBeforeStart), 45);
  EXPECT_EQ(text(oid, &IAppointment::get_Body), u"Notes");
  EXPECT_DOUBLE_EQ(date(oid, &IAppointment::get_Start), kMonday + 9.0 / 24);
  EXPECT_DOUBLE_EQ(date(oid, &IAppointment::get_End), kMonday + 9.5 / 24);
}

TEST_F(AppointmentWrite, putsFollowTheRecordAndClearTheRecurrenceBeforeTheSave) {
  observeCalls();
  add(simpleAppointment(u"Hi"));
  EXPECT_EQ(callNames("IAppointment.put"),
            (Names{"IAppointment.put_Subject", "IAppointment.put_Start", "IAppointment.put_End"}));
  EXPECT_EQ(calls("IAppointment.put_Start")[0]["args"][0], kMonday + 0.375);
  const Names all = callNames("IAppointment");
  const auto clear = std::ranges::find(all, "IAppointment.ClearRecurrencePattern");
  ASSERT_NE(clear, all.end());
  EXPECT_EQ(Names(clear, all.end()),
            (Names{"IAppointment.ClearRecurrencePattern", "IAppointment.Save", "IAppointment.get_AllDayEvent",
                   "IAppointment.get_Oid", "IAppointment.Release"}));
}

TEST_F(AppointmentWrite, flagsArePutAsTheirLow16Bits) {
  observeCalls();
  add(record(4)
          .append(numberField(4, 1))
          .append(numberField(4, 0xABCD0000))
          .append(numberField(7, 0xFFFFFFFF))
          .append(numberField(7, 0x12345678)));
  EXPECT_EQ(calls("IAppointment.put_AllDayEvent")[0]["args"][0], 1);
  EXPECT_EQ(calls("IAppointment.put_AllDayEvent")[1]["args"][0], 0);
  EXPECT_EQ(calls("IAppointment.put_ReminderSet")[0]["args"][0], -1);
  EXPECT_EQ(calls("IAppointment.put_ReminderSet")[1]["args"][0], 0x5678);
}

TEST_F(AppointmentWrite, onlySensitivityOneIsPrivate) {
  observeCalls();
  add(record(4)
          .append(numberField(5, 1))
          .append(numberField(5, 2))
          .append(numberField(5, 5))
          .append(numberField(5, 0)));
  std::vector<int> put;
  for (const auto& call : calls("IAppointment.put_Sensitivity")) put.push_back(call["args"][0]);
  EXPECT_EQ(put, (std::vector<int>{2, 0, 0, 0}));
}

TEST_F(AppointmentWrite, recordWithoutFieldsClearsTheRecurrenceAndKeepsTheRest) {
  const Bytes weekly = block(day(2005, 3, 14), day(2005, 3, 14), {.type = 1, .dayOfWeekMask = 2});
  const DWORD oid = add(record(4)
                            .append(textField(1, u"Weekly"))
                            .append(timeField(16, 9))
                            .append(timeField(18, 10))
                            .append(Bytes().u32(19).append(weekly)));
  EXPECT_EQ(flag(oid, &IAppointment::get_IsRecurring), VARIANT_TRUE);
  change(oid, record(0));
  EXPECT_EQ(flag(oid, &IAppointment::get_IsRecurring), VARIANT_FALSE);
  EXPECT_EQ(text(oid, &IAppointment::get_Subject), u"Weekly");
}

TEST_F(AppointmentWrite, tagsThatCarryNothingConsumeNoValue) {
  // Tags 0, 10 to 15, 17, 20 and a huge one are each followed by the next tag at once.
  Bytes bytes = record(13);
  for (const DWORD tag : {0u, 10u, 11u, 12u, 13u, 14u, 15u, 17u, 20u, 21u, 0xFFFFFFFFu}) bytes.u32(tag);
  bytes.append(textField(1, u"After")).append(numberField(6, 1));
  const DWORD oid = add(bytes);
  EXPECT_EQ(text(oid, &IAppointment::get_Subject), u"After");
  EXPECT_EQ(number(oid, &IAppointment::get_BusyStatus), 1);
}

TEST_F(AppointmentWrite, oneDayAllDayAppointmentEndsAtTheNextMidnight) {
  const DWORD oid =
      add(record(3).append(timeField(16, 0)).append(timeField(18, 0)).append(numberField(4, 0xFFFF)));
  EXPECT_DOUBLE_EQ(date(oid, &IAppointment::get_Start), kMonday);
  EXPECT_DOUBLE_EQ(date(oid, &IAppointment::get_End), kMonday + 1);
}

TEST_F(AppointmentWrite, allDayAppointmentOfSeveralDaysGetsItsLastDayBackAfterTheSave) {
  observeCalls();
  // From the 14th to the 16th: the end travels as the 16th and is the 17th in the object model.
  const DWORD oid =
      add(record(3).append(timeField(16, 0)).append(timeField(18, 0, 0, 16)).append(numberField(4, 0xFFFF)));
  EXPECT_DOUBLE_EQ(date(oid, &IAppointment::get_End), kMonday + 3);
  EXPECT_EQ(callNames("IAppointment.Save").size(), 2u);
}

TEST_F(AppointmentWrite, allDaySeriesIsSavedWithADayMoreBeforeItsPatternIsSet) {
  observeCalls();
  const Bytes yearly =
      block(day(2005, 3, 14), day(2005, 3, 14), {.type = 5, .dayOfMonth = 14, .monthOfYear = 3});
  const DWORD oid = add(record(4)
                            .append(timeField(16, 0))
                            .append(timeField(18, 0))
                            .append(numberField(4, 0xFFFF))
                            .append(Bytes().u32(19).append(yearly)));
  const Names all = callNames("IAppointment");
  const auto begin = std::ranges::find(all, "IAppointment.get_AllDayEvent");
  EXPECT_EQ(Names(begin, begin + 8),
            (Names{"IAppointment.get_AllDayEvent", "IAppointment.get_Start", "IAppointment.get_End",
                   "IAppointment.put_End", "IAppointment.Save", "IAppointment.Save",
                   "IAppointment.GetRecurrencePattern", "IAppointment.Save"}));
  EXPECT_DOUBLE_EQ(date(oid, &IAppointment::get_End), kMonday + 1);
}

TEST_F(AppointmentWrite, anExistingSeriesIsNotSavedBeforeItsPattern) {
  const DWORD oid = add(simpleAppointment(u"Single"));
  observeCalls();
  const Bytes weekly = block(day(2005, 3, 14), day(2005, 3, 14), {.type = 1, .dayOfWeekMask = 2});
  change(oid, record(1).append(Bytes().u32(19).append(weekly)));
  EXPECT_EQ(callNames("IAppointment.Save").size(), 1u);
}

TEST_F(AppointmentWrite, aTimeThatIsNoDateLeavesItsProperty) {
  const DWORD oid = add(simpleAppointment(u"x"));
  change(oid, record(1).append(Bytes().u32(16).time(2005, 2, 0, 30, 9)));
  EXPECT_DOUBLE_EQ(date(oid, &IAppointment::get_Start), kMonday + 0.375);
}

TEST_F(AppointmentWrite, refusedPropertiesDoNotStopTheRecord) {
  fault("IAppointment.put_Subject=0x80040066");
  const DWORD oid = add(simpleAppointment(u"x").append(Bytes()));
  EXPECT_NE(oid, 0u);
  EXPECT_EQ(text(oid, &IAppointment::get_Subject), u"");
  EXPECT_DOUBLE_EQ(date(oid, &IAppointment::get_Start), kMonday + 0.375);
}

TEST_F(AppointmentWrite, failedSaveTellsTheDevicesUserAndAnswersResultOneWithoutAnOid) {
  fault("IAppointment.Save=0x80004005");
  observeCalls();
  EXPECT_EQ(reply(request(2, kAppointment).u32(7).append(simpleAppointment(u"x"))),
            hex("01 00 00000000 07000000 00000000000000000000"));
  EXPECT_EQ(calls("MessageBoxW")[0]["args"],
            nlohmann::json::parse(R"([null, "Save FAILED", "INFO", 65536])"));
  EXPECT_EQ(callNames("IAppointment.Save").size(), 1u) << "no other failure is tried again";
}

TEST_F(AppointmentWrite, failedSaveOfAChangeKeepsItsOid) {
  const DWORD oid = add(simpleAppointment(u"x"));
  fault("IAppointment.Save=0x80040068");
  EXPECT_EQ(reply(request(3, kAppointment).u32(oid).append(simpleAppointment(u"y"))),
            Bytes().u8(1).u8(0).u32(oid).u32(oid).zeros(10));
}

TEST_F(AppointmentWrite, patternThatCannotBeHadLeavesTheAppointmentSingle) {
  fault("IAppointment.GetRecurrencePattern=0x80004005");
  const Bytes weekly =
      block(day(2005, 3, 14), day(2005, 3, 14), {.type = 1, .dayOfWeekMask = 2, .exceptions = 1});
  const Bytes gone = exception(day(2005, 3, 21), day(2005, 3, 21), day(2005, 3, 21), {.deleted = 1});
  const DWORD oid = add(record(1).append(Bytes().u32(19).append(weekly).append(gone)));
  clearFaults();
  EXPECT_NE(oid, 0u);
  EXPECT_EQ(flag(oid, &IAppointment::get_IsRecurring), VARIANT_FALSE);
}

TEST_F(AppointmentWrite, seriesThatIsCutInItsBlockOrExceptionsIsNotSaved) {
  const Bytes weekly =
      block(day(2005, 3, 14), day(2005, 3, 14), {.type = 1, .dayOfWeekMask = 2, .exceptions = 2});
  const Bytes first =
      exception(day(2005, 3, 21), day(2005, 3, 21, 10), day(2005, 3, 21, 11), {}, u"S", u"L", u"B");
  const Bytes whole = record(1).append(Bytes().u32(19).append(weekly).append(first));
  for (const std::size_t size : {std::size_t{8}, std::size_t{50}, std::size_t{105}, std::size_t{106},
                                 std::size_t{150}, whole.size() - 1, whole.size()}) {
    EXPECT_EQ(reply(request(2, kAppointment).u32(1).append(whole.slice(0, size))).vector()[0], 0) << size;
  }
  EXPECT_EQ(reply(request(6, kAppointment)), hex("01 00 00000000"));
}

}  // namespace
}  // namespace qorv
