// The stored recurrence, byte for byte. The expected bytes are laid out by hand from the field table in
// recurrence_blob.h; minutes are those from 1601-01-01, a Monday.
#include <gtest/gtest.h>
#include <string>

#include "emulator/pim/recurrence_blob.h"

namespace emulator {
namespace {

Day day(int year, int month, int dayOfMonth) {
  return dayOf(std::chrono::year{year} / month / dayOfMonth);
}

std::string hex(const std::vector<std::uint8_t>& bytes) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (const std::uint8_t byte : bytes) {
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

TEST(RecurrenceBlob, reproducesThePublishedWeeklyExample) {
  // Monday, Thursday and Friday from 2007-03-26, 10:00 to 10:30, 12 occurrences: the example that the public
  // description of the structure works out.
  StoredRecurrence recurrence;
  recurrence.rule = {.type = RecurrenceType::Weekly,
                     .start = day(2007, 3, 26),
                     .end = SeriesEnd::AfterCount,
                     .count = 12,
                     .dayMask = 2 + 16 + 32};
  recurrence.times = {600, 630};
  EXPECT_EQ(hex(recurrenceBlob(recurrence)),
            "043004300B2001000000C0210000010000000000000032000000222000000C000000"
            "0000000000000000000000008020BC0C20ADBC0C063000000930000058020000"
            "7602000000000000000000000000");
}

TEST(RecurrenceBlob, ofATaskEndsWithTheLastDay) {
  // Every 3 days from 2005-03-15 for ever. That day is number 147631: 147631 mod 3 = 1 day = 1440 minutes
  // into its period of 4320. 147631 x 1440 = 0x0CABD860.
  StoredRecurrence recurrence;
  recurrence.rule = {.type = RecurrenceType::Daily, .start = day(2005, 3, 15), .interval = 3};
  EXPECT_EQ(hex(recurrenceBlob(recurrence)),
            "04300430"
            "0A2000000000"
            "A0050000E010000000000000"
            "232000000A000000"
            "00000000"
            "0000000000000000"
            "60D8AB0CDF80E95A");
}

TEST(RecurrenceBlob, ofAMonthlyRuleCountsToItsEndDate) {
  // The 31st of every second month from 2005-03-31 until 2005-08-15: 31 March, 31 May and 31 July. March 2005
  // is 4850 months after January 1601, even, so the period begins with January 1601: 0 minutes. 2005-03-31 is
  // day 147647, x 1440 = 0x0CAC3260; 2005-07-31 is 122 days later, x 1440 = 0x0CAEE0A0.
  StoredRecurrence recurrence;
  recurrence.rule = {.type = RecurrenceType::Monthly,
                     .start = day(2005, 3, 31),
                     .end = SeriesEnd::OnDate,
                     .endDate = day(2005, 8, 15),
                     .interval = 2,
                     .dayOfMonth = 31};
  EXPECT_EQ(hex(recurrenceBlob(recurrence)),
            "04300430"
            "0C2002000000"
            "000000000200000000000000"
            "1F000000"
            "2120000003000000"
            "00000000"
            "0000000000000000"
            "6032AC0CA0E0AE0C");
}

TEST(RecurrenceBlob, keepsACountThatTheCalendarCutsShort) {
  // Daily from 2999-12-30, 999 times: only two days are left. 2999-12-30 is number 401767 from 1899-12-30 and
  // 510972 from 1601-01-01, x 1440 = 0x2BDB6980; a day later is 0x2BDB6F20. 999 = 0x3E7.
  StoredRecurrence recurrence;
  recurrence.rule = {
      .type = RecurrenceType::Daily, .start = day(2999, 12, 30), .end = SeriesEnd::AfterCount, .count = 999};
  EXPECT_EQ(hex(recurrenceBlob(recurrence)),
            "04300430"
            "0A2000000000"
            "00000000A005000000000000"
            "22200000E7030000"
            "00000000"
            "0000000000000000"
            "8069DB2B206FDB2B");
}

TEST(RecurrenceBlob, ofAYearlyRuleHasAPeriodInMonths) {
  // The last Tuesday of April, every second year, from 2005-04-01, twice: 2005-04-26 and 2007-04-24. April
  // 2005 is 4851 months after January 1601, 3 modulo 24: the period begins on 1601-04-01, 90 days = 129600 =
  // 0x0001FA40. 2005-04-26 is day 147673, x 1440 = 0x0CACC4A0; 2007-04-24 is day 148401, x 1440 = 0x0CBCC3A0.
  StoredRecurrence recurrence;
  recurrence.rule = {.type = RecurrenceType::YearNth,
                     .start = day(2005, 4, 1),
                     .end = SeriesEnd::AfterCount,
                     .count = 2,
                     .interval = 2,
                     .dayMask = 4,
                     .instance = 5,
                     .monthOfYear = 4};
  EXPECT_EQ(hex(recurrenceBlob(recurrence)),
            "04300430"
            "0D2003000000"
            "40FA01001800000000000000"
            "0400000005000000"
            "2220000002000000"
            "00000000"
            "0000000000000000"
            "A0C4AC0CA0C3BC0C");
}

TEST(RecurrenceBlob, listsReplacedAndChangedOccurrencesInAscendingOrder) {
  // Every second Monday from 2005-03-14, four times, until 2005-04-25. The one of 28 March was deleted, that
  // of 11 April went to 30 March... given in another order. The Sunday before the first is day 147629, 13
  // modulo 14 days: 13 x 1440 = 0x4920. Minutes: 14 March 0x0CABD2C0, 28 March 0x0CAC2180, 30 March
  // 0x0CAC2CC0, 11 April 0x0CAC7040, 25 April 0x0CACBF00.
  StoredRecurrence recurrence;
  recurrence.rule = {.type = RecurrenceType::Weekly,
                     .start = day(2005, 3, 14),
                     .end = SeriesEnd::AfterCount,
                     .count = 4,
                     .interval = 2,
                     .dayMask = 2};
  recurrence.replaced = {day(2005, 4, 11), day(2005, 3, 28)};
  recurrence.changed = {day(2005, 3, 30)};
  recurrence.times = {540, 555};
  EXPECT_EQ(hex(recurrenceBlob(recurrence)),
            "04300430"
            "0B2001000000"
            "204900000200000000000000"
            "02000000"
            "2220000004000000"
            "00000000"
            "020000008021AC0C4070AC0C"
            "01000000C02CAC0C"
            "C0D2AB0C00BFAC0C");
}

}  // namespace
}  // namespace emulator
