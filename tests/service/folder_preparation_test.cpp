#include "service/folder_preparation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/agent_test.h"

namespace qorv {
namespace {

using namespace test;
using testing::ElementsAre;

class PreparedFolders : public AgentTest {
 protected:
  ~PreparedFolders() override { folderPreparation().owner = nullptr; }

  /// Prepares and releases.
  bool prepare() {
    bool prepared = false;
    perform([&] {
      prepared = prepareObjectModelFolders();
      releaseObjectModelFolders();
    });
    return prepared;
  }
};

TEST_F(PreparedFolders, notifyAllTheirChanges) {
  folderPreparation().owner = reinterpret_cast<HWND>(std::uintptr_t{0x1234});
  observeCalls();
  EXPECT_TRUE(prepare());
  EXPECT_THAT(callNames(),
              ElementsAre("CoInitializeEx", "CoCreateInstance", "IPOutlookApp.Logon",                   //
                          "IPOutlookApp.GetDefaultFolder", "IFolder.QueryInterface", "IItem.SetProps",  //
                          "IItem.Release", "IFolder.Release",                                           //
                          "IPOutlookApp.GetDefaultFolder", "IFolder.QueryInterface", "IItem.SetProps",  //
                          "IItem.Release", "IFolder.Release",                                           //
                          "IPOutlookApp.GetDefaultFolder", "IFolder.QueryInterface", "IItem.SetProps",  //
                          "IItem.Release", "IFolder.Release",                                           //
                          "IPOutlookApp.Release", "CoUninitialize"));
  EXPECT_EQ(calls("CoInitializeEx")[0]["args"], nlohmann::json::parse("[null, 0]"));
  EXPECT_EQ(calls("CoCreateInstance")[0]["args"],
            nlohmann::json::parse(R"(["{05058F23-20BE-11D2-8F18-0000F87A4335}", null, 1,
                                      "{05058F22-20BE-11D2-8F18-0000F87A4335}"])"));
  EXPECT_EQ(calls("IPOutlookApp.Logon")[0]["args"], nlohmann::json::parse("[4660]"));
  std::vector<int> folders;
  for (const auto& call : calls("IPOutlookApp.GetDefaultFolder")) folders.push_back(call["args"][0]);
  EXPECT_THAT(folders, ElementsAre(9, 10, 13));
  for (const auto& call : calls("IItem.SetProps")) {
    EXPECT_EQ(call["args"],
              nlohmann::json::parse(R"([0, 1, [{"propid": 268501011, "wFlags": 0, "val": 3}]])"));
  }
}

TEST_F(PreparedFolders, keepTheirApplicationUntilTheyAreReleased) {
  perform([] {
    EXPECT_TRUE(prepareObjectModelFolders());
    EXPECT_TRUE(folderPreparation().application);
    EXPECT_TRUE(prepareObjectModelFolders()) << "once more, in the place of the first";
    releaseObjectModelFolders();
    EXPECT_FALSE(folderPreparation().application);
    releaseObjectModelFolders();
  });
}

struct Failing {
  const char* rule;
  bool result;
};

class FailingPreparation : public PreparedFolders, public testing::WithParamInterface<Failing> {};

TEST_P(FailingPreparation, succeedsWhenOneFolderDoes) {
  fault(GetParam().rule);
  EXPECT_EQ(prepare(), GetParam().result) << GetParam().rule;
}

INSTANTIATE_TEST_SUITE_P(Calls, FailingPreparation,
                         testing::Values(Failing{"CoInitializeEx=0x80010106", true},
                                         Failing{"CoCreateInstance=0x80040154", false},
                                         Failing{"IPOutlookApp.Logon=0x80004005", false},
                                         Failing{"IPOutlookApp.GetDefaultFolder=0x80004005", false},
                                         Failing{"IPOutlookApp.GetDefaultFolder=0x80004005*2", true},
                                         Failing{"IPOutlookApp.GetDefaultFolder#2=0x80004005", true},
                                         Failing{"IFolder.QueryInterface=0x80004002", false},
                                         Failing{"IFolder.QueryInterface=0x80004002*2", true},
                                         Failing{"IItem.SetProps=0x80070057", false},
                                         Failing{"IItem.SetProps#3=0x80070057", true},
                                         Failing{"IItem.SetProps#2=0x80070057", true}),
                         [](const auto& each) { return "n" + std::to_string(each.index); });

}  // namespace
}  // namespace qorv
