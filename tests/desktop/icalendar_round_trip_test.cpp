// Series written as calendar files and read again: every pattern, every end, every kind of exception.
#include <algorithm>
#include <cctype>
#include <gmock/gmock.h>
#include <tuple>

#include "desktop/local_time.h"
#include "tests/desktop/icalendar_patterns.h"
#include "tests/desktop/icalendar_support.h"

namespace desktop {
namespace {

using testing::IsEmpty;

/// A pattern and the first three days on which it falls. 2005-03-14 is a Monday.
struct SeriesCase {
  const char* pattern;
  LocalTime first, second, third;
};

const SeriesCase kSeries[] = {
    {"daily", at(2005, 3, 14), at(2005, 3, 15), at(2005, 3, 16)},
    {"daily every 5", at(2005, 3, 14), at(2005, 3, 19), at(2005, 3, 24)},
    {"weekly MO,FR", at(2005, 3, 14), at(2005, 3, 18), at(2005, 3, 21)},
    {"weekly SU,MO every 2", at(2005, 3, 14), at(2005, 3, 27), at(2005, 3, 28)},
    {"monthly 14", at(2005, 3, 14), at(2005, 4, 14), at(2005, 5, 14)},
    {"monthly 29", at(2005, 1, 29), at(2005, 2, 28), at(2005, 3, 29)},
    {"monthly 30", at(2005, 1, 30), at(2005, 2, 28), at(2005, 3, 30)},
    {"monthly 31", at(2005, 1, 31), at(2005, 2, 28), at(2005, 3, 31)},
    {"monthly-nth 2 MO every 3", at(2005, 3, 14), at(2005, 6, 13), at(2005, 9, 12)},
    {"monthly-nth 5 FR", at(2005, 3, 25), at(2005, 4, 29), at(2005, 5, 27)},
    {"monthly-nth 5 MO,TU,WE,TH,FR", at(2005, 3, 31), at(2005, 4, 29), at(2005, 5, 31)},
    {"yearly 3 14", at(2005, 3, 14), at(2006, 3, 14), at(2007, 3, 14)},
    {"yearly 2 29", at(2004, 2, 29), at(2005, 2, 28), at(2006, 2, 28)},
    {"yearly-nth 11 4 TH", at(2005, 11, 24), at(2006, 11, 23), at(2007, 11, 22)},
    {"yearly-nth 5 5 MO", at(2005, 5, 30), at(2006, 5, 29), at(2007, 5, 28)},
};

constexpr const char* kEnds[] = {"", " times 12", " until 20150101"};

Appointment entryOf(const SeriesCase& series, const std::string& end, bool allDay) {
  Appointment entry;
  entry.subject = u"Planning";
  entry.location = u"Room 4";
  entry.categories = u"Work";
  entry.body = u"Bring\r\nthe list";
  entry.reminderSet = true;
  entry.reminderMinutes = 20;
  entry.allDay = allDay;
  entry.start = series.first;
  entry.end = series.first;
  if (!allDay) {
    entry.start.hour = 9;
    entry.end.hour = 10;
  }
  entry.recurrence = patternOf(series.pattern + end, series.first);
  return entry;
}

/// The occurrence where it would be anyway; an all-day one ends on the day after.
AppointmentException unchanged(const Appointment& series, const LocalTime& day) {
  AppointmentException exception;
  exception.originalDate = day;
  exception.start = day;
  exception.end = series.allDay ? addDays(day, 1) : day;
  if (!series.allDay) {
    exception.start.hour = 9;
    exception.end.hour = 10;
  }
  return exception;
}

class SeriesRoundTrip : public CalendarTest {
 protected:
  /// Writes and reads every series after `change(Appointment&, const SeriesCase&)`.
  template <typename Change>
  static void expectSameAgain(Change change) {
    for (const SeriesCase& series : kSeries) {
      for (const std::string end : kEnds) {
        for (const bool allDay : {false, true}) {
          SCOPED_TRACE(series.pattern + end + (allDay ? ", all-day" : ""));
          Appointment entry = entryOf(series, end, allDay);
          change(entry, series);
          const CalendarEntry again = onlyEntry(writeCalendar(entry, "1"));
          EXPECT_TRUE(again.appointment == entry);
          EXPECT_THAT(again.notes, IsEmpty());
        }
      }
    }
  }
};

TEST_F(SeriesRoundTrip, keepsThePattern) {
  expectSameAgain([](Appointment&, const SeriesCase&) {});
}

TEST_F(SeriesRoundTrip, keepsDeletedOccurrences) {
  expectSameAgain([](Appointment& entry, const SeriesCase& series) {
    for (const LocalTime& day : {series.first, series.third}) {
      entry.exceptions.emplace_back();
      entry.exceptions.back().originalDate = day;
      entry.exceptions.back().deleted = true;
    }
  });
}

TEST_F(SeriesRoundTrip, keepsMovedOccurrences) {
  expectSameAgain([](Appointment& entry, const SeriesCase& series) {
    AppointmentException moved = unchanged(entry, series.second);
    moved.start = addDays(moved.start, 1);
    moved.end = addDays(moved.end, 3);
    entry.exceptions = {moved};
  });
}

TEST_F(SeriesRoundTrip, keepsEveryChangedField) {
  expectSameAgain([](Appointment& entry, const SeriesCase& series) {
    AppointmentException texts = unchanged(entry, series.first);
    texts.subject = u"Other";
    texts.location = u"";
    texts.body = u"Other\r\nlines";
    AppointmentException values = unchanged(entry, series.second);
    values.busyStatus = 1;
    values.reminderMinutes = 5;
    AppointmentException silent = unchanged(entry, series.third);
    silent.reminderSet = false;
    entry.exceptions = {texts, values, silent};
  });
}

}  // namespace
}  // namespace desktop
