#include "desktop/local_time.h"

#include <gtest/gtest.h>

namespace {

using namespace desktop;

TEST(LocalTime, isNoneForTheDevicesNoDate) {
  EXPECT_TRUE(isNone(noneIfNoDate({4501, 1, 1})));
  EXPECT_TRUE(isNone(noneIfNoDate({4501, 1, 1, 9, 30})));
  EXPECT_TRUE(isNone(noneIfNoDate({})));
  EXPECT_EQ(noneIfNoDate({4500, 12, 31}), (LocalTime{4500, 12, 31}));
  EXPECT_EQ(spellTime({}), "none");
  EXPECT_EQ(spellDay({}), "none");
}

TEST(LocalTime, isValidOnRealDaysAndTimesOnly) {
  EXPECT_TRUE(isValid({2004, 2, 29, 23, 59, 59, 999}));
  EXPECT_FALSE(isValid({2005, 2, 29}));
  EXPECT_FALSE(isValid({2005, 13, 1}));
  EXPECT_FALSE(isValid({2005, 0, 1}));
  EXPECT_FALSE(isValid({2005, 1, 0}));
  EXPECT_FALSE(isValid({2005, 1, 1, 24}));
  EXPECT_FALSE(isValid({2005, 1, 1, 0, 60}));
  EXPECT_FALSE(isValid({2005, 1, 1, 0, 0, 60}));
  EXPECT_FALSE(isValid({2005, 1, 1, 0, 0, 0, 1000}));
  EXPECT_FALSE(isValid({1600, 12, 31}));
  EXPECT_TRUE(isValid({1601, 1, 1}));
  EXPECT_TRUE(isValid({30827, 12, 31}));
  EXPECT_FALSE(isValid({30828, 1, 1}));
  EXPECT_FALSE(isValid({65535, 65535, 65535}));
}

TEST(LocalTime, movesByDaysAndKeepsItsTimeOfDay) {
  EXPECT_EQ(addDays({2005, 2, 28, 9, 15, 1, 2}, 1), (LocalTime{2005, 3, 1, 9, 15, 1, 2}));
  EXPECT_EQ(addDays({2005, 1, 1}, -1), (LocalTime{2004, 12, 31}));
}

TEST(LocalTime, isSpelledWithSecondsOnlyWhenThereAreAny) {
  EXPECT_EQ(spellDay({2005, 3, 4, 9}), "2005-03-04");
  EXPECT_EQ(spellTime({2005, 3, 4, 9, 5}), "2005-03-04 09:05");
  EXPECT_EQ(spellTime({2005, 3, 4, 9, 5, 7}), "2005-03-04 09:05:07");
}

TEST(LocalTime, knowsMidnight) {
  EXPECT_TRUE(isMidnight({2005, 3, 4}));
  EXPECT_FALSE(isMidnight({2005, 3, 4, 0, 0, 0, 1}));
}

}  // namespace
