// Appointments: defaults, what puts do to each other, what Save does and refuses.
#include "tests/emulator/pim_test.h"

namespace emulator {
namespace {

using test::date;

class Appointment : public test::PimTest {
 protected:
  static void expectTimes(ComReference<IAppointment>& appointment, double start, double end) {
    EXPECT_DOUBLE_EQ(moment(appointment, &IAppointment::get_Start), start);
    EXPECT_DOUBLE_EQ(moment(appointment, &IAppointment::get_End), end);
  }
};

TEST_F(Appointment, beginsAtTheNextFullHourForAnHour) {
  auto appointment = newAppointment();
  expectTimes(appointment, date(2005, 3, 14, 11), date(2005, 3, 14, 12));
  EXPECT_EQ(number(appointment, &IAppointment::get_Duration), 60);
  now_ = date(2005, 3, 14, 23);
  auto late = newAppointment();
  expectTimes(late, date(2005, 3, 15, 0), date(2005, 3, 15, 1));
}

TEST_F(Appointment, beginsBusyAndWithoutAReminder) {
  auto appointment = newAppointment();
  EXPECT_EQ(number(appointment, &IAppointment::get_BusyStatus), olBusy);
  EXPECT_EQ(number(appointment, &IAppointment::get_Sensitivity), olNormal);
  EXPECT_EQ(number(appointment, &IAppointment::get_MeetingStatus), 0);
  EXPECT_EQ(number(appointment, &IAppointment::get_ReminderMinutesBeforeStart), 15);
  EXPECT_EQ(number(appointment, &IAppointment::get_ReminderOptions), 0);
  EXPECT_EQ(flag(appointment, &IAppointment::get_ReminderSet), VARIANT_FALSE);
  EXPECT_EQ(flag(appointment, &IAppointment::get_AllDayEvent), VARIANT_FALSE);
  EXPECT_EQ(flag(appointment, &IAppointment::get_IsRecurring), VARIANT_FALSE);
  EXPECT_EQ(text(appointment, &IAppointment::get_Subject), u"");
  EXPECT_EQ(text(appointment, &IAppointment::get_Body), u"");
}

TEST_F(Appointment, hasNoIdentifierBeforeItIsSaved) {
  auto appointment = newAppointment();
  EXPECT_EQ(number(appointment, &IAppointment::get_Oid), 0);
  EXPECT_EQ(items().count(ObjectKind::Appointment), 0);
  ASSERT_EQ(appointment->Save(), S_OK);
  EXPECT_NE(number(appointment, &IAppointment::get_Oid), 0);
  EXPECT_EQ(items().count(ObjectKind::Appointment), 1);
}

TEST_F(Appointment, keepsEveryPropertyThatWasPut) {
  auto appointment = newAppointment();
  EXPECT_EQ(put(appointment, &IAppointment::put_Subject, u"Standup \u65e5\u672c"), S_OK);
  EXPECT_EQ(put(appointment, &IAppointment::put_Location, u"Room 1"), S_OK);
  EXPECT_EQ(put(appointment, &IAppointment::put_Categories, u"Work, Daily"), S_OK);
  EXPECT_EQ(put(appointment, &IAppointment::put_Body, u"One lone surrogate: \xD83D."), S_OK);
  EXPECT_EQ(put(appointment, &IAppointment::put_ReminderSoundFile, u"\\Windows\\alarm.wav"), S_OK);
  EXPECT_EQ(appointment->put_Start(date(2005, 3, 15, 9)), S_OK);
  EXPECT_EQ(appointment->put_End(date(2005, 3, 15, 9, 15)), S_OK);
  EXPECT_EQ(appointment->put_BusyStatus(olOutOfOffice), S_OK);
  EXPECT_EQ(appointment->put_Sensitivity(olPrivate), S_OK);
  EXPECT_EQ(appointment->put_ReminderSet(1), S_OK);
  EXPECT_EQ(appointment->put_ReminderMinutesBeforeStart(30), S_OK);
  EXPECT_EQ(appointment->put_ReminderOptions(12), S_OK);
  ASSERT_EQ(appointment->Save(), S_OK);

  auto again = find<IAppointment>(number(appointment, &IAppointment::get_Oid));
  ASSERT_TRUE(again);
  EXPECT_EQ(text(again, &IAppointment::get_Subject), u"Standup \u65e5\u672c");
  EXPECT_EQ(text(again, &IAppointment::get_Location), u"Room 1");
  EXPECT_EQ(text(again, &IAppointment::get_Categories), u"Work, Daily");
  EXPECT_EQ(text(again, &IAppointment::get_Body), u"One lone surrogate: \xD83D.");
  EXPECT_EQ(text(again, &IAppointment::get_ReminderSoundFile), u"\\Windows\\alarm.wav");
  expectTimes(again, date(2005, 3, 15, 9), date(2005, 3, 15, 9, 15));
  EXPECT_EQ(number(again, &IAppointment::get_BusyStatus), olOutOfOffice);
  EXPECT_EQ(number(again, &IAppointment::get_Sensitivity), olPrivate);
  EXPECT_EQ(flag(again, &IAppointment::get_ReminderSet), VARIANT_TRUE);  // any non-zero flag is true
  EXPECT_EQ(number(again, &IAppointment::get_ReminderMinutesBeforeStart), 30);
  EXPECT_EQ(number(again, &IAppointment::get_ReminderOptions), 12);
}

TEST_F(Appointment, takesANullTextForAnEmptyOne) {
  auto appointment = savedAppointment(date(2005, 3, 14));
  EXPECT_EQ(appointment->put_Subject(nullptr), S_OK);
  EXPECT_EQ(text(appointment, &IAppointment::get_Subject), u"");
}

TEST_F(Appointment, keepsLongBodies) {
  const std::u16string body(100000, u'\u00e9');
  auto appointment = newAppointment();
  EXPECT_EQ(put(appointment, &IAppointment::put_Body, body), S_OK);
  ASSERT_EQ(appointment->Save(), S_OK);
  auto again = find<IAppointment>(number(appointment, &IAppointment::get_Oid));
  EXPECT_EQ(text(again, &IAppointment::get_Body), body);
}

TEST_F(Appointment, refusesTextsThatAreTooLong) {
  auto appointment = newAppointment();
  EXPECT_EQ(put(appointment, &IAppointment::put_Subject, std::u16string(4096, u'a')), S_OK);
  EXPECT_EQ(put(appointment, &IAppointment::put_Subject, std::u16string(4097, u'b')), E_FIELDTOOLARGE);
  EXPECT_EQ(text(appointment, &IAppointment::get_Subject), std::u16string(4096, u'a'));
  EXPECT_EQ(put(appointment, &IAppointment::put_Location, std::u16string(1023, u'a')), S_OK);
  EXPECT_EQ(put(appointment, &IAppointment::put_Location, std::u16string(1024, u'a')), E_FIELDTOOLARGE);
  EXPECT_EQ(put(appointment, &IAppointment::put_Categories, std::u16string(1024, u'a')), E_FIELDTOOLARGE);
}

TEST_F(Appointment, movesItsEndAlongWithItsStart) {
  auto appointment = newAppointment();
  EXPECT_EQ(appointment->put_Start(date(2005, 7, 1, 8, 20)), S_OK);
  expectTimes(appointment, date(2005, 7, 1, 8, 20), date(2005, 7, 1, 9, 20));
}

TEST_F(Appointment, movesItsStartWhenItsEndLiesBeforeIt) {
  auto appointment = newAppointment();
  EXPECT_EQ(appointment->put_Start(date(2005, 7, 1, 8)), S_OK);
  EXPECT_EQ(appointment->put_End(date(2005, 7, 1, 7)), S_OK);
  expectTimes(appointment, date(2005, 7, 1, 6), date(2005, 7, 1, 7));
  EXPECT_EQ(appointment->put_End(date(2005, 7, 1, 6)), S_OK);  // an end on the start moves nothing
  expectTimes(appointment, date(2005, 7, 1, 6), date(2005, 7, 1, 6));
}

TEST_F(Appointment, putsItsDurationAsItsEnd) {
  auto appointment = newAppointment();
  EXPECT_EQ(appointment->put_Start(date(2005, 7, 1, 8)), S_OK);
  EXPECT_EQ(appointment->put_Duration(90), S_OK);
  expectTimes(appointment, date(2005, 7, 1, 8), date(2005, 7, 1, 9, 30));
  EXPECT_EQ(appointment->put_Duration(31 * 1440), S_OK);
  EXPECT_EQ(appointment->put_Duration(31 * 1440 + 1), E_INVALIDARG);
  EXPECT_EQ(appointment->put_Duration(-1), E_INVALIDARG);
}

TEST_F(Appointment, refusesTimesOutsideTheCalendar) {
  auto appointment = newAppointment();
  for (const double wrong : {1.0, -5.0, 401769.0, kNoDate, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_EQ(appointment->put_Start(wrong), E_INVALIDARG) << wrong;
    EXPECT_EQ(appointment->put_End(wrong), E_INVALIDARG) << wrong;
  }
  expectTimes(appointment, date(2005, 3, 14, 11), date(2005, 3, 14, 12));
  EXPECT_EQ(appointment->put_Start(date(1900, 1, 1)), S_OK);
  EXPECT_EQ(appointment->put_Start(date(2999, 12, 31, 22)), S_OK);
}

TEST_F(Appointment, takesNoTimeAlongOutOfTheCalendar) {
  auto appointment = newAppointment();
  EXPECT_EQ(appointment->put_Start(date(2005, 7, 1, 8)), S_OK);
  EXPECT_EQ(appointment->put_Duration(120), S_OK);
  EXPECT_EQ(appointment->put_Start(date(2999, 12, 31, 22)), E_INVALIDARG);  // would end with 3000-01-01
  EXPECT_EQ(appointment->put_End(date(1900, 1, 1, 1)), E_INVALIDARG);       // would start in 1899
  expectTimes(appointment, date(2005, 7, 1, 8), date(2005, 7, 1, 10));
  EXPECT_EQ(appointment->put_End(date(1900, 1, 1, 2)), S_OK);
  expectTimes(appointment, date(1900, 1, 1), date(1900, 1, 1, 2));
  EXPECT_EQ(appointment->put_Start(date(2999, 12, 31, 21, 59)), S_OK);
}

TEST_F(Appointment, lastsThroughTheLastDayOnlyWhenItIsAllDay) {
  auto appointment = newAppointment();
  EXPECT_EQ(appointment->put_Start(date(2999, 12, 31, 9)), S_OK);
  EXPECT_EQ(appointment->put_End(date(3000, 1, 1)), E_INVALIDARG);
  EXPECT_EQ(appointment->put_AllDayEvent(VARIANT_TRUE), S_OK);
  ASSERT_EQ(appointment->Save(), S_OK);
  expectTimes(appointment, date(2999, 12, 31), date(3000, 1, 1));
  EXPECT_EQ(appointment->put_End(date(3000, 1, 1)), S_OK);
  EXPECT_EQ(appointment->put_End(date(3000, 1, 1, 0, 1)), E_INVALIDARG);
  EXPECT_EQ(appointment->put_AllDayEvent(VARIANT_FALSE), S_OK);
  EXPECT_EQ(appointment->Save(), E_INVALIDDATES);
}

TEST_F(Appointment, refusesAMillisecondPastTheCalendarAsWell) {
  auto appointment = newAppointment();
  // What rounds to the midnight after the last day lies on the day after it.
  EXPECT_EQ(appointment->put_End(date(3000, 1, 1) - 1e-9), E_INVALIDARG);
}

TEST_F(Appointment, spansWholeDaysFromItsSaveOnWhenItIsAllDay) {
  auto appointment = newAppointment();
  EXPECT_EQ(appointment->put_Start(date(2006, 5, 10, 9)), S_OK);
  EXPECT_EQ(appointment->put_End(date(2006, 5, 11, 10)), S_OK);
  EXPECT_EQ(appointment->put_AllDayEvent(VARIANT_TRUE), S_OK);
  expectTimes(appointment, date(2006, 5, 10, 9), date(2006, 5, 11, 10));
  ASSERT_EQ(appointment->Save(), S_OK);
  expectTimes(appointment, date(2006, 5, 10), date(2006, 5, 12));
}

TEST_F(Appointment, spansADayAtLeastWhenItIsAllDay) {
  auto appointment = newAppointment();
  EXPECT_EQ(appointment->put_Start(date(2006, 5, 10)), S_OK);
  EXPECT_EQ(appointment->put_End(date(2006, 5, 10)), S_OK);
  EXPECT_EQ(appointment->put_AllDayEvent(VARIANT_TRUE), S_OK);
  ASSERT_EQ(appointment->Save(), S_OK);
  expectTimes(appointment, date(2006, 5, 10), date(2006, 5, 11));
  ASSERT_EQ(appointment->Save(), S_OK);  // midnights that satisfy the rule stay
  expectTimes(appointment, date(2006, 5, 10), date(2006, 5, 11));
}

TEST_F(Appointment, refusesToBeSavedWithAReminderBefore1900) {
  auto appointment = newAppointment();
  EXPECT_EQ(appointment->put_Start(date(1900, 1, 1, 0, 10)), S_OK);
  EXPECT_EQ(appointment->put_ReminderMinutesBeforeStart(11), S_OK);
  EXPECT_EQ(appointment->put_ReminderSet(VARIANT_TRUE), S_OK);
  EXPECT_EQ(appointment->Save(), E_INVALIDREMINDERTIME);
  EXPECT_EQ(E_INVALIDREMINDERTIME, static_cast<HRESULT>(0x80040067));
  EXPECT_EQ(number(appointment, &IAppointment::get_Oid), 0);
  EXPECT_EQ(items().count(ObjectKind::Appointment), 0);
  EXPECT_EQ(appointment->put_ReminderMinutesBeforeStart(10), S_OK);
  EXPECT_EQ(appointment->Save(), S_OK);
}

TEST_F(Appointment, looksAtTheReminderOnlyWhenItIsSet) {
  auto appointment = newAppointment();
  EXPECT_EQ(appointment->put_Start(date(1900, 1, 1, 0, 10)), S_OK);
  EXPECT_EQ(appointment->Save(), S_OK);
}

TEST_F(Appointment, leavesTheStoredItemAloneWhenItRefusesToBeSaved) {
  auto appointment = savedAppointment(date(1900, 1, 1, 0, 10), u"before");
  EXPECT_EQ(put(appointment, &IAppointment::put_Subject, u"after"), S_OK);
  EXPECT_EQ(appointment->put_ReminderSet(VARIANT_TRUE), S_OK);
  EXPECT_EQ(appointment->Save(), E_INVALIDREMINDERTIME);
  auto again = find<IAppointment>(number(appointment, &IAppointment::get_Oid));
  EXPECT_EQ(text(again, &IAppointment::get_Subject), u"before");
}

TEST_F(Appointment, takesReminderMinutesUpToAYear) {
  auto appointment = newAppointment();
  EXPECT_EQ(appointment->put_ReminderMinutesBeforeStart(525600), S_OK);
  EXPECT_EQ(appointment->put_ReminderMinutesBeforeStart(525601), E_INVALIDARG);
  EXPECT_EQ(number(appointment, &IAppointment::get_ReminderMinutesBeforeStart), 525600);
  // A reminder after the start: only so does a caller that lowers a refused reminder step by step come to an
  // end.
  EXPECT_EQ(appointment->put_ReminderMinutesBeforeStart(-165), S_OK);
  EXPECT_EQ(number(appointment, &IAppointment::get_ReminderMinutesBeforeStart), -165);
}

TEST_F(Appointment, holdsItsPutsUntilItIsSaved) {
  auto appointment = savedAppointment(date(2005, 3, 14), u"before");
  const LONG oid = number(appointment, &IAppointment::get_Oid);
  EXPECT_EQ(put(appointment, &IAppointment::put_Subject, u"after"), S_OK);
  auto other = find<IAppointment>(oid);
  EXPECT_EQ(text(other, &IAppointment::get_Subject), u"before");
  EXPECT_EQ(appointment->Save(), S_OK);
  EXPECT_EQ(text(other, &IAppointment::get_Subject), u"before");
  auto third = find<IAppointment>(oid);
  EXPECT_EQ(text(third, &IAppointment::get_Subject), u"after");
}

TEST_F(Appointment, savesOnlyWhatWasPut) {
  auto appointment = savedAppointment(date(2005, 3, 14), u"subject");
  auto other = find<IAppointment>(number(appointment, &IAppointment::get_Oid));
  EXPECT_EQ(text(other, &IAppointment::get_Location), u"");
  EXPECT_EQ(put(appointment, &IAppointment::put_Subject, u"changed"), S_OK);
  EXPECT_EQ(appointment->Save(), S_OK);
  EXPECT_EQ(put(other, &IAppointment::put_Location, u"Room 1"), S_OK);
  EXPECT_EQ(other->Save(), S_OK);
  EXPECT_EQ(text(other, &IAppointment::get_Subject), u"changed");
}

TEST_F(Appointment, isGoneForEverOnceItIsDeleted) {
  auto appointment = savedAppointment(date(2005, 3, 14));
  const LONG oid = number(appointment, &IAppointment::get_Oid);
  auto other = find<IAppointment>(oid);
  EXPECT_EQ(appointment->Delete(), S_OK);
  EXPECT_FALSE(find<IAppointment>(oid));
  EXPECT_EQ(appointment->Save(), E_FAIL);
  EXPECT_EQ(appointment->Delete(), E_FAIL);
  BSTR subject = reinterpret_cast<BSTR>(1);
  EXPECT_EQ(other->get_Subject(&subject), E_FAIL);
  EXPECT_EQ(subject, nullptr);
  auto next = savedAppointment(date(2005, 3, 14));
  EXPECT_NE(number(next, &IAppointment::get_Oid), oid);
}

TEST_F(Appointment, refusesNullOutPointers) {
  auto appointment = newAppointment();
  EXPECT_EQ(appointment->get_Subject(nullptr), E_POINTER);
  EXPECT_EQ(appointment->get_Start(nullptr), E_POINTER);
  EXPECT_EQ(appointment->get_Duration(nullptr), E_POINTER);
  EXPECT_EQ(appointment->get_Oid(nullptr), E_POINTER);
  EXPECT_EQ(appointment->get_IsRecurring(nullptr), E_POINTER);
  EXPECT_EQ(appointment->GetRecurrencePattern(nullptr), E_POINTER);
  EXPECT_EQ(app_->CreateItem(olTaskItem, nullptr), E_POINTER);
}

}  // namespace
}  // namespace emulator
