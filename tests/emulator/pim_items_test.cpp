// Items as plain values: how the device's own programs save them, and what is heard of it.
#include "emulator/pim/occurrence.h"
#include "emulator/pim/recurrence_puts.h"
#include "tests/emulator/pim_test.h"

namespace emulator {
namespace {

using test::date;

constexpr std::size_t kSubject = appointmentProperty("Subject");

class Items : public test::PimTest {
 protected:
  Items() {
    items().setListener([this](const ItemChange& change) { changes_.push_back(change); });
  }

  /// Mondays from 2005-03-14 for ever, 9:00 to 10:00, under identifier 18.
  PimItem savedWeekly() {
    PimItem series(ObjectKind::Appointment);
    series.oid = 18;
    series.properties.set(kStart, date(2005, 3, 14, 9));
    series.properties.set(kEnd, date(2005, 3, 14, 10));
    setRule(series, freshRule(series.properties, [] { return 0.0; }));
    EXPECT_EQ(items().add(series), S_OK);
    return series;
  }

  static SeriesException moved(const PimItem& series, double originalDay, double start) {
    SeriesException exception{static_cast<Day>(originalDay), series.properties};
    exception.appointment->set(kStart, start);
    exception.appointment->set(kEnd, start + 1.0 / 24);
    return exception;
  }

