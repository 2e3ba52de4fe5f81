#include "tests/ink/note_test.h"

namespace qorv {
namespace {

using namespace test;

class RichInkLibraryOf : public NoteTest {
 protected:
  void setVersion(DWORD major, DWORD minor, DWORD build) {
    device().configuration.setOsVersion({major, minor, build});
  }
};

TEST_F(RichInkLibraryOf, everyRequestOnNotesIsLoadedInitialisedAndFreed) {
  observeCalls();
  session({request(6, kInkNote), request(99, kInkNote)});
  std::vector<std::string> ofLibraries;
  for (const std::string& name : callNames()) {
    if (name == "GetVersionExW" || name == "LoadLibraryW" || name == "GetProcAddressW" ||
        name == "InitRichInkDLL" || name == "FreeLibrary") {
      ofLibraries.push_back(name);
    }
  }
  const std::vector<std::string> once{"GetVersionExW", "LoadLibraryW", "GetProcAddressW", "InitRichInkDLL",
                                      "FreeLibrary"};
  std::vector<std::string> twice = once;
  twice.insert(twice.end(), once.begin(), once.end());
  EXPECT_EQ(ofLibraries, twice);
  EXPECT_EQ(calls("LoadLibraryW")[0]["args"][0], "RichInk.dll");
  EXPECT_EQ(calls("GetProcAddressW")[0]["args"][1], "InitRichInkDLL");
}

TEST_F(RichInkLibraryOf, anOldPlatformIsNotLoaded) {
  observeCalls();
  for (const auto& [major, minor, build] :
       {std::tuple{3u, 0u, 11170u}, {3u, 1u, 20000u}, {2u, 12u, 20000u}}) {
    setVersion(major, minor, build);
    EXPECT_EQ(reply(request(6, kInkNote)), hex("01 00 00000000"));
    EXPECT_TRUE(callNames("LoadLibraryW").empty()) << major << '.' << minor << '.' << build;
    EXPECT_TRUE(callNames("FreeLibrary").empty());
  }
}

TEST_F(RichInkLibraryOf, thePlatformThatBroughtItIsLoaded) {
  setVersion(3, 0, 11171);
  observeCalls();
  reply(request(6, kInkNote));
  EXPECT_EQ(callNames("LoadLibraryW").size(), 1u);
}

TEST_F(RichInkLibraryOf, aLibraryThatIsMissingIsNotFreed) {
  observeCalls();
  fault("LoadLibraryW=126");
  EXPECT_EQ(reply(request(6, kInkNote)), hex("01 00 00000000"));
  EXPECT_TRUE(callNames("GetProcAddressW").empty());
  EXPECT_TRUE(callNames("FreeLibrary").empty());
}

TEST_F(RichInkLibraryOf, aLibraryWithoutItsEntryIsFreedAllTheSame) {
  observeCalls();
  fault("GetProcAddressW=127");
  EXPECT_EQ(reply(request(6, kInkNote)), hex("01 00 00000000"));
  EXPECT_TRUE(callNames("InitRichInkDLL").empty());
  EXPECT_EQ(callNames("FreeLibrary").size(), 1u);
}

}  // namespace
}  // namespace qorv
