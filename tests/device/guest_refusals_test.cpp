// Files that are no device library, or none that the device can load: one line each, and nothing half done.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "emulator/session/session_error.h"
#include "tests/device/loaded_library.h"
#include "tests/device/tiny_library.h"

namespace test {
namespace {

using testing::EndsWith;
using testing::StartsWith;

class GuestRefusals : public testing::Test {
 protected:
  /// Empty when the library is loaded.
  std::string refusalOf(const std::vector<std::uint8_t>& bytes) {
    const std::string file = files_.write("bad.dll", std::string(bytes.begin(), bytes.end()));
    try {
      const auto agent = loaded_.load(file);
      return "";
    } catch (const emulator::SessionError& error) {
      const std::string said = error.what();
      EXPECT_THAT(said, StartsWith(file + ": the agent can't be loaded: "));
      EXPECT_EQ(said.find('\n'), std::string::npos) << said;
      return said;
    }
  }
  static TinyLibrary sound() { return {.session = {kReturn}, .imports = {"Sleep"}}; }

  emulator::test::TemporaryFolder files_;

 private:
  static std::string soundFile(const emulator::test::TemporaryFolder& folder) {
    const auto bytes = sound().bytes();
    return folder.write("sound.dll", std::string(bytes.begin(), bytes.end()));
  }
  LoadedLibrary loaded_{soundFile(files_)};

 protected:
  void SetUp() override { loaded_.agent = nullptr; }
};

TEST_F(GuestRefusals, areNotMadeForASoundLibrary) {
  EXPECT_EQ(refusalOf(sound().bytes()), "");
}

TEST_F(GuestRefusals, nameWhatIsWrong) {
  TinyLibrary library = sound();
  library.machine = 0x014C;
  EXPECT_THAT(refusalOf(library.bytes()), EndsWith("it is not for the ARM processor"));
  library = sound();
  library.imports = {"Sleep", "SleepWell"};
  EXPECT_THAT(refusalOf(library.bytes()), EndsWith("the device has no SleepWell in coredll.dll"));
  library = sound();
  library.exportName = "serve";
  EXPECT_THAT(refusalOf(library.bytes()), EndsWith("it has no entry 'rsCeApiMgr'"));
  library = sound();
  library.entry = {0xE3A00000, kReturn};  // mov r0, #0
  EXPECT_THAT(refusalOf(library.bytes()), EndsWith("it refuses to be attached"));
  library = sound();
  library.entry = {0xE7F000F0};  // no instruction
  EXPECT_THAT(refusalOf(library.bytes()), testing::HasSubstr("the processor can't go on"));
  library = sound();
  library.relocations = {0x3000};
  library.relocatedPage = 0x3000;  // where the image ends
  EXPECT_THAT(refusalOf(library.bytes()), EndsWith("a relocation lies outside the image"));
  library.relocatedPage = 0x2000;
  library.relocations = {0x3FFD};  // with three bytes left
  EXPECT_THAT(refusalOf(library.bytes()), EndsWith("a relocation lies outside the image"));
  library.relocations = {0x2000};  // the lower half of an address
  EXPECT_THAT(refusalOf(library.bytes()), EndsWith("it has a relocation of kind 2"));
  EXPECT_THAT(refusalOf({'#', '!'}), EndsWith("it is no portable executable"));
  EXPECT_THAT(refusalOf({}), EndsWith("the image is cut short"));
}

TEST_F(GuestRefusals, areMadeOfAFileThatIsCutShortAnywhere) {
  const auto whole = sound().bytes();
  for (std::size_t size = 0; size < whole.size(); size += size < 0x200 ? 1 : 64) {
    EXPECT_NE(refusalOf({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)}), "") << size;
  }
}

TEST_F(GuestRefusals, orALoadAreTheAnswerToAnyChangeOfAHeader) {
  const auto whole = sound().bytes();
  std::size_t refused = 0;
  const auto change = [&](std::size_t from, std::size_t to) {
    for (std::size_t at = from; at < to; ++at) {
      for (const std::uint8_t value : std::initializer_list<std::uint8_t>{0x00, 0xFF}) {
        auto bytes = whole;
        bytes[at] = value;
        refused += refusalOf(bytes) != "";
      }
    }
  };
  change(0x3C, 0x188);     // headers
  change(0x1300, 0x1314);  // imports
  change(0x1400, 0x1434);  // the export
  EXPECT_GT(refused, 100u);
}

}  // namespace
}  // namespace test
