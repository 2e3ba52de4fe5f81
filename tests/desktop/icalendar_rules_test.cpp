// Recurrence rules both ways: icalendar_rules.txt tells what each one becomes.
#include <fstream>
#include <gmock/gmock.h>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "tests/desktop/icalendar_patterns.h"
#include "tests/desktop/icalendar_support.h"

namespace desktop {
namespace {

using testing::HasSubstr;

struct RuleRow {
  int line;
  std::string rule, start, expected;
};

std::string trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::vector<RuleRow> ruleRows() {
  std::vector<RuleRow> rows;
  std::ifstream file(QORV_TEST_DATA "/icalendar_rules.txt");
  std::string text;
  for (int line = 1; std::getline(file, text); ++line) {
    if (text.empty() || text.front() == '#') continue;
    std::istringstream columns(text);
    RuleRow row{line, {}, {}, {}};
    std::getline(columns, row.rule, '|');
    std::getline(columns, row.start, '|');
    std::getline(columns, row.expected);
    rows.push_back({line, trimmed(row.rule), trimmed(row.start), trimmed(row.expected)});
  }
  return rows;
}

std::string seriesText(const RuleRow& row) {
  const bool allDay = row.start.find('T') == std::string::npos;
  return eventOf("DTSTART" + std::string(allDay ? ";VALUE=DATE:" : ":") + row.start +
                 "\r\nRRULE:" + row.rule + "\r\n");
}

bool isRefused(const RuleRow& row) {
  return row.expected.starts_with("no: ");
}

std::vector<RuleRow> rowsThatAre(bool refused) {
  std::vector<RuleRow> rows = ruleRows();
  std::erase_if(rows, [refused](const RuleRow& row) { return isRefused(row) != refused; });
  return rows;
}

class CalendarRules : public CalendarTest {};

TEST_F(CalendarRules, thatTheDeviceHoldsBecomeThePatternOfTheTable) {
  for (const RuleRow& row : rowsThatAre(/*refused=*/false)) {
    SCOPED_TRACE("icalendar_rules.txt:" + std::to_string(row.line));
    const CalendarEntry entry = onlyEntry(seriesText(row));
    ASSERT_TRUE(entry.appointment.recurrence);
    EXPECT_TRUE(*entry.appointment.recurrence == patternOf(row.expected, dayOfDigits(row.start)));
    EXPECT_THAT(entry.notes, testing::IsEmpty());
    EXPECT_THAT(entry.appointment.exceptions, testing::IsEmpty());
  }
}

TEST_F(CalendarRules, thatTheDeviceHoldsAreReadAgainAsTheyWereWritten) {
  for (const RuleRow& row : rowsThatAre(/*refused=*/false)) {
    SCOPED_TRACE("icalendar_rules.txt:" + std::to_string(row.line));
    const Appointment appointment = onlyEntry(seriesText(row)).appointment;
    EXPECT_TRUE(onlyEntry(writeCalendar(appointment, "1")).appointment == appointment);
  }
}

TEST_F(CalendarRules, thatTheDeviceCannotHoldAreAProblemThatTellsTheReason) {
  for (const RuleRow& row : rowsThatAre(/*refused=*/true)) {
    SCOPED_TRACE("icalendar_rules.txt:" + std::to_string(row.line));
    const std::string problem = onlyProblem(seriesText(row));
    EXPECT_THAT(problem, HasSubstr("file.ics:4: 1: recurrence rule "));
    EXPECT_THAT(problem, HasSubstr(" can't be held by the device: "));
    EXPECT_THAT(problem, HasSubstr(row.expected.substr(4)));
  }
}

TEST_F(CalendarRules, ofTheTableAreThere) {
  EXPECT_GT(rowsThatAre(/*refused=*/false).size(), 60U);
  EXPECT_GT(rowsThatAre(/*refused=*/true).size(), 40U);
}

/// The rule's text, as written for a series that starts on 2005-03-14 at nine.
std::string written(const Recurrence& recurrence) {
  Appointment appointment;
  appointment.start = at(2005, 3, 14, 9);
  appointment.end = at(2005, 3, 14, 10);
  appointment.recurrence = recurrence;
  const std::string text = writeCalendar(appointment, "1");
  const std::size_t begin = text.find("RRULE:") + 6;
  return text.substr(begin, text.find("\r\n", begin) - begin);
}

std::string written(const std::string& pattern) {
  return written(patternOf(pattern, at(2005, 3, 14)));
}

TEST(CalendarRuleText, takesTheLastDayOfShorterMonthsAsTheDeviceDoes) {
  EXPECT_EQ(written("monthly 28"), "FREQ=MONTHLY;BYMONTHDAY=28");
  EXPECT_EQ(written("monthly 29"), "FREQ=MONTHLY;BYMONTHDAY=28,29;BYSETPOS=-1");
  EXPECT_EQ(written("monthly 30"), "FREQ=MONTHLY;BYMONTHDAY=28,29,30;BYSETPOS=-1");
  EXPECT_EQ(written("monthly 31"), "FREQ=MONTHLY;BYMONTHDAY=-1");
  EXPECT_EQ(written("yearly 4 30"), "FREQ=YEARLY;BYMONTHDAY=30;BYMONTH=4");
  EXPECT_EQ(written("yearly 4 31"), "FREQ=YEARLY;BYMONTHDAY=-1;BYMONTH=4");
  EXPECT_EQ(written("yearly 5 31"), "FREQ=YEARLY;BYMONTHDAY=31;BYMONTH=5");
  EXPECT_EQ(written("yearly 2 30"), "FREQ=YEARLY;BYMONTHDAY=28,29,30;BYMONTH=2;BYSETPOS=-1");
}

TEST(CalendarRuleText, namesTheWeekdays) {
  EXPECT_EQ(written("monthly-nth 2 TU"), "FREQ=MONTHLY;BYDAY=2TU");
  EXPECT_EQ(written("monthly-nth 5 TU"), "FREQ=MONTHLY;BYDAY=-1TU");
  EXPECT_EQ(written("monthly-nth 5 SA,SU"), "FREQ=MONTHLY;BYDAY=SA,SU;BYSETPOS=-1");
  EXPECT_EQ(written("yearly-nth 11 4 TH every 2"), "FREQ=YEARLY;INTERVAL=2;BYDAY=4TH;BYMONTH=11");
}

TEST(CalendarRuleText, beginsTheWeekOnSundayWhereThatCounts) {
  EXPECT_EQ(written("weekly SU,MO"), "FREQ=WEEKLY;BYDAY=MO,SU");
  EXPECT_EQ(written("weekly SU,MO every 2"), "FREQ=WEEKLY;INTERVAL=2;BYDAY=SU,MO;WKST=SU");
}

TEST(CalendarRuleText, countsTheLastDayWhole) {
  EXPECT_EQ(written("daily until 20051231"), "FREQ=DAILY;UNTIL=20051231T235959");
  EXPECT_EQ(written("daily times 999"), "FREQ=DAILY;COUNT=999");
}

TEST(CalendarRuleText, refusesNumbersThatMakeNoRule) {
  EXPECT_THROW(written("monthly 77"), std::invalid_argument);
  EXPECT_THROW(written("weekly none"), std::invalid_argument);
  EXPECT_THROW(written("yearly-nth 13 1 MO"), std::invalid_argument);
  EXPECT_THROW(written("daily times 0"), std::invalid_argument);
  Recurrence unused;
  unused.type = static_cast<RecurrenceType>(4);
  EXPECT_THROW(written(unused), std::invalid_argument);
}

}  // namespace
}  // namespace desktop
