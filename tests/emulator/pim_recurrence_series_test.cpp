#include <bit>
#include <gtest/gtest.h>
#include <random>
#include <vector>

#include "emulator/pim/occurrence_cursor.h"
#include "emulator/pim/recurrence_series.h"

namespace emulator {
namespace {

Day day(int year, int month, int dayOfMonth) {
  return dayOf(std::chrono::year{year} / month / dayOfMonth);
}

std::vector<Day> firstOnes(const RecurrenceRule& rule, std::size_t number) {
  std::vector<Day> days;
  OccurrenceCursor cursor(rule, rule.start);
  for (auto next = cursor.next(); next && days.size() < number; next = cursor.next()) days.push_back(*next);
  return days;
}

using Days = std::vector<Day>;

TEST(Recurrence, takesTheLastDayOfAShorterMonth) {
  const RecurrenceRule rule{.type = RecurrenceType::Monthly, .start = day(2004, 1, 31), .dayOfMonth = 31};
  EXPECT_EQ(firstOnes(rule, 4),
            (Days{day(2004, 1, 31), day(2004, 2, 29), day(2004, 3, 31), day(2004, 4, 30)}));
}

TEST(Recurrence, keepsADayThatEveryMonthHas) {
  const RecurrenceRule rule{.type = RecurrenceType::Monthly, .start = day(2005, 1, 20), .dayOfMonth = 15};
  EXPECT_EQ(firstOnes(rule, 2), (Days{day(2005, 2, 15), day(2005, 3, 15)}));
}

TEST(Recurrence, takes28FebruaryForALeapDay) {
  const RecurrenceRule rule{
      .type = RecurrenceType::Yearly, .start = day(2004, 2, 29), .dayOfMonth = 29, .monthOfYear = 2};
  EXPECT_EQ(firstOnes(rule, 5),
            (Days{day(2004, 2, 29), day(2005, 2, 28), day(2006, 2, 28), day(2007, 2, 28), day(2008, 2, 29)}));
}

TEST(Recurrence, takesInstanceFiveForTheLast) {
  const RecurrenceRule rule{
      .type = RecurrenceType::MonthNth, .start = day(2005, 2, 1), .dayMask = 2, .instance = kLastInstance};
  EXPECT_EQ(firstOnes(rule, 3), (Days{day(2005, 2, 28), day(2005, 3, 28), day(2005, 4, 25)}));
}

TEST(Recurrence, countsTheInstanceOverAllDaysOfTheMask) {
  // 1 and 2 January 2005 are a Saturday and a Sunday: the first weekday is the 3rd, the last one the 31st.
  RecurrenceRule rule{
      .type = RecurrenceType::MonthNth, .start = day(2005, 1, 1), .dayMask = 62, .instance = 1};
  EXPECT_EQ(firstOccurrence(rule), day(2005, 1, 3));
  rule.instance = kLastInstance;
  EXPECT_EQ(firstOccurrence(rule), day(2005, 1, 31));
}

TEST(Recurrence, startsWeeksOnSunday) {
  // 2005-03-16 is a Wednesday; its week is the 13th to the 19th, the next but one begins with the 27th.
  const RecurrenceRule rule{
      .type = RecurrenceType::Weekly, .start = day(2005, 3, 16), .interval = 2, .dayMask = 1 + 64};
  EXPECT_EQ(firstOnes(rule, 3), (Days{day(2005, 3, 19), day(2005, 3, 27), day(2005, 4, 2)}));
}

TEST(Recurrence, endsWithThePlatformsLastDay) {
  const RecurrenceRule rule{.type = RecurrenceType::Daily, .start = day(2005, 1, 1)};
  EXPECT_EQ(lastOccurrence(rule), day(2999, 12, 31));
  EXPECT_EQ(kLastDay, day(2999, 12, 31));
  EXPECT_FALSE(isOccurrence(rule, kLastDay + 1));
  EXPECT_EQ(occurrenceAfter(rule, kLastDay), std::nullopt);
}

TEST(Recurrence, withoutOccurrencesEnds) {
  const RecurrenceRule empty{.type = RecurrenceType::Weekly, .start = day(2005, 1, 1), .dayMask = 0};
  EXPECT_EQ(OccurrenceCursor(empty, empty.start).next(), std::nullopt);
  EXPECT_EQ(firstOccurrence(empty), std::nullopt);
  EXPECT_EQ(countOccurrences(empty), 0);
  EXPECT_FALSE(isOccurrence(empty, empty.start));

  const RecurrenceRule over{.type = RecurrenceType::Weekly,
                            .start = day(2005, 3, 15),
                            .end = SeriesEnd::OnDate,
                            .endDate = day(2005, 3, 20),
                            .dayMask = 2};
  EXPECT_EQ(firstOccurrence(over), std::nullopt);
  EXPECT_EQ(lastOccurrence(over), std::nullopt);
  EXPECT_EQ(countOccurrences(over), 0);
}

TEST(Recurrence, withAParameterOutOfRangeHasNoOccurrences) {
  const Day start = day(2005, 1, 1);
  for (const RecurrenceRule& rule : {
           RecurrenceRule{.type = RecurrenceType::Daily, .start = start, .interval = 0},
           RecurrenceRule{.type = RecurrenceType::Monthly, .start = start, .dayOfMonth = 32},
           RecurrenceRule{.type = RecurrenceType::MonthNth, .start = start, .dayMask = 2, .instance = 6},
           RecurrenceRule{.type = RecurrenceType::Yearly, .start = start, .dayOfMonth = 1, .monthOfYear = 13},
           RecurrenceRule{.type = RecurrenceType{4}, .start = start},
       }) {
    EXPECT_FALSE(isWellFormed(rule));
    EXPECT_EQ(countThrough(rule, kLastDay), 0);
    EXPECT_EQ(nthOccurrence(rule, 1), std::nullopt);
  }
}

TEST(Recurrence, knowsItsNeighbours) {
  const RecurrenceRule rule{.type = RecurrenceType::Weekly,
                            .start = day(2005, 3, 14),
                            .end = SeriesEnd::AfterCount,
                            .count = 3,
                            .dayMask = 2};
  EXPECT_EQ(occurrenceBefore(rule, day(2005, 3, 14)), std::nullopt);
  EXPECT_EQ(occurrenceBefore(rule, day(2005, 3, 21)), day(2005, 3, 14));
  EXPECT_EQ(occurrenceBefore(rule, day(2009, 1, 1)), day(2005, 3, 28));
  EXPECT_EQ(occurrenceAfter(rule, day(2005, 3, 21)), day(2005, 3, 28));
  EXPECT_EQ(occurrenceAfter(rule, day(2005, 3, 28)), std::nullopt);
}

TEST(Recurrence, takesIntervalsBeyondSixteenBits) {
  RecurrenceRule rule{.type = RecurrenceType::Daily, .start = 100, .interval = 100000};
  EXPECT_EQ(firstOnes(rule, 9), (Days{100, 100100, 200100, 300100, 400100}));
  EXPECT_EQ(nthOccurrence(rule, 5), 400100);
  rule.interval = std::numeric_limits<std::int32_t>::max();
  for (const RecurrenceType type : {RecurrenceType::Daily, RecurrenceType::Weekly, RecurrenceType::Monthly,
                                    RecurrenceType::Yearly, RecurrenceType::YearNth}) {
    rule.type = type;
    rule.dayMask = weekdayBit(rule.start);
    rule.dayOfMonth = static_cast<std::int32_t>(static_cast<unsigned>(dateOf(rule.start).day()));
    rule.monthOfYear = static_cast<std::int32_t>(static_cast<unsigned>(dateOf(rule.start).month()));
    rule.instance = 2;  // day 100 is 1900-04-09, the second Monday of April
    EXPECT_EQ(firstOnes(rule, 9), Days{100});
    EXPECT_EQ(countThrough(rule, kLastDay), 1);
    EXPECT_EQ(nthOccurrence(rule, 2), std::nullopt);
  }
}

// The rule's definition, day by day, without any expansion.
class DefinitionOf {
 public:
  explicit DefinitionOf(const RecurrenceRule& rule) : rule_(rule) {}