  std::vector<ItemChange> changes_;
};

TEST_F(Items, beginWithTheirInitialValues) {
  const PimItem appointment(ObjectKind::Appointment);
  EXPECT_EQ(appointment.properties.get<double>(kStart), kNoDate);
  EXPECT_EQ(appointment.properties.get<std::int32_t>(appointmentProperty("BusyStatus")), 2);
  EXPECT_EQ(appointment.properties.get<std::int32_t>(appointmentProperty("ReminderMinutesBeforeStart")), 15);
  EXPECT_FALSE(appointment.properties.get<bool>(appointmentProperty("ReminderSet")));
  const PimItem task(ObjectKind::Task);
  EXPECT_EQ(task.properties.get<std::int32_t>(taskProperty("Importance")), 1);
}

TEST_F(Items, takeTheIdentifierThatTheyCome) {
  PimItem contact(ObjectKind::Contact);
  contact.oid = 17;
  EXPECT_EQ(items().add(contact), S_OK);
  EXPECT_EQ(items().kindOf(17), ObjectKind::Contact);
  EXPECT_TRUE(find<IContact>(17));
  PimItem other(ObjectKind::Task);
  other.oid = 17;
  EXPECT_THROW(items().add(other), StoreError);
  PimItem next(ObjectKind::Task);
  EXPECT_EQ(items().add(next), S_OK);
  EXPECT_NE(next.oid, 0u);
  EXPECT_NE(next.oid, 17u);
}

TEST_F(Items, neverUseAnIdentifierAgain) {
  std::vector<Oid> used;
  for (int i = 0; i < 5; ++i) {
    PimItem task(ObjectKind::Task);
    ASSERT_EQ(items().add(task), S_OK);
    EXPECT_EQ(std::count(used.begin(), used.end(), task.oid), 0);
    used.push_back(task.oid);
    EXPECT_TRUE(items().remove(task.oid));
    EXPECT_FALSE(items().remove(task.oid));
  }
}

TEST_F(Items, areSavedByTheSameRules) {
  PimItem appointment(ObjectKind::Appointment);
  appointment.properties.set(kStart, date(1900, 1, 1));
  appointment.properties.set(appointmentProperty("ReminderSet"), true);
  EXPECT_EQ(items().add(appointment), E_INVALIDREMINDERTIME);
  EXPECT_EQ(items().put(appointment.properties, kSubject, std::u16string(5000, u'a')), E_FIELDTOOLARGE);
  EXPECT_TRUE(changes_.empty());
}

TEST_F(Items, canBeWithoutTimes) {
  PimItem appointment(ObjectKind::Appointment);
  appointment.properties.set(kAllDayEvent, true);
  appointment.properties.set(appointmentProperty("ReminderSet"), true);
  EXPECT_EQ(items().add(appointment), S_OK);
  EXPECT_EQ(appointment.properties.get<double>(kStart), kNoDate);
}

TEST_F(Items, tellWhatBecameOfThem) {
  PimItem task = items().make(ObjectKind::Task);
  ASSERT_EQ(items().add(task), S_OK);
  ASSERT_EQ(items().change(task), S_OK);
  ASSERT_TRUE(items().remove(task.oid));
  EXPECT_EQ(items().change(task), E_FAIL);
  ASSERT_EQ(changes_.size(), 3u);
  constexpr ItemChangeKind kExpected[] = {ItemChangeKind::Added, ItemChangeKind::Changed,
                                          ItemChangeKind::Deleted};
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(changes_[i].change, kExpected[i]);
    EXPECT_EQ(changes_[i].kind, ObjectKind::Task);
    EXPECT_EQ(changes_[i].oid, task.oid);
  }
}

TEST_F(Items, comeBackAsTheyWereSaved) {
  PimItem series = savedWeekly();
  series.rule->end = SeriesEnd::AfterCount;
  series.rule->count = 7;
  series.ruleChanged = true;
  ASSERT_EQ(items().change(series), S_OK);
  const auto loaded = items().load(ObjectKind::Appointment, 18);
  ASSERT_TRUE(loaded);
  EXPECT_EQ(loaded->rule, series.rule);
  for (std::size_t place = 0; place < loaded->properties.size(); ++place) {
    EXPECT_EQ(loaded->properties.value(place), series.properties.value(place));
    EXPECT_FALSE(loaded->properties.isChanged(place));
  }
  EXPECT_FALSE(items().load(ObjectKind::Task, 18));
}

TEST_F(Items, areResetToTheirInitialValues) {
  PimItem task(ObjectKind::Task);
  ASSERT_EQ(items().put(task.properties, taskProperty("Importance"), 2), S_OK);
  task.properties.reset(taskProperty("Importance"));
  EXPECT_EQ(task.properties.get<std::int32_t>(taskProperty("Importance")), 1);
  EXPECT_TRUE(task.properties.isChanged(taskProperty("Importance")));
}

TEST_F(Items, takeAllExceptionsOfASeriesAtOnce) {
  const PimItem series = savedWeekly();
  // In this order each is past its neighbour until the other has moved too.
  const double first = date(2005, 3, 14);
  SeriesExceptions exceptions{moved(series, first + 7, first + 9), moved(series, first, first + 8),
                              SeriesException{static_cast<Day>(first) + 14, std::nullopt}};
  ASSERT_EQ(items().replaceExceptions(series, exceptions), S_OK);
  const SeriesExceptions stored = items().exceptions(series);
  ASSERT_EQ(stored.size(), 3u);
  EXPECT_EQ(stored[0].originalDay, first);
  EXPECT_EQ(stored[0].appointment->get<double>(kStart), first + 8);
  EXPECT_FALSE(stored[2].appointment);
  ASSERT_EQ(items().replaceExceptions(series, {}), S_OK);
  EXPECT_TRUE(items().exceptions(series).empty());
}

TEST_F(Items, takeAnExceptionPastItsNeighbourOnlyWithAllTheOthers) {
  const PimItem series = savedWeekly();
  const double first = date(2005, 3, 14);
  EXPECT_EQ(items().putException(series.oid, moved(series, first, first + 8)), E_OVERLAPPINGEXCEPTION);
  EXPECT_EQ(items().replaceExceptions(series, {moved(series, first, first + 8)}), S_OK);
  EXPECT_EQ(items().exceptions(series).size(), 1u);
}

TEST_F(Items, refuseExceptionsThatCannotStandTogether) {
  const PimItem series = savedWeekly();
  const double first = date(2005, 3, 14);
  EXPECT_EQ(items().replaceExceptions(
                series, {moved(series, first, first + 1), moved(series, first + 7, first + 1.5)}),
            E_EXCEPTIONSAMEDAY);
  EXPECT_EQ(items().replaceExceptions(series, {SeriesException{static_cast<Day>(first) + 1, std::nullopt}}),
            E_INVALIDARG);
  EXPECT_EQ(items().replaceExceptions(series, {SeriesException{static_cast<Day>(first), std::nullopt},
                                               SeriesException{static_cast<Day>(first), std::nullopt}}),
            E_INVALIDARG);
  EXPECT_TRUE(items().exceptions(series).empty());
}

}  // namespace
}  // namespace emulator
