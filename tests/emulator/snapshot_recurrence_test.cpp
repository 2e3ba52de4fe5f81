#include "tests/emulator/snapshot_device.h"

namespace emulator::test {
namespace {

/// An appointment on Monday 2005-03-14, 9:00 to 10:00, with what is added.
std::string appointment(const std::string& more) {
  return R"({"appointments": [{"Oid": 18, "Subject": "Standup", "Start": "2005-03-14T09:00:00.000",
                               "End": "2005-03-14T10:00:00.000", )" +
         more + "}]}";
}

std::string change(const std::string& more) {
  return R"({"appointments": [{"Oid": 18, )" + more + "}]}";
}

Json parsed(const char* text) {
  return Json::parse(text);
}

TEST(SnapshotRecurrence, isThatOfAFreshPatternWhereNothingIsGiven) {
  SnapshotDevice device;
  device.load(appointment(R"("Recurrence": {})"));
  EXPECT_EQ(device.only("appointments")["Recurrence"],
            parsed(R"({"RecurrenceType": 1, "PatternStartDate": "2005-03-14T00:00:00.000", "Interval": 1,
                       "DayOfWeekMask": 2, "NoEndDate": true})"));
  EXPECT_EQ(device.only("appointments")["Exceptions"], Json::array());
}

TEST(SnapshotRecurrence, hasTheParametersOfItsType) {
  const char* patterns[] = {
      R"({"RecurrenceType": 0, "PatternStartDate": "2005-03-15T00:00:00.000", "Interval": 3, "Occurrences": 4})",
      R"({"RecurrenceType": 1, "PatternStartDate": "2005-03-15T00:00:00.000", "Interval": 2, "DayOfWeekMask": 42,
          "PatternEndDate": "2005-12-31T00:00:00.000"})",
      R"({"RecurrenceType": 2, "PatternStartDate": "2005-03-15T00:00:00.000", "Interval": 1, "DayOfMonth": 31,
          "NoEndDate": true})",
      R"({"RecurrenceType": 3, "PatternStartDate": "2005-03-15T00:00:00.000", "Interval": 1, "DayOfWeekMask": 2,
          "Instance": 5, "NoEndDate": true})",
      R"({"RecurrenceType": 5, "PatternStartDate": "2005-03-15T00:00:00.000", "Interval": 1, "DayOfMonth": 29,
          "MonthOfYear": 2, "Occurrences": 999})",
      R"({"RecurrenceType": 6, "PatternStartDate": "2005-03-15T00:00:00.000", "Interval": 1, "DayOfWeekMask": 64,
          "Instance": 2, "MonthOfYear": 11, "NoEndDate": true})",
  };
  for (const char* pattern : patterns) {
    SnapshotDevice device;
    device.load(appointment(std::string(R"("Recurrence": )") + pattern));
    EXPECT_EQ(device.only("appointments")["Recurrence"], parsed(pattern));
    const std::string dump = device.dumpText();
    EXPECT_EQ(reload(dump), dump);
  }
}

TEST(SnapshotRecurrence, takesTheParametersOfAFreshPatternFromItsStart) {
  SnapshotDevice device;
  // 2005-03-15 is the third Tuesday of March.
  device.load(
      appointment(R"("Recurrence": {"RecurrenceType": 6, "PatternStartDate": "2005-03-15T00:00:00.000"})"));
  EXPECT_EQ(device.only("appointments")["Recurrence"],
            parsed(R"({"RecurrenceType": 6, "PatternStartDate": "2005-03-15T00:00:00.000", "Interval": 1,
                       "DayOfWeekMask": 4, "Instance": 3, "MonthOfYear": 3, "NoEndDate": true})"));
}

TEST(SnapshotRecurrence, endsAfterOccurrencesRatherThanOnADateRatherThanNever) {
  SnapshotDevice device;
  device.load(
      appointment(R"("Recurrence": {"PatternEndDate": "2005-12-31T00:00:00.000", "Occurrences": 3})"));
  EXPECT_EQ(device.only("appointments")["Recurrence"]["Occurrences"], 3);
  EXPECT_FALSE(device.only("appointments")["Recurrence"].contains("PatternEndDate"));
  device.load(change(R"("Recurrence": {"NoEndDate": false, "PatternEndDate": "2005-12-31T00:00:00.000"})"));
  EXPECT_EQ(device.only("appointments")["Recurrence"]["PatternEndDate"], "2005-12-31T00:00:00.000");
  device.load(change(R"("Recurrence": {"NoEndDate": null, "PatternEndDate": null, "Occurrences": null})"));
  EXPECT_EQ(device.only("appointments")["Recurrence"]["NoEndDate"], true);
}

TEST(SnapshotRecurrence, isKeptWhenAbsentAndClearedByNull) {
  SnapshotDevice device;
  device.load(appointment(R"("Recurrence": {}, "Exceptions": [{"OriginalDate": "2005-03-21T00:00:00.000",
                                                               "Deleted": true}])"));
  device.load(change(R"("Subject": "Other")"));
  EXPECT_TRUE(device.only("appointments").contains("Recurrence"));
  EXPECT_EQ(device.only("appointments")["Exceptions"].size(), 1U);
  device.load(change(R"("Recurrence": null)"));
  EXPECT_FALSE(device.only("appointments").contains("Recurrence"));
  device.load(change(R"("Recurrence": {})"));
  EXPECT_EQ(device.only("appointments")["Exceptions"], Json::array());
}

