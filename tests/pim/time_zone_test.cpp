// Compares the conversion with a reading of the same rules by the standard library's calendar, zone by zone
// of time_zones.txt, and pins what is peculiar to it.
#include "pim/time_zone.h"

#include <array>
#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

#include "emulator/system/file_time.h"
#include "tests/support/agent_test.h"

namespace qorv {
namespace {

using namespace test;
using namespace std::chrono;
using emulator::fileTimeOf;
using emulator::Ticks;
using emulator::ticksOf;

using Moment = sys_time<duration<std::int64_t, std::ratio<1, 10'000'000>>>;

constexpr sys_days kFirstDay = year{1601} / 1 / 1;

Ticks toTicks(Moment moment) {
  return (moment - Moment(kFirstDay)).count();
}

std::string trimmed(const std::string& text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// A beginning of standard or daylight time, as the file says it.
SYSTEMTIME parseBeginning(const std::string& text) {
  SYSTEMTIME date{};
  char mark = 0;
  std::istringstream in(text);
  if (text == "-") return date;
  if (text.find('T') != std::string::npos) {
    in >> date.wYear >> mark >> date.wMonth >> mark >> date.wDay >> mark >> date.wHour >> mark >>
        date.wMinute;
    return date;
  }
  in >> date.wMonth >> mark >> date.wDayOfWeek >> mark >> date.wDay >> mark >> date.wHour >> mark >>
      date.wMinute;
  return date;
}

struct Zone {
  std::string name;
  TIME_ZONE_INFORMATION rules{};
};

void PrintTo(const Zone& zone, std::ostream* out) {
  *out << zone.name;
}

std::vector<Zone> readZones() {
  std::vector<Zone> zones;
  std::ifstream file(QORV_TEST_DATA "/time_zones.txt");
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::array<std::string, 6> cells;
    std::istringstream in(line);
    for (std::string& cell : cells) {
      std::getline(in, cell, '|');
      cell = trimmed(cell);
    }
    Zone zone{cells[0], {}};
    zone.rules.Bias = std::stoi(cells[1]);
    zone.rules.StandardBias = std::stoi(cells[2]);
    zone.rules.DaylightBias = std::stoi(cells[3]);
    zone.rules.StandardDate = parseBeginning(cells[4]);
    zone.rules.DaylightDate = parseBeginning(cells[5]);
    zones.push_back(zone);
  }
  return zones;
}

/// The reference: when a beginning comes in a year, said with the calendar's own n-th and last weekdays.
Moment beginningIn(const SYSTEMTIME& date, year inYear) {
  const month inMonth{date.wMonth};
  const weekday day{date.wDayOfWeek};
  sys_days on;
  if (date.wYear != 0) {
    on = year{date.wYear} / inMonth / std::chrono::day{date.wDay};
  } else if (date.wDay == 5) {
    on = inYear / inMonth / day[last];
  } else {
    on = inYear / inMonth / day[date.wDay];
  }
  return Moment(on) + hours(date.wHour) + minutes(date.wMinute);
}

/// The reference: what holds at the year's beginning holds until one of the two begins.
minutes biasAt(const TIME_ZONE_INFORMATION& rules, Moment moment) {
  if (rules.DaylightDate.wMonth == 0) return minutes(rules.Bias);
  const year inYear = year_month_day(floor<days>(moment)).year();
  const Moment standard = beginningIn(rules.StandardDate, inYear);
  const Moment daylight = beginningIn(rules.DaylightDate, inYear);
  bool isDaylight = standard <= daylight;
  const bool later = !isDaylight;
  if (moment >= std::min(standard, daylight)) isDaylight = later;
  if (moment >= std::max(standard, daylight)) isDaylight = !later;
  return minutes(rules.Bias + (isDaylight ? rules.DaylightBias : rules.StandardBias));
}

class TimeZone : public AgentTest {
 protected:
  using Convert = bool (*)(const TIME_ZONE_INFORMATION& zone, FILETIME& time);

