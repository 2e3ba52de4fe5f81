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

/// A pattern and the first three days on which it falls.
struct SeriesCase {
  std::string pattern;
  LocalTime first, second, third;
};

class SeriesRoundTrip : public CalendarTest,
                        public testing::WithParamInterface<std::tuple<SeriesCase, std::string, bool>> {
 protected:
  Appointment entry() const {
    const auto& [series, end, allDay] = GetParam();
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

  /// The occurrence where it would be anyway.
  AppointmentException unchanged(const LocalTime& day) const {
    AppointmentException exception;
    exception.originalDate = day;
    exception.start = day;
    exception.end = addDays(day, 1);
    if (!std::get<bool>(GetParam())) {
      exception.start.hour = 9;
      exception.end = day;
      exception.end.hour = 10;
    }
    return exception;
  }

  static void expectSameAgain(const Appointment& entry) {
    const CalendarEntry again = onlyEntry(writeCalendar(entry, "1"));
    EXPECT_TRUE(again.appointment == entry);
    EXPECT_THAT(again.notes, IsEmpty());
  }
};

TEST_P(SeriesRoundTrip, keepsThePattern) {
  expectSameAgain(entry());
}

TEST_P(SeriesRoundTrip, keepsDeletedOccurrences) {
  Appointment series = entry();
  for (const LocalTime& day :
       {std::get<SeriesCase>(GetParam()).first, std::get<SeriesCase>(GetParam()).third}) {
    series.exceptions.emplace_back();
    series.exceptions.back().originalDate = day;
    series.exceptions.back().deleted = true;
  }
  expectSameAgain(series);
}

TEST_P(SeriesRoundTrip, keepsMovedOccurrences) {
  Appointment series = entry();
  AppointmentException moved = unchanged(std::get<SeriesCase>(GetParam()).second);
  moved.start = addDays(moved.start, 1);
  moved.end = addDays(moved.end, 3);
  series.exceptions = {moved};
  expectSameAgain(series);
}

TEST_P(SeriesRoundTrip, keepsEveryChangedField) {
  Appointment series = entry();
  const auto& days = std::get<SeriesCase>(GetParam());
  AppointmentException texts = unchanged(days.first);
  texts.subject = u"Other";
  texts.location = u"";
  texts.body = u"Other\r\nlines";
  AppointmentException values = unchanged(days.second);
  values.busyStatus = 1;
  values.reminderMinutes = 5;
  AppointmentException silent = unchanged(days.third);
  silent.reminderSet = false;
  series.exceptions = {texts, values, silent};
  expectSameAgain(series);
}

// 2005-03-14 is a Monday.
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

std::string nameOf(const testing::TestParamInfo<SeriesRoundTrip::ParamType>& row) {
  const auto& [series, end, allDay] = row.param;
  std::string name = series.pattern + end + (allDay ? " allDay" : "");
  std::replace_if(
      name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Every, SeriesRoundTrip,
                         testing::Combine(testing::ValuesIn(kSeries),
                                          testing::Values("", " times 12", " until 20150101"),
                                          testing::Bool()),
                         nameOf);

}  // namespace
}  // namespace desktop
