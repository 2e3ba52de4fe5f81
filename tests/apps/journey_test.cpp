// The whole way: calendar files and files from qorv-sync through the agent onto an emulated device and back.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <regex>
#include <set>
#include <sstream>
#include <sys/wait.h>

#include "tests/emulator/temporary_folder.h"

namespace {

class Journey : public testing::Test {
 protected:
  Journey() {
    setenv("TZ", "Europe/Berlin", 1);
    create("device");
  }

  /// Runs a shell command in the test's folder; its exit status. What it prints is kept.
  int run(const std::string& command) {
    const int status =
        std::system(("cd '" + folder_.file("") + "' && " + command + " > out 2> err < /dev/null").c_str());
    out_ = read(folder_.file("out"));
    err_ = read(folder_.file("err"));
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  void create(const std::string& device) {
    ASSERT_EQ(run("'" QORV_DEVICE "' create " + device + " --time-zone Europe/Berlin"), 0) << err_;
  }
  int sync(const std::string& arguments, const std::string& device = "device") {
    return run("'" QORV_SYNC "' --exec \"'" QORV_DEVICE "' serve " + device + " --stdio\" " + arguments);
  }

  static std::string read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  /// The calendar files of a pulled folder, without what depends on the device's own numbers.
  std::multiset<std::string> calendar(const std::string& pulled) {
    std::multiset<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.file(pulled + "/calendar"))) {
      files.insert(std::regex_replace(read(entry.path()), std::regex("UID:[^\r]*\r\n"), ""));
    }
    return files;
  }

  emulator::test::TemporaryFolder folder_;
  std::string out_;
  std::string err_;
};

std::string sample(const std::string& name) {
  return "'" QORV_SAMPLES "/" + name + "'";
}

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
  EXPECT_FALSE(calendar("first").empty());
  EXPECT_EQ(calendar("first"), calendar("second"));
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