  /// The converted time, or nothing; a time that was refused must be as it was.
  std::optional<Ticks> convert(Convert conversion, const TIME_ZONE_INFORMATION& zone, Ticks time) {
    FILETIME converted = fileTimeOf(time);
    bool isConverted = false;
    perform([&] { isConverted = conversion(zone, converted); });
    if (isConverted) return ticksOf(converted);
    EXPECT_EQ(ticksOf(converted), time);
    return std::nullopt;
  }
  static Ticks at(int y, unsigned m, unsigned d, int hour = 0, int minute = 0) {
    return toTicks(Moment(sys_days(year{y} / m / d)) + hours(hour) + minutes(minute));
  }
};

class ListedZone : public TimeZone, public testing::WithParamInterface<Zone> {
 protected:
  void expectAsReference(Moment moment) {
    const auto bias = biasAt(GetParam().rules, moment);
    ASSERT_EQ(convert(LocalToUtc, GetParam().rules, toTicks(moment)), toTicks(moment + bias))
        << moment.time_since_epoch();
    ASSERT_EQ(convert(UtcToLocal, GetParam().rules, toTicks(moment)), toTicks(moment - bias))
        << moment.time_since_epoch();
  }
};

TEST_P(ListedZone, convertsAsTheReferenceThroughoutTheYears) {
  // 17 hours 13 minutes and a bit: every hour of the day and every weekday comes up.
  for (Moment moment = sys_days(year{1999} / 12 / 30); moment < Moment(sys_days(year{2009} / 1 / 3));
       moment += minutes(1033) + milliseconds(7)) {
    expectAsReference(moment);
  }
}

TEST_P(ListedZone, convertsAsTheReferenceAroundItsBeginnings) {
  const TIME_ZONE_INFORMATION& rules = GetParam().rules;
  if (rules.DaylightDate.wMonth == 0) return;
  for (int y = 1996; y < 2024; ++y) {
    for (const SYSTEMTIME* date : {&rules.StandardDate, &rules.DaylightDate}) {
      const Moment beginning = beginningIn(*date, year{y});
      for (const int ticks : {-1, 0, 1}) expectAsReference(beginning + Moment::duration(ticks));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Zones, ListedZone, testing::ValuesIn(readZones()), [](const auto& zone) {
  std::string name = zone.param.name;
  std::ranges::replace(name, '-', '_');
  return name;
});

TEST_F(TimeZone, theFileHasAllZones) {
  EXPECT_EQ(readZones().size(), 28u);
  EXPECT_EQ(readZones()[25].rules.StandardDate.wYear, 2005);
  EXPECT_EQ(readZones()[25].rules.StandardDate.wMonth, 10);
  EXPECT_EQ(readZones()[25].rules.StandardDate.wDay, 30);
}

/// UTC-8 with daylight time from the first Sunday in April to the last in October, at 2 o'clock.
TIME_ZONE_INFORMATION pacific() {
  TIME_ZONE_INFORMATION zone{};
  zone.Bias = 480;
  zone.DaylightBias = -60;
  zone.StandardDate = {0, 10, 0, 5, 2, 0, 0, 0};
  zone.DaylightDate = {0, 4, 0, 1, 2, 0, 0, 0};
  return zone;
}

TEST_F(TimeZone, withoutDaylightTimeOnlyTheBiasCounts) {
  TIME_ZONE_INFORMATION zone{};
  zone.Bias = 480;
  zone.StandardBias = 1000;
  EXPECT_EQ(convert(LocalToUtc, zone, at(2005, 3, 14, 12)), at(2005, 3, 14, 20));
  EXPECT_EQ(convert(UtcToLocal, zone, at(2005, 3, 14, 20)), at(2005, 3, 14, 12));
}

TEST_F(TimeZone, aBeginningBelongsToWhatBegins) {
  // In 2005 daylight time began on April 3 and ended on October 30.
  EXPECT_EQ(convert(LocalToUtc, pacific(), at(2005, 4, 3, 2) - 1), at(2005, 4, 3, 10) - 1);
  EXPECT_EQ(convert(LocalToUtc, pacific(), at(2005, 4, 3, 2)), at(2005, 4, 3, 9));
  EXPECT_EQ(convert(LocalToUtc, pacific(), at(2005, 10, 30, 2) - 1), at(2005, 10, 30, 9) - 1);
  EXPECT_EQ(convert(LocalToUtc, pacific(), at(2005, 10, 30, 2)), at(2005, 10, 30, 10));
}

TEST_F(TimeZone, aUtcTimeIsComparedWithTheLocalBeginning) {
  // 2005-04-03 02:00 UTC is 18:00 of the day before, seven hours from daylight time, and counts for it
  // already.
  EXPECT_EQ(convert(UtcToLocal, pacific(), at(2005, 4, 3, 2)), at(2005, 4, 2, 19));
  EXPECT_EQ(convert(UtcToLocal, pacific(), at(2005, 4, 3, 2) - 1), at(2005, 4, 2, 18) - 1);
}

TEST_F(TimeZone, aFifthWeekdayBeyondTheMonthIsTheFourth) {
  // Tuesdays of February 2005: 1, 8, 15, 22, and 29 by count alone. Those of April: 5, 12, 19, 26, and no
  // fifth at all.
  TIME_ZONE_INFORMATION zone{};
  zone.DaylightBias = -60;
  zone.DaylightDate = {0, 2, 2, 5, 0, 0, 0, 0};
  zone.StandardDate = {0, 4, 2, 5, 0, 0, 0, 0};
  EXPECT_EQ(convert(LocalToUtc, zone, at(2005, 2, 22) - 1), at(2005, 2, 22) - 1);
  EXPECT_EQ(convert(LocalToUtc, zone, at(2005, 2, 22)), at(2005, 2, 21, 23));
  EXPECT_EQ(convert(LocalToUtc, zone, at(2005, 4, 26) - 1), at(2005, 4, 25, 23) - 1);
  EXPECT_EQ(convert(LocalToUtc, zone, at(2005, 4, 26)), at(2005, 4, 26));
}

class BrokenRule : public TimeZone, public testing::WithParamInterface<SYSTEMTIME> {};

TEST_P(BrokenRule, leavesTheTimeAsItIs) {
  TIME_ZONE_INFORMATION zone = pacific();
  zone.StandardDate = GetParam();
  if (GetParam().wYear != 0) zone.DaylightDate = {2005, 4, 0, 3, 2, 0, 0, 0};
  for (const Convert conversion : {LocalToUtc, UtcToLocal}) {
    EXPECT_EQ(convert(conversion, zone, at(2005, 7, 1)), std::nullopt);
  }
}

INSTANTIATE_TEST_SUITE_P(Dates, BrokenRule,
                         testing::Values(SYSTEMTIME{},                              // no month
                                         SYSTEMTIME{0, 13, 0, 1, 2, 0, 0, 0},       // a month too many
                                         SYSTEMTIME{0, 10, 0, 0, 2, 0, 0, 0},       // no week
                                         SYSTEMTIME{0, 10, 0, 6, 2, 0, 0, 0},       // a week too many
                                         SYSTEMTIME{0, 10, 0, 0xFFFF, 2, 0, 0, 0},  // and many more
                                         SYSTEMTIME{0, 10, 7, 1, 2, 0, 0, 0},       // no such weekday
                                         SYSTEMTIME{0, 10, 0xFFFF, 5, 2, 0, 0, 0},
                                         SYSTEMTIME{0, 10, 0, 5, 24, 0, 0, 0},      // no such hour
                                         SYSTEMTIME{2005, 2, 0, 30, 2, 0, 0, 0}));  // no such day

TEST_F(TimeZone, aTimeThatIsNoDateIsRefused) {
  EXPECT_EQ(convert(LocalToUtc, pacific(), -1), std::nullopt);
}

TEST_F(TimeZone, conversionsThatThePlatformRefusesLeaveTheTime) {
  for (const char* call : {"FileTimeToSystemTime", "SystemTimeToFileTime"}) {
    // One conversion of the time itself, and two round trips and a day for the rules.
    for (int nth = 1; nth <= 3; ++nth) {
      fault(std::string(call) + "#" + std::to_string(nth) + "=87");
      EXPECT_EQ(convert(LocalToUtc, pacific(), at(2005, 7, 1)), std::nullopt) << call << nth;
      clearFaults();
    }
  }
}

TEST_F(TimeZone, minutesAreAddedWithTheirSign) {
  FILETIME time = fileTimeOf(600'000'000);
  AddMinutes(time, 2);
  EXPECT_EQ(ticksOf(time), 1'800'000'000);
  AddMinutes(time, -3);
  EXPECT_EQ(ticksOf(time), 0);
  // 2^32 hundred-nanosecond units are a little more than 7 minutes: the high word is carried into and
  // borrowed from.
  AddMinutes(time, 8);
  EXPECT_EQ(time.dwHighDateTime, 1u);
  EXPECT_EQ(time.dwLowDateTime, 4'800'000'000 - 4'294'967'296);
  AddMinutes(time, -9);
  EXPECT_EQ(ticksOf(time), -600'000'000);
}

}  // namespace
}  // namespace qorv
