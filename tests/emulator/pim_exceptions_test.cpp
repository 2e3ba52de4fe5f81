// Occurrences of a series: reached by their day, changed, moved, deleted, and listed as exceptions.
#include "tests/emulator/pim_test.h"

namespace emulator {
namespace {

using test::date;

class SeriesOccurrence : public test::PimTest {
 protected:
  SeriesOccurrence() : series_(savedSeries(5)), weekly_(pattern(series_)) {}

  ComReference<IAppointment> on(double day) { return occurrence(weekly_, day); }

  /// Moves the occurrence of a day and gives the result of its save.
  HRESULT move(double day, double start) {
    auto moved = on(day);
    EXPECT_EQ(moved->put_Start(start), S_OK);
    return moved->Save();
  }

  ComReference<IException> exceptionAt(int index) {
    auto all = exceptions(weekly_);
    ComReference<IException> result;
    EXPECT_EQ(all->Item(index, result.out()), S_OK);
    return result;
  }

  ComReference<IAppointment> appointmentOf(ComReference<IException>& exception) {
    ComReference<IAppointment> result;
    EXPECT_EQ(exception->get_AppointmentItem(result.out()), S_OK);
    return result;
  }

  // Mondays, 9:00 to 10:00.
  const double first_ = date(2005, 3, 14);
  const double second_ = date(2005, 3, 21);
  const double third_ = date(2005, 3, 28);
  ComReference<IAppointment> series_;
  ComReference<IRecurrencePattern> weekly_;
};

TEST_F(SeriesOccurrence, isReachedByItsDay) {
  auto found = on(second_);
  ASSERT_TRUE(found);
  EXPECT_DOUBLE_EQ(moment(found, &IAppointment::get_Start), second_ + 9.0 / 24);
  EXPECT_DOUBLE_EQ(moment(found, &IAppointment::get_End), second_ + 10.0 / 24);
  EXPECT_EQ(text(found, &IAppointment::get_Subject), u"Standup");
  EXPECT_TRUE(on(second_ + 0.9));  // the time of day does not count
  EXPECT_FALSE(on(second_ + 1));
  EXPECT_FALSE(on(date(2005, 3, 7)));   // before the series
  EXPECT_FALSE(on(date(2005, 4, 18)));  // after its five occurrences
}

TEST_F(SeriesOccurrence, isNoneOfAnItemThatWasNeverSavedAsASeries) {
  auto single = savedAppointment(date(2005, 3, 14, 9));
  auto unsaved = pattern(single);
  EXPECT_FALSE(occurrence(unsaved, date(2005, 3, 14)));
  auto fresh = newAppointment();
  auto neverSaved = pattern(fresh);
  EXPECT_FALSE(occurrence(neverSaved, date(2005, 3, 14)));
}

TEST_F(SeriesOccurrence, becomesAnExceptionWhenItIsSaved) {
  auto changed = on(second_);
  EXPECT_EQ(put(changed, &IAppointment::put_Subject, u"Late"), S_OK);
  EXPECT_EQ(changed->put_Start(second_ + 11.0 / 24), S_OK);
  auto all = exceptions(weekly_);
  EXPECT_EQ(count(all), 0);
  ASSERT_EQ(changed->Save(), S_OK);
  EXPECT_EQ(count(all), 1);  // the collection was made before

  auto exception = exceptionAt(1);
  EXPECT_EQ(moment(exception, &IException::get_OriginalDate), second_);
  EXPECT_EQ(flag(exception, &IException::get_Deleted), VARIANT_FALSE);
  auto appointment = appointmentOf(exception);
  EXPECT_EQ(text(appointment, &IAppointment::get_Subject), u"Late");
  EXPECT_DOUBLE_EQ(moment(appointment, &IAppointment::get_Start), second_ + 11.0 / 24);
  EXPECT_DOUBLE_EQ(moment(appointment, &IAppointment::get_End), second_ + 12.0 / 24);

  // The series is as it was.
  auto again = find<IAppointment>(number(series_, &IAppointment::get_Oid));
  EXPECT_EQ(text(again, &IAppointment::get_Subject), u"Standup");
  EXPECT_DOUBLE_EQ(moment(again, &IAppointment::get_Start), first_ + 9.0 / 24);
}

TEST_F(SeriesOccurrence, isChangedAgainThroughItsException) {
  auto changed = on(second_);
  put(changed, &IAppointment::put_Subject, u"Late");
  ASSERT_EQ(changed->Save(), S_OK);
  auto again = on(second_);
  ASSERT_TRUE(again);
  EXPECT_EQ(text(again, &IAppointment::get_Subject), u"Late");
  put(again, &IAppointment::put_Location, u"Room 2");
  ASSERT_EQ(again->Save(), S_OK);
  auto all = exceptions(weekly_);
  EXPECT_EQ(count(all), 1);
  auto exception = exceptionAt(1);
  auto appointment = appointmentOf(exception);
  EXPECT_EQ(text(appointment, &IAppointment::get_Subject), u"Late");
  EXPECT_EQ(text(appointment, &IAppointment::get_Location), u"Room 2");
}

TEST_F(SeriesOccurrence, followsItsSeriesInWhatItDoesNotSayItself) {
  auto changed = on(second_);
  put(changed, &IAppointment::put_Location, u"Room 2");
  ASSERT_EQ(changed->Save(), S_OK);
  put(series_, &IAppointment::put_Subject, u"Weekly");
  put(series_, &IAppointment::put_Location, u"Room 1");
  ASSERT_EQ(series_->Save(), S_OK);
  auto again = on(second_);
  EXPECT_EQ(text(again, &IAppointment::get_Subject), u"Weekly");
  EXPECT_EQ(text(again, &IAppointment::get_Location), u"Room 2");
}

TEST_F(SeriesOccurrence, keepsWhatItSaysItselfThoughItsSeriesSaidTheSameForAWhile) {
  auto changed = on(second_);
  put(changed, &IAppointment::put_Location, u"Room 2");
  ASSERT_EQ(changed->Save(), S_OK);
  for (const char16_t* room : {u"Room 2", u"Room 3"}) {
    put(series_, &IAppointment::put_Location, room);
    ASSERT_EQ(series_->Save(), S_OK);
  }
  auto again = on(second_);
  EXPECT_EQ(text(again, &IAppointment::get_Location), u"Room 2");
}

TEST_F(SeriesOccurrence, thatWasDeletedIsAnExceptionWithoutAnAppointment) {
  ASSERT_EQ(on(second_)->Delete(), S_OK);
  EXPECT_FALSE(on(second_));
  auto exception = exceptionAt(1);
  EXPECT_EQ(moment(exception, &IException::get_OriginalDate), second_);
  EXPECT_EQ(flag(exception, &IException::get_Deleted), VARIANT_TRUE);
  auto* appointment = reinterpret_cast<IAppointment*>(1);
  EXPECT_EQ(exception->get_AppointmentItem(&appointment), E_FAIL);
  EXPECT_EQ(appointment, nullptr);
  EXPECT_EQ(items().count(ObjectKind::Appointment), 1);
}

TEST_F(SeriesOccurrence, thatWasDeletedCannotBeSavedByThoseWhoStillHoldIt) {
  auto held = on(second_);
  ASSERT_EQ(on(second_)->Delete(), S_OK);
  BSTR subject = reinterpret_cast<BSTR>(1);
  EXPECT_EQ(held->get_Subject(&subject), E_FAIL);
  EXPECT_EQ(held->Save(), E_FAIL);
}

TEST_F(SeriesOccurrence, thatWasMovedToAnotherDayIsReachedThroughTheExceptionsOnly) {
  ASSERT_EQ(move(second_, second_ + 1.5), S_OK);
  EXPECT_FALSE(on(second_));
  EXPECT_FALSE(on(second_ + 1));
  auto exception = exceptionAt(1);
  EXPECT_EQ(moment(exception, &IException::get_OriginalDate), second_);
  auto moved = appointmentOf(exception);
  EXPECT_DOUBLE_EQ(moment(moved, &IAppointment::get_Start), second_ + 1.5);
  EXPECT_EQ(moved->put_Start(second_ + 9.0 / 24), S_OK);
  ASSERT_EQ(moved->Save(), S_OK);
  EXPECT_TRUE(on(second_));
  EXPECT_EQ(moved->Delete(), S_OK);
  EXPECT_FALSE(on(second_));
}

TEST_F(SeriesOccurrence, cannotShareItsDayWithAnotherException) {
  ASSERT_EQ(move(third_, third_ - 2), S_OK);
  EXPECT_EQ(move(second_, third_ - 1.9), E_EXCEPTIONSAMEDAY);
  EXPECT_TRUE(on(second_));
  auto all = exceptions(weekly_);
  EXPECT_EQ(count(all), 1);
}

TEST_F(SeriesOccurrence, cannotGoPastItsNeighbours) {
  EXPECT_EQ(move(second_, third_ + 1), E_OVERLAPPINGEXCEPTION);
  EXPECT_EQ(move(second_, first_ - 1), E_OVERLAPPINGEXCEPTION);
  EXPECT_EQ(move(second_, third_ - 1), S_OK);
  EXPECT_EQ(move(first_, first_ - 30), S_OK);  // there is nothing before the first
  EXPECT_EQ(E_OVERLAPPINGEXCEPTION, static_cast<HRESULT>(0x8004006A));
  EXPECT_EQ(E_EXCEPTIONSAMEDAY, static_cast<HRESULT>(0x8004006C));
}

TEST_F(SeriesOccurrence, goesPastADeletedNeighbour) {
  ASSERT_EQ(on(third_)->Delete(), S_OK);
  EXPECT_EQ(move(second_, third_ + 1), S_OK);
}

TEST_F(SeriesOccurrence, spansWholeDaysWhenItIsMadeAllDay) {
  auto changed = on(second_);
  EXPECT_EQ(changed->put_AllDayEvent(VARIANT_TRUE), S_OK);
  ASSERT_EQ(changed->Save(), S_OK);
  EXPECT_EQ(moment(changed, &IAppointment::get_Start), second_);
  EXPECT_EQ(moment(changed, &IAppointment::get_End), second_ + 1);
}

TEST_F(SeriesOccurrence, refusesAReminderBefore1900) {
  auto series = savedAppointment(date(1900, 1, 1, 0, 5));
  pattern(series);
  ASSERT_EQ(series->Save(), S_OK);
  auto weekly = pattern(series);
  auto changed = occurrence(weekly, date(1900, 1, 1));
  ASSERT_TRUE(changed);
  EXPECT_EQ(changed->put_ReminderSet(VARIANT_TRUE), S_OK);
  EXPECT_EQ(changed->Save(), E_INVALIDREMINDERTIME);
}

TEST_F(SeriesOccurrence, isListedByItsOriginalDay) {
  ASSERT_EQ(on(third_)->Delete(), S_OK);
  ASSERT_EQ(move(first_, first_ + 2), S_OK);
  ASSERT_EQ(on(second_)->Delete(), S_OK);
  std::vector<double> days;
  for (int i = 1; i <= 3; ++i) {
    auto exception = exceptionAt(i);
    days.push_back(moment(exception, &IException::get_OriginalDate));
  }
  EXPECT_EQ(days, (std::vector<double>{first_, second_, third_}));
  auto all = exceptions(weekly_);
  for (const int index : {0, 4, -1}) {
    auto* exception = reinterpret_cast<IException*>(1);
    EXPECT_EQ(all->Item(index, &exception), E_INVALIDARG);
    EXPECT_EQ(exception, nullptr);
  }
}

TEST_F(SeriesOccurrence, goesWithItsSeries) {
  ASSERT_EQ(on(second_)->Delete(), S_OK);
  const auto rows = [&] {
    Cursor row = store_->connection().query("SELECT COUNT(*) FROM series_exception");
    row.next();
    return row.get<int>(0);
  };
  EXPECT_EQ(rows(), 1);
  EXPECT_EQ(series_->Delete(), S_OK);
  EXPECT_EQ(rows(), 0);
  EXPECT_FALSE(on(first_));
}

TEST_F(SeriesOccurrence, changesItsSeriesForTheChangeRecorder) {
  std::vector<ItemChange> changes;
  items().setListener([&](const ItemChange& change) { changes.push_back(change); });
  ASSERT_EQ(move(second_, second_ + 1), S_OK);
  ASSERT_EQ(on(third_)->Delete(), S_OK);
  ASSERT_EQ(changes.size(), 2u);
  for (const ItemChange& change : changes) {
    EXPECT_EQ(change.change, ItemChangeKind::Changed);
    EXPECT_EQ(static_cast<LONG>(change.oid), number(series_, &IAppointment::get_Oid));
  }
}

}  // namespace
}  // namespace emulator
