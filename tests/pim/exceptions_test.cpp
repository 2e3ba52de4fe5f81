#include <gtest/gtest.h>

#include "tests/support/agent_test.h"
#include "tests/support/appointments.h"
#include "tests/support/recurrence_bytes.h"

namespace qorv {
namespace {

using namespace test;

constexpr double kMonday = 38425.0;  // 2005-03-14

class Exceptions : public AgentTest {
 protected:
  /// Every Monday from 2005-03-14, 09:00 to 10:00.
  Bytes series(const std::vector<Bytes>& exceptions) {
    Bytes recurrence =
        block(day(2005, 3, 14), day(2005, 3, 14),
              {.type = 1, .dayOfWeekMask = 2, .exceptions = static_cast<DWORD>(exceptions.size())});
    for (const Bytes& bytes : exceptions) recurrence.append(bytes);
    return record(4)
        .append(textField(1, u"Weekly"))
        .append(timeField(16, 9))
        .append(timeField(18, 10))
        .append(Bytes().u32(19).append(recurrence));
  }
  DWORD add(const std::vector<Bytes>& exceptions) {
    return reply(request(2, kAppointment).u32(1).append(series(exceptions))).dwordAt(2);
  }
  void change(DWORD oid, const std::vector<Bytes>& exceptions) {
    reply(request(3, kAppointment).u32(oid).append(series(exceptions)));
  }

