// What programs of the device made of its appointments is dumped, loaded and dumped the same again.
#include "emulator/pim/com_reference.h"
#include "platform/appointment.h"
#include "platform/outlook.h"
#include "platform/recurrence.h"
#include "tests/emulator/snapshot_device.h"

namespace emulator::test {
namespace {

double date(int year, int month, int day, int hour = 0, int minute = 0) {
  return dayOf(std::chrono::year{year} / month / day) + (hour * 60 + minute) / 1440.0;
}

class AgentChanges : public testing::Test {
 protected:
  /// The object of appointment 18.
  ComReference<IAppointment> appointment() {
    void* application = nullptr;
    EXPECT_EQ(
        device_.device().objectModel.createInstance(CLSID_Application, IPOutlookApp::kIid, &application),
        S_OK);
    ComReference<IPOutlookApp> app;
    *app.out() = static_cast<IPOutlookApp*>(application);
    ComReference<IDispatch> item;
    EXPECT_EQ(app->GetItemFromOid(18, item.out()), S_OK);
    void* found = nullptr;
    EXPECT_EQ(item->QueryInterface(IAppointment::kIid, &found), S_OK);
    ComReference<IAppointment> result;
    *result.out() = static_cast<IAppointment*>(found);
    return result;
  }

  static ComReference<IRecurrencePattern> pattern(ComReference<IAppointment>& item) {
    ComReference<IRecurrencePattern> result;
    EXPECT_EQ(item->GetRecurrencePattern(result.out()), S_OK);
    return result;
  }

  ComReference<IAppointment> occurrence(double day) {
    auto series = appointment();
    auto recurrence = pattern(series);
    ComReference<IAppointment> result;
    EXPECT_EQ(recurrence->GetOccurrence(day, result.out()), S_OK);
    return result;
  }

  void move(double day, double start) {
    auto moved = occurrence(day);
    EXPECT_EQ(moved->put_Start(start), S_OK);
    EXPECT_EQ(moved->Save(), S_OK);
  }

  /// 9:00 to 10:00 from Monday 2005-03-14 on, by a recurrence type.
  void loadSeries(int type) {
    device_.load(R"({"appointments": [{"Oid": 18, "Start": "2005-03-14T09:00:00.000",
                     "End": "2005-03-14T10:00:00.000", "Recurrence": {"RecurrenceType": )" +
                 std::to_string(type) + "}}]}");
  }

  Json exceptionAppointment() {
    return device_.only("appointments").at("Exceptions").at(0).at("Appointment");
  }

  void expectTheSameAgain() {
    const std::string dump = device_.dumpText();
    EXPECT_EQ(reload(dump), dump);
  }

  SnapshotDevice device_;
};

TEST_F(AgentChanges, makeAnExceptionLastAllDayWithItsSeries) {
  loadSeries(olRecursWeekly);
  move(date(2005, 3, 21), date(2005, 3, 21, 11));
  auto series = appointment();
  EXPECT_EQ(series->put_AllDayEvent(VARIANT_TRUE), S_OK);
  ASSERT_EQ(series->Save(), S_OK);
  EXPECT_EQ(exceptionAppointment(), Json::parse(R"({"Start": "2005-03-21T00:00:00.000",
                                                    "End": "2005-03-22T00:00:00.000"})"));
  expectTheSameAgain();
}

TEST_F(AgentChanges, leaveAnExceptionPastItsNeighbourWhenTheSeriesMoves) {
  loadSeries(olRecursDaily);
  move(date(2005, 3, 15), date(2005, 3, 16, 8));
  auto series = appointment();
  EXPECT_EQ(series->put_Start(date(2005, 3, 14, 7)), S_OK);
  ASSERT_EQ(series->Save(), S_OK);
  EXPECT_EQ(exceptionAppointment()["Start"], "2005-03-16T08:00:00.000");
  expectTheSameAgain();
}

TEST_F(AgentChanges, giveASeriesNoReminderThatAnExceptionHasBefore1900) {
  device_.load(R"({"appointments": [{"Oid": 18, "Start": "1900-01-01T09:00:00.000",
                   "End": "1900-01-01T10:00:00.000", "Recurrence": {}}]})");
  move(date(1900, 1, 1), date(1900, 1, 1, 0, 10));
  const std::string before = device_.dumpText();
  auto series = appointment();
  EXPECT_EQ(series->put_ReminderSet(VARIANT_TRUE), S_OK);
  EXPECT_EQ(series->Save(), E_INVALIDREMINDERTIME);
  EXPECT_EQ(device_.dumpText(), before);
  EXPECT_EQ(series->put_ReminderMinutesBeforeStart(10), S_OK);
  EXPECT_EQ(series->Save(), S_OK);
  EXPECT_NE(device_.dumpText(), before);
  expectTheSameAgain();
}

TEST_F(AgentChanges, makeNoSeriesOfAnAppointmentWithoutAStart) {
  device_.load(R"({"appointments": [{"Oid": 18, "Subject": "Some day"}]})");
  auto item = appointment();
  auto weekly = pattern(item);
  EXPECT_EQ(item->Save(), E_INVALIDDATES);
  expectTheSameAgain();
  EXPECT_EQ(item->put_Start(date(2005, 3, 14, 9)), S_OK);
  EXPECT_EQ(item->Save(), S_OK);
  expectTheSameAgain();
}

TEST_F(AgentChanges, leaveAnExceptionWithoutTheEndThatItsSeriesGets) {
  device_.load(R"({"appointments": [{"Oid": 18, "Start": "2005-03-14T09:00:00.000", "Recurrence": {}}]})");
  move(date(2005, 3, 21), date(2005, 3, 21, 11));
  auto series = appointment();
  EXPECT_EQ(series->put_End(date(2005, 3, 14, 10)), S_OK);
  ASSERT_EQ(series->Save(), S_OK);
  EXPECT_TRUE(exceptionAppointment().at("End").is_null());
  expectTheSameAgain();
}

TEST_F(AgentChanges, endNoOccurrencePastTheCalendar) {
  device_.load(R"({"appointments": [{"Oid": 18, "Start": "2999-12-30T23:00:00.000",
                   "End": "2999-12-31T01:00:00.000", "Recurrence": {"RecurrenceType": 0}}]})");
  auto last = occurrence(date(2999, 12, 31));
  EXPECT_EQ(last->put_BusyStatus(olFree), S_OK);
  EXPECT_EQ(last->Save(), E_INVALIDDATES);
  expectTheSameAgain();
}

TEST_F(AgentChanges, dropExceptionsOfAnotherRuleThatWasSavedMeanwhile) {
  loadSeries(olRecursWeekly);
  auto held = appointment();
  auto weekly = pattern(held);
  EXPECT_EQ(weekly->put_Interval(1), S_OK);  // as it is
  auto other = appointment();
  auto daily = pattern(other);
  EXPECT_EQ(daily->put_RecurrenceType(olRecursDaily), S_OK);
  ASSERT_EQ(other->Save(), S_OK);
  move(date(2005, 3, 15), date(2005, 3, 15, 11));
  ASSERT_EQ(held->Save(), S_OK);  // Mondays again
  EXPECT_EQ(device_.only("appointments").at("Exceptions"), Json::array());
  expectTheSameAgain();
}

}  // namespace
}  // namespace emulator::test
