// qorv-device with libraries that break: one line says what happened, and the program's status tells of it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "emulator/session/descriptor.h"
#include "tests/apps/serve_process.h"
#include "tests/device/tiny_library.h"
#include "tests/emulator/temporary_folder.h"

namespace test {
namespace {

using serve_test::Outcome;
using testing::HasSubstr;
using testing::StartsWith;

class ServeLibrary : public testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(serve_test::run({QORV_DEVICE, "create", device_}).status, 0); }

  Outcome serve(const std::string& library, const std::vector<std::string>& options = {}) {
    std::vector<std::string> line{QORV_DEVICE, "serve", device_, "--stdio", "--agent", library};
    line.insert(line.end(), options.begin(), options.end());
    return serve_test::run(line);
  }
  std::string write(const std::vector<std::uint8_t>& bytes) {
    return files_.write("library.dll", std::string(bytes.begin(), bytes.end()));
  }
  /// Status 2, one line that begins with the file's name, and nothing for the desktop.
  void expectRefusal(const std::string& library, const std::string& report,
                     const std::vector<std::string>& options = {}) {
    const Outcome outcome = serve(library, options);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << outcome.errors;
    EXPECT_THAT(outcome.errors, StartsWith(library + ": "));
    EXPECT_THAT(outcome.errors, HasSubstr(report));
  }

  emulator::test::TemporaryFolder files_;
  std::string device_ = files_.file("device");
};

// mov r0, #0; mov pc, lr
const TinyLibrary kSound{.session = {0xE3A00000, kReturn}};
// mov r0, #0x12000000; ldr r0, [r0]
const TinyLibrary kWild{.session = {0xE3A00412, 0xE5900000, kReturn}};

TEST_F(ServeLibrary, servesALibraryOfTwoInstructions) {
  const Outcome outcome = serve(write(kSound.bytes()));
  EXPECT_EQ(outcome.status, 0) << outcome.errors;
  EXPECT_EQ(outcome.errors, "");
}

TEST_F(ServeLibrary, saysWhereALibraryWentWild) {
  expectRefusal(write(kWild.bytes()), "the processor can't go on: ");
  expectRefusal(write(kWild.bytes()), " at 0x12000000, ");
}

TEST_F(ServeLibrary, saysSoWithACallLogToo) {
  const std::string calls = files_.file("calls");
  expectRefusal(write(kWild.bytes()), " at 0x12000000, ", {"--calls", calls});
  // CompareFileTime(0, 0)
  const TinyLibrary null{.session = {kTakeSlots, 0xE3A00000, 0xE3A01000, kCallFirstImport},
                         .imports = {"CompareFileTime"}};
  expectRefusal(write(null.bytes()), "CompareFileTime: ", {"--calls", calls});
}

/// A desktop that says nothing; false when nobody listens there.
bool visit(const std::string& path) {
  const emulator::Descriptor desktop(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_un target{};
  target.sun_family = AF_UNIX;
  path.copy(target.sun_path, sizeof target.sun_path - 1);
  return connect(desktop.get(), reinterpret_cast<const sockaddr*>(&target), sizeof target) == 0;
}

TEST_F(ServeLibrary, servesTheNextDesktopAfterALibraryWentWild) {
  const std::string path = files_.file("socket");
  serve_test::Process process({QORV_DEVICE, "serve", device_, "--listen", "unix:" + path, "--sessions", "2",
                               "--agent", write(kWild.bytes())});
  EXPECT_EQ(process.errorLine(), "listening on unix:" + path);
  for (int session = 0; session < 2; ++session) {
    EXPECT_TRUE(visit(path));
    EXPECT_THAT(process.errorLine(), HasSubstr("the processor can't go on: "));
  }
  EXPECT_EQ(process.wait().status, 1);
}

TEST_F(ServeLibrary, refusesAFileThatIsNoLibrary) {
  auto bytes = kSound.bytes();
  bytes.resize(0x700);
  expectRefusal(write(bytes), "the agent can't be loaded: the image is cut short");
  TinyLibrary library = kSound;
  library.machine = 0x014C;
  expectRefusal(write(library.bytes()), "the agent can't be loaded: it is not for the ARM processor");
  library = kSound;
  library.imports = {"SleepWell"};
  expectRefusal(write(library.bytes()),
                "the agent can't be loaded: the device has no SleepWell in coredll.dll");
  library = kSound;
  library.exportName = "serve";
  expectRefusal(write(library.bytes()), "the agent can't be loaded: it has no entry 'rsCeApiMgr'");
  expectRefusal(write({}), "the agent can't be loaded: ");
  expectRefusal(write({'t', 'e', 'x', 't'}), "the agent can't be loaded: ");
}

}  // namespace
}  // namespace test