  [[nodiscard]] bool holds(Day day) const {
    return day >= rule_.start && inActivePeriod(day) && matches(day);
  }

 private:
  static int month(Day day) {
    return static_cast<int>(dateOf(day).year()) * 12 +
           static_cast<int>(static_cast<unsigned>(dateOf(day).month()));
  }
  static int dayOfMonth(Day day) { return static_cast<int>(static_cast<unsigned>(dateOf(day).day())); }
  static int lengthOfMonth(Day day) {
    const auto date = dateOf(day);
    return static_cast<int>(static_cast<unsigned>((date.year() / date.month() / std::chrono::last).day()));
  }

  [[nodiscard]] bool inActivePeriod(Day day) const {
    const int days = day - rule_.start;
    const int weekOf = static_cast<int>(weekdayOf(rule_.start));
    if (rule_.type == RecurrenceType::Daily) return days % rule_.interval == 0;
    if (rule_.type == RecurrenceType::Weekly) return (days + weekOf) / 7 % rule_.interval == 0;
    if (!usesMonth(rule_.type)) return (month(day) - month(rule_.start)) % rule_.interval == 0;
    return (static_cast<int>(dateOf(day).year()) - static_cast<int>(dateOf(rule_.start).year())) %
               rule_.interval ==
           0;
  }

