// What changed on the device since a desktop last took note of it.
#include <nlohmann/json.hpp>

#include "tests/apps/journey.h"

namespace {

using Json = nlohmann::json;

class ChangesJourney : public Journey {
 protected:
  /// OIDs and kinds of change, the newest first.
  Json changes(const std::string& arguments) {
    EXPECT_EQ(sync("changes " + arguments + " --json"), 0) << err_;
    Json list = Json::array();
    const Json told = Json::parse(out_);
    for (const Json& change : told["changes"]) list.push_back({change["oid"], change["change"]});
    return list;
  }

  /// What the device's user does.
  void load(const Json& snapshot) {
    std::ofstream(folder_.file("change.json")) << snapshot;
    ASSERT_EQ(run("'" QORV_DEVICE "' load device change.json"), 0) << err_;
  }
};

TEST_F(ChangesJourney, tellWhatIsNewsToAContract) {
  load({{"tasks", {{{"Oid", 501}, {"Subject", "File"}}, {{"Oid", 502}, {"Subject", "Copy"}}}}});
  EXPECT_EQ(changes("tasks PC --commit"), Json::parse(R"([[502, "added"], [501, "added"]])"));
  EXPECT_NE(err_.find("the device has no contract \"PC\" yet"), std::string::npos) << err_;
  EXPECT_EQ(changes("tasks PC"), Json::array());
  EXPECT_EQ(err_, "");

  load({{"tasks", {{{"Oid", 501}, {"Subject", "File it"}}, {{"Oid", 503}, {"Subject", "Post"}}}},
        {"deleted", {502}}});
  const Json news = Json::parse(R"([[502, "deleted"], [503, "added"], [501, "changed"]])");
  EXPECT_EQ(changes("tasks PC"), news);
  // Listing alone makes nothing old.
  EXPECT_EQ(changes("tasks PC"), news);
  EXPECT_EQ(changes("appointments PC"), Json::array());
}

TEST_F(ChangesJourney, areKeptApartByTheContractsNames) {
  load({{"tasks", {{{"Oid", 501}, {"Subject", "File"}}}}});
  changes("tasks PC --commit");
  load({{"tasks", {{{"Oid", 502}, {"Subject", "Copy"}}}}});
  changes("tasks laptop --commit");
  EXPECT_EQ(changes("tasks laptop"), Json::array());
  EXPECT_EQ(changes("tasks PC"), Json::parse(R"([[502, "added"]])"));
  // Names are compared exactly.
  EXPECT_EQ(changes("tasks pc").size(), 2u);
}

TEST_F(ChangesJourney, areAllNewsAgainToAForgottenContract) {
  load({{"tasks", {{{"Oid", 501}, {"Subject", "File"}}}}});
  changes("tasks PC --commit");
  EXPECT_EQ(sync("changes tasks PC --forget"), 0) << err_;
  EXPECT_EQ(out_, "forgot the contract \"PC\"\n");
  EXPECT_EQ(changes("tasks PC"), Json::parse(R"([[501, "added"]])"));
  EXPECT_EQ(sync("changes tasks PC --forget"), 1);
  EXPECT_EQ(err_, "qorv-sync: the device has no contract \"PC\"\n");
}

TEST_F(ChangesJourney, includeWhatADesktopSent) {
  changes("tasks PC --commit");
  ASSERT_EQ(sync("push " + sample("tasks/errands.ics")), 0) << err_;
  EXPECT_EQ(changes("tasks PC").size(), 6u);
}

TEST_F(ChangesJourney, areNamedWhenTheDeviceCannotOpenItsContracts) {
  load({{"tasks", {{{"Oid", 501}, {"Subject", "File"}}}}});
  const std::string arguments = "'" QORV_SYNC "' --exec \"'" QORV_DEVICE
                                "' serve device --stdio --fault CeOpenDatabaseEx2=5 --fault "
                                "CeCreateDatabase=5\" changes tasks PC";
  EXPECT_EQ(run(arguments), 1);
  EXPECT_EQ(err_, "qorv-sync: contract \"PC\": the device can't read up to which change it is\n");
  EXPECT_EQ(run(arguments + " --commit"), 1);
  EXPECT_EQ(run(arguments + " --forget"), 1);
  EXPECT_EQ(err_, "qorv-sync: contract \"PC\": the device can't open its contracts\n");
}

TEST_F(ChangesJourney, showAnItemsBytes) {
  load({{"tasks", {{{"Oid", 501}, {"Subject", "File"}}}}});
  EXPECT_EQ(sync("dump --raw tasks 501"), 0) << err_;
  // A tag, 10 bytes of text with its NUL.
  EXPECT_NE(
      out_.find("  subject (tag 1): \"File\"\n        01 00 00 00 0A 00 00 00 46 00 69 00 6C 00 65 00\n"),
      std::string::npos)
      << out_;
  EXPECT_EQ(sync("dump --raw tasks 502"), 1);
  EXPECT_EQ(err_, "qorv-sync: tasks 502: the device has no such item\n");
}

}  // namespace