TEST(SnapshotRecurrence, belongsToTasksToo) {
  SnapshotDevice device;
  device.load(
      R"({"tasks": [{"Oid": 19, "StartDate": "2005-03-16T00:00:00.000", "Recurrence": {"Occurrences": 5}}]})");
  // A Wednesday.
  EXPECT_EQ(device.only("tasks")["Recurrence"],
            parsed(R"({"RecurrenceType": 1, "PatternStartDate": "2005-03-16T00:00:00.000", "Interval": 1,
                       "DayOfWeekMask": 8, "Occurrences": 5})"));
  EXPECT_FALSE(device.only("tasks").contains("Exceptions"));
  const std::string dump = device.dumpText();
  EXPECT_EQ(reload(dump), dump);
}

constexpr const char* kExceptions = R"([
    {"OriginalDate": "2005-03-21T00:00:00.000", "Deleted": true},
    {"OriginalDate": "2005-03-28T00:00:00.000", "Deleted": false,
     "Appointment": {"Subject": "Late", "Start": "2005-03-29T10:00:00.000", "End": "2005-03-29T10:15:00.000",
                     "BusyStatus": 3, "ReminderSet": true, "ReminderMinutesBeforeStart": 5}}])";

TEST(SnapshotExceptions, sayWhatIsDifferentFromTheSeries) {
  SnapshotDevice device;
  device.load(appointment(std::string(R"("Recurrence": {}, "Exceptions": )") + kExceptions));
  EXPECT_EQ(device.only("appointments")["Exceptions"], parsed(kExceptions));
  const std::string dump = device.dumpText();
  EXPECT_EQ(reload(dump), dump);
}

TEST(SnapshotExceptions, haveWhatTheyDoNotSayFromTheSeries) {
  SnapshotDevice device;
  device.load(appointment(R"("Location": "Room", "Recurrence": {}, "Exceptions": [
      {"OriginalDate": "2005-03-21T00:00:00.000", "Appointment": {"Location": "Hall"}}])"));
  EXPECT_EQ(device.only("appointments")["Exceptions"],
            parsed(R"([{"OriginalDate": "2005-03-21T00:00:00.000", "Deleted": false,
                        "Appointment": {"Location": "Hall", "Start": "2005-03-21T09:00:00.000",
                                        "End": "2005-03-21T10:00:00.000"}}])"));
  // What the exception has from its series follows the series.
  device.load(change(R"("Subject": "Renamed")"));
  EXPECT_FALSE(device.only("appointments")["Exceptions"][0]["Appointment"].contains("Subject"));
}

TEST(SnapshotExceptions, keepTheLengthOfTheSeriesWhenOnlyTheStartIsGiven) {
  SnapshotDevice device;
  device.load(appointment(R"("Recurrence": {}, "Exceptions": [
      {"OriginalDate": "2005-03-21T00:00:00.000", "Appointment": {"Start": "2005-03-22T14:00:00.000"}}])"));
  EXPECT_EQ(device.only("appointments")["Exceptions"][0]["Appointment"]["End"], "2005-03-22T15:00:00.000");
}

TEST(SnapshotExceptions, areReplacedByAListAndKeptWithoutOne) {
  SnapshotDevice device;
  device.load(appointment(std::string(R"("Recurrence": {}, "Exceptions": )") + kExceptions));
  device.load(change(R"("Recurrence": {"RecurrenceType": 1}, "Subject": "Same pattern")"));
  EXPECT_EQ(device.only("appointments")["Exceptions"].size(), 2U);
  device.load(change(R"("Exceptions": [{"OriginalDate": "2005-04-04T00:00:00.000", "Deleted": true}])"));
  EXPECT_EQ(device.only("appointments")["Exceptions"],
            parsed(R"([{"OriginalDate": "2005-04-04T00:00:00.000", "Deleted": true}])"));
  device.load(change(R"("Exceptions": null)"));
  EXPECT_EQ(device.only("appointments")["Exceptions"], Json::array());
}

TEST(SnapshotExceptions, areDroppedByAnotherPattern) {
  SnapshotDevice device;
  device.load(appointment(std::string(R"("Recurrence": {}, "Exceptions": )") + kExceptions));
  device.load(change(R"("Recurrence": {"Interval": 2})"));
  EXPECT_EQ(device.only("appointments")["Exceptions"], Json::array());
}

TEST(SnapshotExceptions, stayMissingAnEndThatTheSeriesMisses) {
  SnapshotDevice device;
  device.load(R"({"appointments": [{"Oid": 18, "Start": "2005-03-14T09:00:00.000", "Recurrence": {},
                   "Exceptions": [{"OriginalDate": "2005-03-21T00:00:00.000", "Appointment": {"Subject": "s"}}]}]})");
  EXPECT_FALSE(device.only("appointments")["Exceptions"][0]["Appointment"].contains("End"));
  const std::string dump = device.dumpText();
  EXPECT_EQ(reload(dump), dump);
}

}  // namespace
}  // namespace emulator::test
