// Calendar entries and files.
#include "tests/apps/journey.h"

#include <nlohmann/json.hpp>

namespace {

TEST_F(Journey, aWorkingWeekTravelsWithoutADifference) {
  EXPECT_EQ(sync("push " + sample("calendar/work-week.ics")), 0) << out_ << err_;
  EXPECT_EQ(err_, "");
  EXPECT_EQ(sync("list appointments"), 0);
  EXPECT_NE(out_.find("7 appointments"), std::string::npos) << out_;
}

TEST_F(Journey, everythingThatADeviceHoldsTravelsToAnotherUnchanged) {
  // Some of the samples can't be held as they are, which the first push says; what is on the device then can.
  EXPECT_EQ(sync("push " + sample("calendar")), 1);
  EXPECT_EQ(sync("pull first"), 0) << err_;
  create("other");
  EXPECT_EQ(sync("push first/calendar", "other"), 0) << out_ << err_;
  EXPECT_EQ(sync("pull second", "other"), 0) << err_;
  EXPECT_FALSE(files("first/calendar").empty());
  EXPECT_EQ(files("first/calendar"), files("second/calendar"));
}

TEST_F(Journey, whatTheUserChangesOnTheDeviceComesBack) {
  ASSERT_EQ(sync("push " + sample("calendar/work-week.ics")), 0) << out_ << err_;
  ASSERT_EQ(run("'" QORV_DEVICE "' dump device"), 0);
  const auto dump = nlohmann::json::parse(out_);
  const auto& appointment = dump["appointments"][0];
  std::ofstream(folder_.file("change.json"))
      << nlohmann::json{{"appointments", {{{"Oid", appointment["Oid"]}, {"Location", "The other room"}}}}};
  ASSERT_EQ(run("'" QORV_DEVICE "' load device change.json"), 0) << err_;
  ASSERT_EQ(sync("pull pulled"), 0) << err_;
  const std::string file = read(folder_.file("pulled/calendar/" + appointment["Oid"].dump() + ".ics"));
  EXPECT_NE(file.find("LOCATION:The other room\r\n"), std::string::npos) << file;
}

TEST_F(Journey, aSecondPullWritesNothing) {
  ASSERT_EQ(sync("push " + sample("calendar/work-week.ics")), 0);
  ASSERT_EQ(sync("pull pulled"), 0);
  std::set<std::filesystem::file_time_type> before;
  const std::filesystem::path calendar = folder_.file("pulled/calendar");
  for (const auto& entry : std::filesystem::directory_iterator(calendar))
    before.insert(entry.last_write_time());
  ASSERT_EQ(sync("pull pulled"), 0);
  std::set<std::filesystem::file_time_type> after;
  for (const auto& entry : std::filesystem::directory_iterator(calendar))
    after.insert(entry.last_write_time());
  EXPECT_EQ(before, after);
}

TEST_F(Journey, filesComeBackByteForByte) {
  ASSERT_EQ(sync("put " + sample("files/picture.bmp") + " '\\My Documents\\picture.bmp'"), 0) << err_;
  ASSERT_EQ(sync("get '\\My Documents\\picture.bmp' picture.bmp"), 0) << err_;
  EXPECT_EQ(read(folder_.file("picture.bmp")), read(QORV_SAMPLES "/files/picture.bmp"));
}

TEST_F(Journey, aSessionThatTheDeviceCannotStartIsNoDevice) {
  EXPECT_EQ(run("'" QORV_SYNC "' --exec \"'" QORV_DEVICE
                "' serve device --stdio --fault CoCreateInstance=0x80040154\" info"),
            3);
  EXPECT_NE(err_.find("rsCeApiMgr returned 0x80004005"), std::string::npos) << err_;
}

}  // namespace
