// The recurrence pattern: what a fresh one says, how it ends, and which puts drop the exceptions.
#include "tests/emulator/pim_test.h"

namespace emulator {
namespace {

using test::date;
using Pattern = IRecurrencePattern;

class RecurrencePattern : public test::PimTest {
 protected:
  /// A series of five Mondays whose second occurrence was deleted.
  ComReference<IAppointment> seriesWithException() {
    auto series = savedSeries(5);
    auto weekly = pattern(series);
    EXPECT_EQ(occurrence(weekly, date(2005, 3, 21))->Delete(), S_OK);
    return series;
  }

  /// Whether the exception is still there after a put and a save.
  bool keepsException(const std::function<HRESULT(IRecurrencePattern&)>& put) {
    auto series = seriesWithException();
    auto weekly = pattern(series);
    EXPECT_EQ(put(*weekly.get()), S_OK);
    auto held = exceptions(weekly);
    const bool keptBefore = count(held) == 1;
    EXPECT_EQ(series->Save(), S_OK);
    auto again = find<IAppointment>(number(series, &IAppointment::get_Oid));
    auto weeklyAgain = pattern(again);
    auto stored = exceptions(weeklyAgain);
    EXPECT_EQ(keptBefore, count(stored) == 1);
    return count(stored) == 1;
  }
};

TEST_F(RecurrencePattern, beginsWeeklyOnTheDayOfTheStartForEver) {
  auto appointment = savedAppointment(date(2005, 3, 16, 9, 30));  // a Wednesday
  auto fresh = pattern(appointment);
  EXPECT_EQ(number(fresh, &Pattern::get_RecurrenceType), olRecursWeekly);
  EXPECT_EQ(number(fresh, &Pattern::get_Interval), 1);
  EXPECT_EQ(number(fresh, &Pattern::get_DayOfWeekMask), 8);
  EXPECT_EQ(moment(fresh, &Pattern::get_PatternStartDate), date(2005, 3, 16));
  EXPECT_EQ(flag(fresh, &Pattern::get_NoEndDate), VARIANT_TRUE);
  EXPECT_EQ(moment(fresh, &Pattern::get_PatternEndDate), kNoDate);
  EXPECT_EQ(number(fresh, &Pattern::get_Occurrences), 0);
  EXPECT_DOUBLE_EQ(moment(fresh, &Pattern::get_StartTime), 9.5 / 24);
  EXPECT_NEAR(moment(fresh, &Pattern::get_EndTime), 10.5 / 24, 1e-8);
  EXPECT_EQ(number(fresh, &Pattern::get_Duration), 60);
}

TEST_F(RecurrencePattern, makesItsItemRecurOnceItIsSaved) {
  auto appointment = savedAppointment(date(2005, 3, 16));
  const LONG oid = number(appointment, &IAppointment::get_Oid);
  EXPECT_EQ(flag(appointment, &IAppointment::get_IsRecurring), VARIANT_FALSE);
  pattern(appointment);
  auto other = find<IAppointment>(oid);
  EXPECT_EQ(flag(other, &IAppointment::get_IsRecurring), VARIANT_FALSE);
  EXPECT_EQ(appointment->Save(), S_OK);
  auto again = find<IAppointment>(oid);
  EXPECT_EQ(flag(again, &IAppointment::get_IsRecurring), VARIANT_TRUE);
}

TEST_F(RecurrencePattern, canBeSetBeforeTheItemsFirstSave) {
  auto appointment = newAppointment();
  auto daily = pattern(appointment);
  EXPECT_EQ(daily->put_RecurrenceType(olRecursDaily), S_OK);
  EXPECT_EQ(daily->put_Occurrences(3), S_OK);
  ASSERT_EQ(appointment->Save(), S_OK);
  auto again = find<IAppointment>(number(appointment, &IAppointment::get_Oid));
  auto stored = pattern(again);
  EXPECT_EQ(number(stored, &Pattern::get_RecurrenceType), olRecursDaily);
  EXPECT_EQ(number(stored, &Pattern::get_Occurrences), 3);
}

TEST_F(RecurrencePattern, keepsEveryParameter) {
  auto appointment = savedAppointment(date(2005, 3, 14));
  auto yearly = pattern(appointment);
  EXPECT_EQ(yearly->put_RecurrenceType(olRecursYearNth), S_OK);
  EXPECT_EQ(yearly->put_MonthOfYear(11), S_OK);
  EXPECT_EQ(yearly->put_Instance(4), S_OK);
  EXPECT_EQ(yearly->put_DayOfWeekMask(16), S_OK);
  EXPECT_EQ(yearly->put_Interval(2), S_OK);
  EXPECT_EQ(yearly->put_PatternStartDate(date(2005, 11, 1, 13)), S_OK);
  EXPECT_EQ(yearly->put_NoEndDate(VARIANT_TRUE), S_OK);
  ASSERT_EQ(appointment->Save(), S_OK);
  auto again = find<IAppointment>(number(appointment, &IAppointment::get_Oid));
  auto stored = pattern(again);
  EXPECT_EQ(number(stored, &Pattern::get_RecurrenceType), olRecursYearNth);
  EXPECT_EQ(number(stored, &Pattern::get_MonthOfYear), 11);
  EXPECT_EQ(number(stored, &Pattern::get_Instance), 4);
  EXPECT_EQ(number(stored, &Pattern::get_DayOfWeekMask), 16);
  EXPECT_EQ(number(stored, &Pattern::get_Interval), 2);
  EXPECT_EQ(moment(stored, &Pattern::get_PatternStartDate), date(2005, 11, 1));
  EXPECT_EQ(flag(stored, &Pattern::get_NoEndDate), VARIANT_TRUE);
}

TEST_F(RecurrencePattern, takesTheParametersOfANewTypeFromItsStart) {
  auto appointment = savedAppointment(date(2005, 3, 29));  // the fifth Tuesday
  auto changed = pattern(appointment);
  EXPECT_EQ(changed->put_Interval(4), S_OK);
  EXPECT_EQ(changed->put_RecurrenceType(olRecursYearNth), S_OK);
  EXPECT_EQ(number(changed, &Pattern::get_DayOfWeekMask), 4);
  EXPECT_EQ(number(changed, &Pattern::get_Instance), 5);
  EXPECT_EQ(number(changed, &Pattern::get_MonthOfYear), 3);
  EXPECT_EQ(number(changed, &Pattern::get_Interval), 1);
  EXPECT_EQ(changed->put_RecurrenceType(olRecursMonthly), S_OK);
  EXPECT_EQ(number(changed, &Pattern::get_DayOfMonth), 29);
}

TEST_F(RecurrencePattern, computesTheEndDateOfACount) {
  auto series = savedSeries(5);
  auto weekly = pattern(series);
  EXPECT_EQ(flag(weekly, &Pattern::get_NoEndDate), VARIANT_FALSE);
  EXPECT_EQ(number(weekly, &Pattern::get_Occurrences), 5);
  EXPECT_EQ(moment(weekly, &Pattern::get_PatternEndDate), date(2005, 4, 11));
}

TEST_F(RecurrencePattern, keepsACountThatTheCalendarCutsShort) {
  auto appointment = savedAppointment(date(2999, 12, 29, 9));
  auto daily = pattern(appointment);
  EXPECT_EQ(daily->put_RecurrenceType(olRecursDaily), S_OK);
  EXPECT_EQ(daily->put_Occurrences(999), S_OK);
  ASSERT_EQ(appointment->Save(), S_OK);
  auto again = find<IAppointment>(number(appointment, &IAppointment::get_Oid));
  auto stored = pattern(again);
  EXPECT_EQ(number(stored, &Pattern::get_Occurrences), 999);
  EXPECT_EQ(moment(stored, &Pattern::get_PatternEndDate), date(2999, 12, 31));
}

TEST_F(RecurrencePattern, computesTheCountOfAnEndDate) {
  auto appointment = savedAppointment(date(2005, 3, 14, 9));
  auto weekly = pattern(appointment);
  EXPECT_EQ(weekly->put_PatternEndDate(date(2005, 4, 15, 23, 59)), S_OK);
  ASSERT_EQ(appointment->Save(), S_OK);
  auto again = find<IAppointment>(number(appointment, &IAppointment::get_Oid));
  auto stored = pattern(again);
  EXPECT_EQ(flag(stored, &Pattern::get_NoEndDate), VARIANT_FALSE);
  EXPECT_EQ(number(stored, &Pattern::get_Occurrences), 5);
  EXPECT_EQ(moment(stored, &Pattern::get_PatternEndDate), date(2005, 4, 15));
}

TEST_F(RecurrencePattern, turnsItsEndOnAndOff) {
  auto series = savedSeries(5);
  auto weekly = pattern(series);
  EXPECT_EQ(weekly->put_NoEndDate(VARIANT_TRUE), S_OK);
  EXPECT_EQ(moment(weekly, &Pattern::get_PatternEndDate), kNoDate);
  EXPECT_EQ(weekly->put_NoEndDate(VARIANT_FALSE), S_OK);
  EXPECT_EQ(number(weekly, &Pattern::get_Occurrences), 10);
  EXPECT_EQ(weekly->put_PatternEndDate(date(2005, 3, 28)), S_OK);
  EXPECT_EQ(number(weekly, &Pattern::get_Occurrences), 3);
  EXPECT_EQ(weekly->put_NoEndDate(VARIANT_FALSE), S_OK);
  EXPECT_EQ(number(weekly, &Pattern::get_Occurrences), 3);
}

TEST_F(RecurrencePattern, refusesValuesOutOfRange) {
  auto series = savedSeries(5);
  auto weekly = pattern(series);
  for (const LONG type : {-1, 4, 7}) EXPECT_EQ(weekly->put_RecurrenceType(type), E_INVALIDARG);
  for (const LONG day : {0, 32}) EXPECT_EQ(weekly->put_DayOfMonth(day), E_INVALIDARG);
  for (const LONG instance : {0, 6}) EXPECT_EQ(weekly->put_Instance(instance), E_INVALIDARG);
  for (const LONG month : {0, 13}) EXPECT_EQ(weekly->put_MonthOfYear(month), E_INVALIDARG);
  for (const LONG mask : {0, 128}) EXPECT_EQ(weekly->put_DayOfWeekMask(mask), E_INVALIDARG);
  for (const LONG interval : {0, -1}) EXPECT_EQ(weekly->put_Interval(interval), E_INVALIDARG);
  for (const LONG occurrences : {0, -1}) EXPECT_EQ(weekly->put_Occurrences(occurrences), E_INVALIDARG);
  for (const double day : {1.5, 401769.0, kNoDate}) {
    EXPECT_EQ(weekly->put_PatternStartDate(day), E_INVALIDARG);
    EXPECT_EQ(weekly->put_PatternEndDate(day), E_INVALIDARG);
  }
  EXPECT_EQ(weekly->put_Interval(1000000), S_OK);
  EXPECT_EQ(number(weekly, &Pattern::get_Interval), 1000000);
}

TEST_F(RecurrencePattern, movesTheTimesOfItsItem) {
  auto series = savedSeries(5);
  auto weekly = pattern(series);
  EXPECT_EQ(weekly->put_StartTime(0.5), S_OK);
  EXPECT_DOUBLE_EQ(moment(series, &IAppointment::get_Start), date(2005, 3, 14, 12));
  EXPECT_DOUBLE_EQ(moment(series, &IAppointment::get_End), date(2005, 3, 14, 13));
  EXPECT_EQ(weekly->put_EndTime(date(2005, 9, 9, 14)), S_OK);  // only the time of day counts
  EXPECT_DOUBLE_EQ(moment(series, &IAppointment::get_End), date(2005, 3, 14, 14));
  EXPECT_EQ(weekly->put_EndTime(1.0 / 24), S_OK);
  EXPECT_DOUBLE_EQ(moment(series, &IAppointment::get_End), date(2005, 3, 15, 1));
  EXPECT_EQ(weekly->put_Duration(30), S_OK);
  EXPECT_DOUBLE_EQ(moment(series, &IAppointment::get_End), date(2005, 3, 14, 12, 30));
}

TEST_F(RecurrencePattern, isSharedByThePatternsOfOneItemObject) {
  auto series = savedSeries(5);
  auto one = pattern(series);
  auto other = pattern(series);
  EXPECT_EQ(one->put_Interval(3), S_OK);
  EXPECT_EQ(number(other, &Pattern::get_Interval), 3);
}

TEST_F(RecurrencePattern, isClearedWithItsExceptions) {
  auto series = seriesWithException();
  const LONG oid = number(series, &IAppointment::get_Oid);
  auto weekly = pattern(series);
  EXPECT_EQ(series->ClearRecurrencePattern(), S_OK);
  EXPECT_EQ(flag(series, &IAppointment::get_IsRecurring), VARIANT_FALSE);
  LONG type = test::kPoisonNumber;
  EXPECT_EQ(weekly->get_RecurrenceType(&type), E_FAIL);
  EXPECT_EQ(series->Save(), S_OK);
  EXPECT_EQ(series->ClearRecurrencePattern(), S_OK);  // of a single item
  auto again = find<IAppointment>(oid);
  auto fresh = pattern(again);
  auto none = exceptions(fresh);
  EXPECT_EQ(count(none), 0);
}

TEST_F(RecurrencePattern, keepsItsExceptionsWhenAnEqualValueIsPut) {
  EXPECT_TRUE(keepsException([](Pattern& weekly) { return weekly.put_RecurrenceType(olRecursWeekly); }));
  EXPECT_TRUE(keepsException([](Pattern& weekly) { return weekly.put_DayOfWeekMask(2); }));
  EXPECT_TRUE(keepsException([](Pattern& weekly) { return weekly.put_Interval(1); }));
  EXPECT_TRUE(
      keepsException([](Pattern& weekly) { return weekly.put_PatternStartDate(date(2005, 3, 14, 5)); }));
  EXPECT_TRUE(keepsException([](Pattern& weekly) { return weekly.put_Occurrences(5); }));
  EXPECT_TRUE(
      keepsException([](Pattern& weekly) { return weekly.put_PatternEndDate(date(2005, 4, 11, 23)); }));
  EXPECT_TRUE(keepsException([](Pattern& weekly) { return weekly.put_NoEndDate(VARIANT_FALSE); }));
  EXPECT_TRUE(keepsException([](Pattern& weekly) { return weekly.put_StartTime(9.0 / 24); }));
  EXPECT_TRUE(keepsException([](Pattern& weekly) { return weekly.put_Duration(60); }));
  // A parameter that the type does not use.
  EXPECT_TRUE(keepsException([](Pattern& weekly) { return weekly.put_DayOfMonth(3); }));
}

TEST_F(RecurrencePattern, dropsItsExceptionsWhenAnotherValueIsPut) {
  EXPECT_FALSE(keepsException([](Pattern& weekly) { return weekly.put_RecurrenceType(olRecursDaily); }));
  EXPECT_FALSE(keepsException([](Pattern& weekly) { return weekly.put_DayOfWeekMask(6); }));
  EXPECT_FALSE(keepsException([](Pattern& weekly) { return weekly.put_Interval(2); }));
  EXPECT_FALSE(
      keepsException([](Pattern& weekly) { return weekly.put_PatternStartDate(date(2005, 3, 15)); }));
  EXPECT_FALSE(keepsException([](Pattern& weekly) { return weekly.put_Occurrences(6); }));
  EXPECT_FALSE(keepsException([](Pattern& weekly) { return weekly.put_PatternEndDate(date(2005, 4, 12)); }));
  EXPECT_FALSE(keepsException([](Pattern& weekly) { return weekly.put_NoEndDate(VARIANT_TRUE); }));
  EXPECT_FALSE(keepsException([](Pattern& weekly) { return weekly.put_StartTime(0.5); }));
}

}  // namespace
}  // namespace emulator