  [[nodiscard]] bool matches(Day day) const {
    if (usesMonth(rule_.type) && (month(day) - 1) % 12 + 1 != rule_.monthOfYear) return false;
    if (usesDayOfMonth(rule_.type)) return dayOfMonth(day) == std::min(rule_.dayOfMonth, lengthOfMonth(day));
    if (!usesDayMask(rule_.type)) return true;
    return (rule_.dayMask & weekdayBit(day)) != 0 && (!usesInstance(rule_.type) || isInstance(day));
  }

  [[nodiscard]] bool isInstance(Day day) const {
    const bool last = rule_.instance == kLastInstance;
    const int others = last ? lengthOfMonth(day) - dayOfMonth(day) : dayOfMonth(day) - 1;
    int count = 0;
    for (int i = 1; i <= others; ++i)
      count += (rule_.dayMask & weekdayBit(last ? day + i : day - i)) != 0 ? 1 : 0;
    return count == (last ? 0 : rule_.instance - 1);
  }

  const RecurrenceRule& rule_;
};

RecurrenceRule randomRule(std::mt19937& random) {
  const auto pick = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
  constexpr RecurrenceType kTypes[] = {RecurrenceType::Daily,   RecurrenceType::Weekly,
                                       RecurrenceType::Monthly, RecurrenceType::MonthNth,
                                       RecurrenceType::Yearly,  RecurrenceType::YearNth};
  return {.type = kTypes[pick(0, 5)],
          .start = pick(kFirstDay, kLastDay - 4000),
          .interval = pick(1, 4),
          .dayMask = pick(1, kEveryWeekday),
          .dayOfMonth = pick(1, 31),
          .instance = pick(1, kLastInstance),
          .monthOfYear = pick(1, 12)};
}

TEST(Recurrence, agreesWithItsDefinitionDayByDay) {
  std::mt19937 random(19970902);
  for (int round = 0; round < 60; ++round) {
    const RecurrenceRule rule = randomRule(random);
    const DefinitionOf definition(rule);
    OccurrenceCursor cursor(rule, rule.start);
    std::int32_t count = 0;
    for (Day at = rule.start; at < rule.start + 4000; ++at) {
      if (!definition.holds(at)) continue;
      ASSERT_EQ(cursor.next(), at) << "round " << round;
      ASSERT_EQ(countThrough(rule, at), ++count) << "round " << round;
      if (count % 16 == 1) {
        ASSERT_EQ(nthOccurrence(rule, count), at) << "round " << round;
      }
    }
  }
}

TEST(Recurrence, seeksToAFarDayAsIfItHadWalkedThere) {
  std::mt19937 random(20050314);
  for (int round = 0; round < 60; ++round) {
    RecurrenceRule rule = randomRule(random);
    rule.start %= 30000;
    const DefinitionOf definition(rule);
    const Day far = std::uniform_int_distribution(rule.start, kLastDay - 800)(random);
    OccurrenceCursor cursor(rule, far);
    for (Day at = far; at < far + 800; ++at) {
      EXPECT_EQ(isOccurrence(rule, at), definition.holds(at));
      if (definition.holds(at)) {
        ASSERT_EQ(cursor.next(), at) << "round " << round;
      }
    }
  }
}

}  // namespace
}  // namespace emulator
