// Time zones: the rules read from the host's database, and which of them applies at a moment.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <tuple>

#include "emulator/system/time_zone.h"
#include "emulator/system/zone_rules.h"

namespace emulator {
namespace {

using testing::HasSubstr;

constexpr int kYear = 2025;

/// month, which one of the month, day of week, hour, minute
using Rule = std::tuple<int, int, int, int, int>;
Rule ruleOf(const SYSTEMTIME& date) {
  return {date.wMonth, date.wDay, date.wDayOfWeek, date.wHour, date.wMinute};
}

Ticks at(WORD year, WORD month, WORD day, WORD hour, WORD minute = 0) {
  return ticksOf(SYSTEMTIME{year, month, 0, day, hour, minute, 0, 0}).value();
}

TEST(ZoneNamed, EuropeBerlinHasTheRulesOfToday) {
  const TIME_ZONE_INFORMATION zone = zoneNamed("Europe/Berlin", kYear);
  EXPECT_EQ(zone.Bias, -60);
  EXPECT_EQ(zone.StandardBias, 0);
  EXPECT_EQ(zone.DaylightBias, -60);
  EXPECT_EQ(ruleOf(zone.DaylightDate), Rule(3, 5, 0, 2, 0));
  EXPECT_EQ(ruleOf(zone.StandardDate), Rule(10, 5, 0, 3, 0));
  EXPECT_EQ(zone.DaylightDate.wYear, 0);
  EXPECT_EQ(std::u16string(zone.StandardName), u"CET");
  EXPECT_EQ(std::u16string(zone.DaylightName), u"CEST");
}

TEST(ZoneNamed, withoutDaylightTimeHasNoTransitions) {
  const TIME_ZONE_INFORMATION zone = zoneNamed("Asia/Kolkata", kYear);
  EXPECT_EQ(zone.Bias, -330);
  EXPECT_EQ(zone.DaylightBias, 0);
  EXPECT_EQ(zone.DaylightDate.wMonth, 0);
  EXPECT_EQ(zone.StandardDate.wMonth, 0);
}

TEST(ZoneNamed, utcIsTheDefaultZone) {
  const TIME_ZONE_INFORMATION zone = zoneNamed("UTC", kYear);
  EXPECT_EQ(zone.Bias, utcZone().Bias);
  EXPECT_EQ(std::u16string(zone.StandardName), std::u16string(utcZone().StandardName));
}

TEST(ZoneNamed, refusesWhatIsNoZoneAndSaysSo) {
  for (const char* name :
       {"Mars/Olympus", "", "Europe", "/etc/hostname", "../../../etc/hostname", "zone.tab"}) {
    try {
      zoneNamed(name, kYear);
      FAIL() << name;
    } catch (const std::invalid_argument& error) {
      EXPECT_THAT(error.what(), HasSubstr("no time zone named \"" + std::string(name) + '"'));
    }
  }
}

TEST(ZoneRule, holdsTransitionTimesOtherThanTheDefault) {
  // New Zealand: the last Sunday of September at two, the first Sunday of April at three.
  const TIME_ZONE_INFORMATION zone = zoneFromRule("NZST-12NZDT,M9.5.0,M4.1.0/3", kYear);
  EXPECT_EQ(zone.Bias, -720);
  EXPECT_EQ(ruleOf(zone.DaylightDate), Rule(9, 5, 0, 2, 0));
  EXPECT_EQ(ruleOf(zone.StandardDate), Rule(4, 1, 0, 3, 0));
}

TEST(ZoneRule, holdsQuotedNamesAndBiasesThatAreNoWholeHours) {
  const TIME_ZONE_INFORMATION chatham = zoneFromRule("<+1245>-12:45<+1345>,M9.5.0/2:45,M4.1.0/3:45", kYear);
  EXPECT_EQ(chatham.Bias, -765);
  EXPECT_EQ(ruleOf(chatham.DaylightDate), Rule(9, 5, 0, 2, 45));
  EXPECT_EQ(std::u16string(chatham.StandardName), u"+1245");
  const TIME_ZONE_INFORMATION lordHowe = zoneFromRule("<+1030>-10:30<+11>-11,M10.1.0,M4.1.0", kYear);
  EXPECT_EQ(lordHowe.Bias, -630);
  EXPECT_EQ(lordHowe.DaylightBias, -30);
}

TEST(ZoneRule, ofAZoneWestOfGreenwichHasAPositiveBias) {
  EXPECT_EQ(zoneFromRule("NST3:30NDT,M3.2.0,M11.1.0", kYear).Bias, 210);
}

TEST(ZoneRule, whoseWinterIsTheExceptionIsTurnedRound) {
  // Ireland: standard time is summer's, and the clock goes back in winter.
  const TIME_ZONE_INFORMATION zone = zoneFromRule("IST-1GMT0,M10.5.0,M3.5.0/1", kYear);
  EXPECT_EQ(zone.Bias, 0);
  EXPECT_EQ(zone.DaylightBias, -60);
  EXPECT_EQ(ruleOf(zone.DaylightDate), Rule(3, 5, 0, 1, 0));
  EXPECT_EQ(ruleOf(zone.StandardDate), Rule(10, 5, 0, 2, 0));
  EXPECT_EQ(std::u16string(zone.StandardName), u"GMT");
}

TEST(ZoneRule, atTheEndOfADayIsItsLastMillisecond) {
  const TIME_ZONE_INFORMATION zone = zoneFromRule("<-04>4<-03>,M9.1.6/24,M4.1.6/24", kYear);
  EXPECT_EQ(ruleOf(zone.DaylightDate), Rule(9, 1, 6, 23, 59));
  EXPECT_EQ(zone.DaylightDate.wSecond, 59);
  EXPECT_EQ(zone.DaylightDate.wMilliseconds, 999);
}

TEST(ZoneRule, atAnHourOfAnotherDayFallsOnTheRightDayOfTheYear) {
  // Israel: Thursday of the fourth week, 26 hours on. In 2025 that Thursday is March 27: Friday 28, the last
  // one of the month and its fourth. In 2024 it is March 28: Friday 29, the fifth.
  EXPECT_EQ(ruleOf(zoneFromRule("IST-2IDT,M3.4.4/26,M10.5.0", 2025).DaylightDate), Rule(3, 4, 5, 2, 0));
  EXPECT_EQ(ruleOf(zoneFromRule("IST-2IDT,M3.4.4/26,M10.5.0", 2024).DaylightDate), Rule(3, 5, 5, 2, 0));
  // Greenland: an hour before the last Sunday. In 2025 Saturday, March 29, is the last one; in 2029 the last
  // Sunday is March 25, and Saturday, March 24, is the fourth of five.
  EXPECT_EQ(ruleOf(zoneFromRule("<-02>2<-01>,M3.5.0/-1,M10.5.0/0", 2025).DaylightDate), Rule(3, 5, 6, 23, 0));
  EXPECT_EQ(ruleOf(zoneFromRule("<-02>2<-01>,M3.5.0/-1,M10.5.0/0", 2029).DaylightDate), Rule(3, 4, 6, 23, 0));
}

TEST(ZoneRule, thatIsNoneIsRefused) {
  for (const char* rule :
       {"", "CET", "CET-1CEST", "CET-1CEST,M3.5.0", "CET-1CEST,J60,J300", "CET-1CEST,M13.5.0,M10.5.0",
        "CET-1CEST,M3.6.0,M10.5.0", "CET-1CEST,M3.5.7,M10.5.0", "CET-1CEST,M3.5.0,M10.5.0/3x", "<CET-1",
        "CET-999", "12"}) {
    EXPECT_THROW(zoneFromRule(rule, kYear), std::invalid_argument) << rule;
  }
}

class Berlin : public testing::Test {
 protected:
  const TimeZone zone_{zoneFromRule("CET-1CEST,M3.5.0,M10.5.0/3", kYear)};
};

TEST_F(Berlin, changesAtOneOClockUniversalTime) {
  // The last Sundays of March and October 2005 are the 27th and the 30th.
  EXPECT_EQ(zone_.periodAt(at(2005, 3, 27, 0, 59)), TIME_ZONE_ID_STANDARD);
  EXPECT_EQ(zone_.periodAt(at(2005, 3, 27, 1, 0)), TIME_ZONE_ID_DAYLIGHT);
  EXPECT_EQ(zone_.periodAt(at(2005, 10, 30, 0, 59)), TIME_ZONE_ID_DAYLIGHT);
  EXPECT_EQ(zone_.periodAt(at(2005, 10, 30, 1, 0)), TIME_ZONE_ID_STANDARD);
}

TEST_F(Berlin, isOneHourAheadInWinterAndTwoInSummer) {
  EXPECT_EQ(zone_.toLocal(at(2005, 1, 1, 12)), at(2005, 1, 1, 13));
  EXPECT_EQ(zone_.toLocal(at(2005, 7, 1, 12)), at(2005, 7, 1, 14));
  EXPECT_EQ(zone_.toUtc(at(2005, 1, 1, 13)), at(2005, 1, 1, 12));
  EXPECT_EQ(zone_.toUtc(at(2005, 7, 1, 14)), at(2005, 7, 1, 12));
}

TEST_F(Berlin, readsTheRepeatedHourAsDaylightTime) {
  EXPECT_EQ(zone_.toUtc(at(2005, 10, 30, 2, 30)), at(2005, 10, 30, 0, 30));
  EXPECT_EQ(zone_.toUtc(at(2005, 10, 30, 3, 0)), at(2005, 10, 30, 2, 0));
}

TEST(SouthernZone, hasDaylightTimeOverTheTurnOfTheYear) {
  const TimeZone zone(zoneFromRule("NZST-12NZDT,M9.5.0,M4.1.0/3", kYear));
  EXPECT_EQ(zone.periodAt(at(2004, 12, 31, 23)), TIME_ZONE_ID_DAYLIGHT);
  EXPECT_EQ(zone.periodAt(at(2005, 1, 1, 0)), TIME_ZONE_ID_DAYLIGHT);
  EXPECT_EQ(zone.periodAt(at(2005, 7, 1, 0)), TIME_ZONE_ID_STANDARD);
  EXPECT_EQ(zone.toLocal(at(2005, 1, 1, 0)), at(2005, 1, 1, 13));
  EXPECT_EQ(zone.toUtc(at(2005, 7, 1, 12)), at(2005, 7, 1, 0));
}

TEST(ZoneWithoutDaylightTime, isNeitherStandardNorDaylight) {
  TIME_ZONE_INFORMATION pacific{};
  pacific.Bias = 480;
  const TimeZone zone(pacific);
  EXPECT_EQ(zone.periodAt(at(2005, 7, 1, 12)), TIME_ZONE_ID_UNKNOWN);
  EXPECT_EQ(zone.toUtc(at(2005, 7, 1, 12)), at(2005, 7, 1, 20));
}

TEST(ZoneWithAbsoluteDates, changesInTheirYearOnly) {
  TIME_ZONE_INFORMATION information{};
  information.DaylightBias = -60;
  information.DaylightDate = {2005, 4, 0, 3, 2, 0, 0, 0};
  information.StandardDate = {2005, 10, 0, 30, 2, 0, 0, 0};
  const TimeZone zone(information);
  EXPECT_EQ(zone.periodAt(at(2005, 7, 1, 0)), TIME_ZONE_ID_DAYLIGHT);
  EXPECT_EQ(zone.periodAt(at(2006, 7, 1, 0)), TIME_ZONE_ID_STANDARD);
}

TEST(ZoneWithAnImpossibleRule, staysInStandardTime) {
  TIME_ZONE_INFORMATION information{};
  information.DaylightDate = {0, 4, 9, 1, 2, 0, 0, 0};
  information.StandardDate = {0, 10, 0, 5, 2, 0, 0, 0};
  EXPECT_EQ(TimeZone(information).periodAt(at(2005, 7, 1, 0)), TIME_ZONE_ID_STANDARD);
}

TEST(ZoneTransition, countsWeekdaysOfTheMonth) {
  // Sundays of October 2005: 2, 9, 16, 23, 30; of April: 3, 10, 17, 24.
  const SYSTEMTIME fifthOfOctober{0, 10, 0, 5, 2, 0, 0, 0};
  const SYSTEMTIME fifthOfApril{0, 4, 0, 5, 2, 0, 0, 0};
  const SYSTEMTIME secondOfApril{0, 4, 0, 2, 2, 0, 0, 0};
  EXPECT_EQ(transitionIn(2005, fifthOfOctober), at(2005, 10, 30, 2));
  EXPECT_EQ(transitionIn(2005, fifthOfApril), at(2005, 4, 24, 2));
  EXPECT_EQ(transitionIn(2005, secondOfApril), at(2005, 4, 10, 2));
}

}  // namespace
}  // namespace emulator
