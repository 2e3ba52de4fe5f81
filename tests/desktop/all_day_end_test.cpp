#include "desktop/all_day_end.h"

#include <gtest/gtest.h>

#include "desktop/local_time.h"

namespace {

using namespace desktop;

/// What the device does with an all-day entry, told in days after its start: what it stores as the end, given
/// the end that it is sent. Saving moves an end at or before the start to the next midnight; after the last
/// save an end more than a day after the start is put one day later. A series first gets a day on top of what
/// was sent.
int storedAfter(int sentAfter, bool series) {
  const int put = series ? sentAfter + 1 : sentAfter;
  const int saved = put < 1 ? 1 : put;
  return saved > 1 ? saved + 1 : saved;
}

Appointment allDay(int days, bool series) {
  Appointment entry;
  entry.allDay = true;
  entry.start = {2005, 3, 30};
  entry.end = addDays(entry.start, days - 1);
  if (series) entry.recurrence.emplace();
  return entry;
}

int daysAfterStart(const LocalTime& time) {
  return static_cast<int>((dayOf(time) - dayOf(LocalTime{2005, 3, 30})).count());
}

TEST(AllDayEnd, isSentSoThatTheDeviceStoresTheMidnightAfterTheLastDay) {
  for (const bool series : {false, true}) {
    for (const int days : {1, 3, 4, 31}) {
      const Appointment entry = allDay(days, series);
      ASSERT_TRUE(canStayAllDay(entry));
      EXPECT_EQ(storedAfter(daysAfterStart(endToSend(entry)), series), days)
          << days << (series ? " days, repeating" : " days");
    }
  }
}

TEST(AllDayEnd, ofTwoDaysCannotBeStoredWhateverIsSent) {
  for (const bool series : {false, true}) {
    EXPECT_FALSE(canStayAllDay(allDay(2, series)));
    for (int sent = -1; sent < 10; ++sent) EXPECT_NE(storedAfter(sent, series), 2);
  }
}

TEST(AllDayEnd, isTheLastDayForASingleEntryAndTheDayBeforeForALongSeries) {
  EXPECT_EQ(endToSend(allDay(1, false)), (LocalTime{2005, 3, 30}));
  EXPECT_EQ(endToSend(allDay(3, false)), (LocalTime{2005, 4, 1}));
  EXPECT_EQ(endToSend(allDay(1, true)), (LocalTime{2005, 3, 30}));
  EXPECT_EQ(endToSend(allDay(3, true)), (LocalTime{2005, 3, 31}));
}

TEST(AllDayEnd, leavesAnEntryWithTimesAlone) {
  Appointment entry = allDay(3, true);
  entry.allDay = false;
  EXPECT_EQ(endToSend(entry), (LocalTime{2005, 4, 1}));
}

TEST(AllDayEnd, becomesTheNextMidnightOfAnEntryFromMidnightToMidnight) {
  Appointment entry = allDay(2, true);
  AppointmentException moved;
  moved.originalDate = {2005, 4, 6};
  moved.start = {2005, 4, 7};
  moved.end = {2005, 4, 9};
  entry.exceptions = {moved};

  const Appointment timed = fromMidnightToMidnight(entry);
  EXPECT_FALSE(timed.allDay);
  EXPECT_EQ(timed.start, (LocalTime{2005, 3, 30}));
  EXPECT_EQ(timed.end, (LocalTime{2005, 4, 1}));
  EXPECT_EQ(timed.exceptions, entry.exceptions);
}

TEST(AllDayLength, isAtLeastOneDay) {
  EXPECT_EQ(allDayLength(allDay(1, false)), 1);
  EXPECT_EQ(allDayLength(allDay(5, false)), 5);
  EXPECT_EQ(allDayLength(allDay(-3, false)), 1);
}

}  // namespace
