#include "desktop/item_uid.h"

#include <gtest/gtest.h>

namespace {

using namespace desktop;

TEST(ItemUid, namesDeviceAndItem) {
  EXPECT_EQ(itemUid(kAppointmentKind, u"PDA-7", 18), "appointment-18@PDA-7");
  EXPECT_EQ(itemUid(kAppointmentKind, u"Ann's \u20AC", 18), "appointment-18@Ann%27s%20%E2%82%AC");
  EXPECT_EQ(itemUid(kAppointmentKind, u"", 18), "appointment-18@unnamed");
}

TEST(ItemUid, isRecognisedOnItsOwnDeviceOnly) {
  EXPECT_EQ(oidOfUid(kAppointmentKind, u"PDA-7", "appointment-18@PDA-7"), 18u);
  EXPECT_EQ(
      oidOfUid(kAppointmentKind, u"Ann's \u20AC", itemUid(kAppointmentKind, u"Ann's \u20AC", 4294967295u)),
      4294967295u);
  EXPECT_EQ(oidOfUid(kAppointmentKind, u"PDA-8", "appointment-18@PDA-7"), std::nullopt);
}

TEST(ItemUid, isNotRecognisedByADeviceWithoutAName) {
  EXPECT_EQ(oidOfUid(kAppointmentKind, u"", "appointment-18@unnamed"), std::nullopt);
}

TEST(ItemUid, isNoOtherText) {
  for (const char* uid : {"", "appointment-", "appointment-@PDA-7", "appointment-018@PDA-7",
                          "appointment-0@PDA-7", "appointment-4294967296@PDA-7", "appointment--1@PDA-7",
                          "appointment-18@PDA-70", "1234@calendar.example"}) {
    EXPECT_EQ(oidOfUid(kAppointmentKind, u"PDA-7", uid), std::nullopt) << uid;
  }
}

}  // namespace
