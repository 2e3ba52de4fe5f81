#include <gtest/gtest.h>

#include "tests/support/agent_test.h"
#include "tests/support/appointments.h"
#include "tests/support/recurrence_bytes.h"

namespace qorv {
namespace {

using namespace test;

class ReminderRetry : public AgentTest {
 protected:
  Bytes withReminder(DWORD minutes) {
    return record(3).append(textField(1, u"x")).append(timeField(16, 9)).append(numberField(8, minutes));
  }
  std::vector<LONG> minutesPut() {
    std::vector<LONG> minutes;
    for (const auto& call : calls("IAppointment.put_ReminderMinutesBeforeStart"))
      minutes.push_back(call["args"][0]);
    return minutes;
  }
};

TEST_F(ReminderRetry, takesFiveAndTenMinutesOffThen180And240) {
  observeCalls();
  fault("IAppointment.Save=0x80040067*4");
  const Bytes answer = reply(request(2, kAppointment).u32(7).append(withReminder(1000)));
  EXPECT_EQ(minutesPut(), (std::vector<LONG>{1000, 995, 990, 820, 760}));
  EXPECT_EQ(answer.vector()[0], 1);
  EXPECT_NE(answer.dwordAt(2), 0u);
  EXPECT_TRUE(calls("MessageBoxW").empty());
}

TEST_F(ReminderRetry, makesANewItemForEveryTryOfAnAddition) {
  observeCalls();
  fault("IAppointment.Save=0x80040067*2");
  reply(request(2, kAppointment).u32(7).append(withReminder(1000)));
  EXPECT_EQ(callNames("IPOutlookApp.CreateItem").size(), 3u);
  EXPECT_EQ(callNames("IAppointment.put_Subject").size(), 3u) << "the whole record is applied again";
  clearFaults();
  EXPECT_EQ(reply(request(6, kAppointment)), hex("01 00 01000000"));
}

TEST_F(ReminderRetry, findsTheItemAgainForEveryTryOfAChange) {
  const DWORD oid = reply(request(2, kAppointment).u32(7).append(withReminder(15))).dwordAt(2);
  observeCalls();
  fault("IAppointment.Save=0x80040067*2");
  EXPECT_EQ(reply(request(3, kAppointment).u32(oid).append(withReminder(1000))),
            Bytes().u8(1).u8(0).u32(oid).u32(oid).zeros(10));
  EXPECT_EQ(callNames("IPOutlookApp.GetItemFromOid").size(), 3u);
}

TEST_F(ReminderRetry, theDifferenceIsComputedIn32Bits) {
  observeCalls();
  fault("IAppointment.Save=0x80040067*1");
  reply(request(2, kAppointment).u32(7).append(withReminder(3)));
  EXPECT_EQ(minutesPut(), (std::vector<LONG>{3, -2}));
}

TEST_F(ReminderRetry, stopsAtAnyOtherFailure) {
  observeCalls();
  fault("IAppointment.Save#1=0x80040067*1");
  fault("IAppointment.Save#2=0x80004005*1");
  EXPECT_EQ(reply(request(2, kAppointment).u32(7).append(withReminder(1000))).slice(0, 6),
            hex("01 00 00000000"));
  EXPECT_EQ(callNames("IAppointment.Save").size(), 2u);
  EXPECT_EQ(callNames("MessageBoxW").size(), 1u);
}

TEST_F(ReminderRetry, endsWhenTheItemCannotBeHadAgain) {
  observeCalls();
  fault("IAppointment.Save=0x80040067");
  fault("IPOutlookApp.CreateItem#2=0x80004005");
  EXPECT_EQ(reply(request(2, kAppointment).u32(7).append(withReminder(1000))).slice(0, 6),
            hex("01 00 00000000"));
  EXPECT_EQ(callNames("IAppointment.Save").size(), 1u);
  EXPECT_EQ(callNames("MessageBoxW").size(), 1u) << "the device's user is told";
}

TEST_F(ReminderRetry, releasesTheRefusedItemBeforeItAsksForAnother) {
  observeCalls();
  fault("IAppointment.Save=0x80040067*2");
  reply(request(2, kAppointment).u32(7).append(withReminder(1000)));
  std::vector<std::string> names;
  for (const std::string& name : callNames()) {
    if (name == "IAppointment.Save" || name == "IAppointment.Release" || name == "IPOutlookApp.CreateItem") {
      names.push_back(name);
    }
  }
  // Each creation is followed by the release of the dispatch pointer that the item was asked for through.
  EXPECT_EQ(std::vector<std::string>(names.begin() + 5, names.begin() + 9),
            (std::vector<std::string>{"IAppointment.Save", "IAppointment.Release", "IPOutlookApp.CreateItem",
                                      "IAppointment.Release"}));
}

TEST_F(ReminderRetry, endsWhenNothingIsLeftToReduce) {
  fault("IAppointment.Save=0x80040067");
  observeCalls();
  EXPECT_EQ(reply(request(3, kAppointment).u32(0)).slice(0, 2), hex("00 03"));
  EXPECT_EQ(reply(request(2, kAppointment).u32(7).append(record(0))).slice(0, 6), hex("01 00 00000000"));
  // One try and 525600 / 60 + 3 more.
  EXPECT_EQ(callNames("IAppointment.Save").size(), 1u + 8763u);
  EXPECT_EQ(callNames("MessageBoxW").size(), 1u);
}

TEST_F(ReminderRetry, aReminderBefore1900IsShortenedUntilTheDeviceTakesIt) {
  // 1900-01-02 09:00 with 3000 minutes would ring at 1899-12-31 07:00. The device takes 33 hours, 1980
  // minutes, at most: 3000 - 180, - 240 ... the first that fits is 3000 - 17 * 60 = 1980.
  const Bytes bytes = record(3)
                          .append(Bytes().u32(16).time(1900, 1, 0, 2, 9))
                          .append(numberField(7, 0xFFFF))
                          .append(numberField(8, 3000));
  const DWORD oid = reply(request(2, kAppointment).u32(7).append(bytes)).dwordAt(2);
  LONG minutes = 0;
  appointment(oid)->get_ReminderMinutesBeforeStart(&minutes);
  EXPECT_EQ(minutes, 1980);
}

TEST_F(ReminderRetry, retriedSeriesKeepsItsExceptions) {
  const Bytes weekly =
      block(day(2005, 3, 14), day(2005, 3, 14), {.type = 1, .dayOfWeekMask = 2, .exceptions = 1});
  const Bytes gone = exception(day(2005, 3, 21), day(2005, 3, 21), day(2005, 3, 21), {.deleted = 1});
  // A new series is saved before its pattern is set; the save that is refused is the last one.
  fault("IAppointment.Save#2=0x80040067*1");
  const DWORD oid =
      reply(
          request(2, kAppointment)
              .u32(7)
              .append(record(2).append(timeField(16, 9)).append(Bytes().u32(19).append(weekly).append(gone))))
          .dwordAt(2);
  clearFaults();
  const Bytes answer = reply(request(7, kAppointment).u32(oid));
  EXPECT_EQ(answer.dwordAt(answer.size() - 80 - 4), 1u) << "one exception, of 80 bytes";
}

}  // namespace
}  // namespace qorv