  qorv::ComPtr<IRecurrencePattern> patternOf(DWORD oid) {
    qorv::ComPtr<IRecurrencePattern> pattern;
    appointment(oid)->GetRecurrencePattern(pattern.put());
    return pattern;
  }
  qorv::ComPtr<IAppointment> occurrence(DWORD oid, double day) {
    qorv::ComPtr<IAppointment> found;
    patternOf(oid)->GetOccurrence(day, found.put());
    return found;
  }
};

const Bytes kSecond = day(2005, 3, 21);
const Bytes kThird = day(2005, 3, 28);

TEST_F(Exceptions, aDeletedOccurrenceIsGone) {
  const DWORD oid = add({exception(kSecond, kSecond, kSecond, {.deleted = 1})});
  EXPECT_TRUE(occurrence(oid, kMonday));
  EXPECT_FALSE(occurrence(oid, kMonday + 7));
  EXPECT_TRUE(occurrence(oid, kMonday + 14));
}

TEST_F(Exceptions, anyDeletedWordButZeroDeletes) {
  const DWORD oid = add({exception(kSecond, kSecond, kSecond, {.deleted = 0x80000000})});
  EXPECT_FALSE(occurrence(oid, kMonday + 7));
}

TEST_F(Exceptions, aChangedOccurrenceHasItsOwnValues) {
  const DWORD oid = add({exception(kSecond, day(2005, 3, 21, 11), day(2005, 3, 21, 12),
                                   {.reminderSet = 0xFFFF, .reminderMinutes = 30, .busyStatus = 1}, u"Late",
                                   u"Room 9", u"Bring cake")});
  const auto changed = occurrence(oid, kMonday + 7);
  ASSERT_TRUE(changed);
  DATE start;
  LONG minutes = 0;
  LONG busy = -1;
  VARIANT_BOOL reminder = VARIANT_FALSE;
  changed->get_Start(&start);
  changed->get_ReminderMinutesBeforeStart(&minutes);
  changed->get_BusyStatus(&busy);
  changed->get_ReminderSet(&reminder);
  EXPECT_DOUBLE_EQ(start, kMonday + 7 + 11.0 / 24);
  EXPECT_EQ(minutes, 30);
  EXPECT_EQ(busy, 1);
  EXPECT_EQ(reminder, VARIANT_TRUE);
  EXPECT_EQ(textOf(outlook(), *changed, &IAppointment::get_Subject), u"Late");
  EXPECT_EQ(textOf(outlook(), *changed, &IAppointment::get_Location), u"Room 9");
  EXPECT_EQ(textOf(outlook(), *changed, &IAppointment::get_Body), u"Bring cake");
}

TEST_F(Exceptions, putsFollowTheFixedOrderAndAllOnesLeaveAProperty) {
  observeCalls();
  add({exception(kSecond, day(2005, 3, 21, 11), day(2005, 3, 21, 12), {.reminderMinutes = 30}, u"Late")});
  const auto names = callNames("IAppointment.put_");
  // Three puts of the series itself stand in front.
  EXPECT_EQ(
      std::vector<std::string>(names.begin() + 3, names.end()),
      (std::vector<std::string>{"IAppointment.put_Start", "IAppointment.put_End",
                                "IAppointment.put_ReminderMinutesBeforeStart", "IAppointment.put_Subject"}));
}

TEST_F(Exceptions, aTrueReminderFlagThatIsSentBackIsNotAppliedAgain) {
  const DWORD oid =
      add({exception(kSecond, day(2005, 3, 21, 11), day(2005, 3, 21, 12), {.reminderSet = 0xFFFFFFFF})});
  VARIANT_BOOL reminder = VARIANT_TRUE;
  occurrence(oid, kMonday + 7)->get_ReminderSet(&reminder);
  EXPECT_EQ(reminder, VARIANT_FALSE);
}

TEST_F(Exceptions, anOccurrenceThatWasMovedIsFoundAmongTheExceptions) {
  // First moved to Wednesday 23, then, by its original date, to Thursday 24.
  const DWORD oid = add({exception(kSecond, day(2005, 3, 23, 9), day(2005, 3, 23, 10))});
  EXPECT_FALSE(occurrence(oid, kMonday + 7));
  observeCalls();
  change(oid, {exception(kSecond, day(2005, 3, 24, 9), day(2005, 3, 24, 10))});
  EXPECT_FALSE(callNames("IExceptions.Item").empty());
  const Bytes answer = reply(request(7, kAppointment).u32(oid));
  // The last 80 bytes and three texts: "Weekly" of 4 + 14 bytes and two empty ones of 6 each.
  const Bytes read = answer.slice(answer.size() - 80 - 18 - 12, 48);
  EXPECT_EQ(read, Bytes().time(2005, 3, 1, 21).time(2005, 3, 4, 24, 9).time(2005, 3, 4, 24, 10));
}

TEST_F(Exceptions, aMovedOccurrenceCanBeDeletedByItsOriginalDate) {
  const DWORD oid = add({exception(kSecond, day(2005, 3, 23, 9), day(2005, 3, 23, 10))});
  change(oid, {exception(kSecond, kSecond, kSecond, {.deleted = 1})});
  const Bytes answer = reply(request(7, kAppointment).u32(oid));
  EXPECT_EQ(answer.slice(answer.size() - 80, 16), Bytes().time(2005, 3, 1, 21));
  EXPECT_EQ(answer.dwordAt(answer.size() - 80 + 48), 1u);
}

TEST_F(Exceptions, aRecordThatMatchesNothingIsPassedOver) {
  const DWORD oid =
      add({exception(day(2005, 3, 22), day(2005, 3, 22, 9), day(2005, 3, 22, 10), {}, u"Nowhere"),
           exception(kThird, kThird, kThird, {.deleted = 1})});
  EXPECT_NE(oid, 0u);
  EXPECT_FALSE(occurrence(oid, kMonday + 14));
  EXPECT_TRUE(occurrence(oid, kMonday + 7));
}

TEST_F(Exceptions, theTimeOfTheOriginalDateDoesNotCount) {
  const DWORD oid = add({exception(day(2005, 3, 21, 17, 45), kSecond, kSecond, {.deleted = 1})});
  EXPECT_FALSE(occurrence(oid, kMonday + 7));
}

TEST_F(Exceptions, reservedWordAndPresenceValuesDoNotMatter) {
  Bytes bytes = exception(kSecond, day(2005, 3, 21, 11), day(2005, 3, 21, 12), {}, u"Late");
  std::vector<BYTE> raw = bytes.vector();
  for (std::size_t i = 52; i < 56; ++i) raw[i] = 0x5A;
  raw[68] = 0x01;
  raw[69] = 0x00;
  const DWORD oid = add({Bytes(raw)});
  EXPECT_EQ(textOf(outlook(), *occurrence(oid, kMonday + 7), &IAppointment::get_Subject), u"Late");
}

TEST_F(Exceptions, ofABlockThatAnotherReplacesDoNotCount) {
  const Bytes with =
      block(day(2005, 3, 14), day(2005, 3, 14), {.type = 1, .dayOfWeekMask = 2, .exceptions = 1});
  const Bytes without = block(day(2005, 3, 14), day(2005, 3, 14), {.type = 1, .dayOfWeekMask = 2});
  const DWORD oid = reply(request(2, kAppointment)
                              .u32(1)
                              .append(record(3)
                                          .append(timeField(16, 9))
                                          .append(Bytes().u32(19).append(with).append(
                                              exception(kSecond, kSecond, kSecond, {.deleted = 1})))
                                          .append(Bytes().u32(19).append(without))))
                        .dwordAt(2);
  EXPECT_TRUE(occurrence(oid, kMonday + 7));
}

class FailingException : public Exceptions, public testing::WithParamInterface<const char*> {};

TEST_P(FailingException, leavesTheSeriesSaved) {
  const DWORD oid = add({exception(kSecond, day(2005, 3, 23, 9), day(2005, 3, 23, 10))});
  fault(GetParam());
  const Bytes moved = exception(kSecond, day(2005, 3, 24, 9), day(2005, 3, 24, 10));
  const Bytes gone = exception(kThird, kThird, kThird, {.deleted = 1});
  EXPECT_EQ(reply(request(3, kAppointment).u32(oid).append(series({moved, gone}))).slice(0, 6),
            Bytes().u8(1).u8(0).u32(oid));
}

INSTANTIATE_TEST_SUITE_P(Calls, FailingException,
                         testing::Values("IRecurrencePattern.get_Exceptions=0x80004005",
                                         "IRecurrencePattern.GetOccurrence=0x80004005",
                                         "IExceptions.get_Count=0x80004005", "IExceptions.Item=0x80004005",
                                         "IException.get_OriginalDate=0x80004005",
                                         "IException.get_AppointmentItem=0x80004005",
                                         "IPOutlookApp.SystemTimeToVariantTime#4=0x80070057",
                                         "IAppointment.Delete=0x80004005", "IAppointment.Save#2=0x80004005*1",
                                         "IAppointment.put_Start#2=0x80004005"));

}  // namespace
}  // namespace qorv
