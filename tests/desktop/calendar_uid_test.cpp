#include "desktop/calendar_uid.h"

#include <gtest/gtest.h>

namespace {

using namespace desktop;

TEST(CalendarUid, namesDeviceAndItem) {
  EXPECT_EQ(calendarUid(u"PDA-7", 18), "appointment-18@PDA-7");
  EXPECT_EQ(calendarUid(u"Ann's \u20AC", 18), "appointment-18@Ann%27s%20%E2%82%AC");
  EXPECT_EQ(calendarUid(u"", 18), "appointment-18@unnamed");
}

TEST(CalendarUid, isRecognisedOnItsOwnDeviceOnly) {
  EXPECT_EQ(oidOfUid(u"PDA-7", "appointment-18@PDA-7"), 18u);
  EXPECT_EQ(oidOfUid(u"Ann's \u20AC", calendarUid(u"Ann's \u20AC", 4294967295u)), 4294967295u);
  EXPECT_EQ(oidOfUid(u"PDA-8", "appointment-18@PDA-7"), std::nullopt);
}

TEST(CalendarUid, isNotRecognisedByADeviceWithoutAName) {
  EXPECT_EQ(oidOfUid(u"", "appointment-18@unnamed"), std::nullopt);
}

TEST(CalendarUid, isNoOtherText) {
  for (const char* uid : {"", "appointment-", "appointment-@PDA-7", "appointment-018@PDA-7",
                          "appointment-0@PDA-7", "appointment-4294967296@PDA-7", "appointment--1@PDA-7",
                          "appointment-18@PDA-70", "1234@calendar.example"}) {
    EXPECT_EQ(oidOfUid(u"PDA-7", uid), std::nullopt) << uid;
  }
}

}  // namespace
