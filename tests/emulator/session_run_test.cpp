// Sessions of a small agent that is loaded as the real one is.
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

#include "emulator/seam/current_device.h"
#include "emulator/session/agent_module.h"
#include "emulator/session/session.h"
#include "emulator/session/session_error.h"
#include "tests/emulator/calls_monitor_fixture.h"
#include "tests/emulator/session_pipe.h"

namespace emulator {
namespace {

using ::testing::ElementsAre;
using testing::get;
using ::testing::HasSubstr;
using testing::Link;
using testing::Message;
using ::testing::Not;
using testing::put;
using testing::TemporaryFile;

class SessionTest : public ::testing::Test {
 protected:
  static std::string newDevice() {
    const std::string path = ::testing::TempDir() + "qorv-session-" + std::to_string(getpid()) + ".qdev";
    std::filesystem::remove(path);
    Device::create(path, {});
    return path;
  }
  ~SessionTest() override {
    for (const char* suffix : {"", "-wal", "-shm"}) std::filesystem::remove(path_ + suffix);
  }

  static bool has(Device& device, const char16_t* file) {
    return device.files.fileAttributes(file) != 0xFFFFFFFF;
  }

  /// Sends requests, closes the desktop's side for writing, and runs the session to its end.
  HRESULT run(const std::vector<std::string>& requests, CallMonitor* monitor = nullptr) {
    for (const std::string& request : requests) send(request);
    shutdown(link_.desktop.get(), SHUT_WR);
    return serve(monitor);
  }
  HRESULT serve(CallMonitor* monitor = nullptr) {
    const HRESULT result =
        runSession(agent_, device_, monitor, Peer(link_.device.get(), link_.device.get(), -1));
    shutdown(link_.device.get(), SHUT_WR);
    return result;
  }
  void send(const std::string& request) {
    Message bytes{static_cast<std::uint8_t>(request.size()), 0, 0, 0};
    bytes.insert(bytes.end(), request.begin(), request.end());
    put(link_.desktop, bytes);
  }
  Message receive() {
    const Message length = get(link_.desktop, 4);
    return length.size() == 4 ? get(link_.desktop, length[0]) : Message();
  }

  std::string path_ = newDevice();
  Device device_{path_};
  CurrentDevice current_{device_};
  AgentModule agent_{QORV_TEST_AGENT, Modules::agent()};
  Link link_;
};

TEST_F(SessionTest, carriesRequestsAndReplies) {
  EXPECT_EQ(run({"ebye"}), S_OK);
  EXPECT_EQ(receive(), (Message{'b', 'y', 'e'}));
}

TEST_F(SessionTest, endsWhenTheDesktopGoes) {
  EXPECT_EQ(run({}), S_OK);
}

TEST_F(SessionTest, tellsTheAgentItsPlaceOnTheDevice) {
  run({"m"});
  const Message name = receive();
  const std::u16string_view path(reinterpret_cast<const char16_t*>(name.data()), name.size() / 2);
  EXPECT_EQ(path, kDefaultModulePath);
}

TEST_F(SessionTest, hasCommittedWhatAReplyAnswers) {
  std::thread desktop([&] {
    send("dkept");
    receive();
    // Another program opens the device between the reply and the end of the session.
    Device seen(path_);
    EXPECT_TRUE(has(seen, u"\\Temp\\kept"));
    send("e");
  });
  EXPECT_EQ(serve(), S_OK);
  desktop.join();
}

TEST_F(SessionTest, undoesARequestThatTheAgentLeft) {
  EXPECT_EQ(run({"dkept", "xlost"}), S_OK);
  EXPECT_TRUE(has(device_, u"\\Temp\\kept"));
  EXPECT_FALSE(has(device_, u"\\Temp\\lost"));
}

TEST_F(SessionTest, returnsTheAgentsFailure) {
  EXPECT_EQ(run({"f"}), E_FAIL);
}

TEST_F(SessionTest, followsOneThatFailed) {
  EXPECT_EQ(run({"f"}), E_FAIL);
  link_ = Link();
  EXPECT_EQ(run({"eagain"}), S_OK);
  EXPECT_EQ(receive().size(), 5u);
}

TEST_F(SessionTest, movesTheClockOnWithoutWaiting) {
  const Ticks before = device_.clock.now();
  const auto hostBefore = std::chrono::steady_clock::now();
  EXPECT_EQ(run({"s"}), S_OK);
  EXPECT_GE(device_.clock.now() - before, 60 * kTicksPerSecond);
  EXPECT_LT(std::chrono::steady_clock::now() - hostBefore, std::chrono::seconds(30));
}

TEST_F(SessionTest, logsWhatTheAgentCallsFromTheExportOn) {
  const TemporaryFile file;
  CallMonitor monitor(CallLog(file.path()), Faults({}),
                      [this](DWORD error) { device_.lastError.set(error); });
  EXPECT_EQ(run({"da", "e"}, &monitor), S_OK);
  EXPECT_THAT(
      file.lines(),
      ElementsAre(R"({"call": "IRAPIStream.Read", "args": [4], "result": 0})",
                  R"({"call": "IRAPIStream.Read", "args": [2], "result": 0})",
                  R"({"call": "CreateFileW", "args": ["\\Temp\\a", 1073741824, 0, null, 2, 128, null],)"
                  R"( "result": "@HANDLE#1"})",
                  R"({"call": "CloseHandle", "args": ["@HANDLE#1"], "result": 1})",
                  R"({"call": "IRAPIStream.Write", "args": [{"bytes": 4}, 4], "result": 0})",
                  R"({"call": "IRAPIStream.Write", "args": [null, 0], "result": 0})",
                  R"({"call": "IRAPIStream.Read", "args": [4], "result": 0})",
                  R"({"call": "IRAPIStream.Read", "args": [1], "result": 0})",
                  R"({"call": "IRAPIStream.Write", "args": [{"bytes": 4}, 4], "result": 0})",
                  R"({"call": "IRAPIStream.Write", "args": [{"bytes": 0}, 0], "result": 0})",
                  R"({"call": "IRAPIStream.Release", "args": [], "result": 0})"));
}

TEST_F(SessionTest, countsCallsAndNamesOverSessions) {
  const TemporaryFile file;
  CallMonitor monitor(CallLog(file.path()), Faults({parseFaultRule("CreateFileW#2=5")}),
                      [this](DWORD error) { device_.lastError.set(error); });
  EXPECT_EQ(run({"da", "f"}, &monitor), E_FAIL);
  link_ = Link();
  EXPECT_EQ(run({"db"}, &monitor), S_OK);
  EXPECT_TRUE(has(device_, u"\\Temp\\a"));
  EXPECT_FALSE(has(device_, u"\\Temp\\b"));
}

TEST_F(SessionTest, endsWhenItsStreamIsMadeToFail) {
  CallMonitor monitor(std::nullopt, Faults({parseFaultRule("IRAPIStream.Read=0x80004005")}), [](DWORD) {});
  EXPECT_EQ(run({"da"}, &monitor), S_OK);
  EXPECT_TRUE(receive().empty());
}

std::string complaint(const std::string& file) {
  try {
    const AgentModule agent(file, Modules::agent());
  } catch (const SessionError& error) {
    return error.what();
  }
  return {};
}

TEST(AgentFile, thatIsMissingIsNamed) {
  EXPECT_THAT(complaint("/no/such/agent.so"),
              HasSubstr("/no/such/agent.so: the agent can't be loaded: cannot open shared object file"));
}

TEST(AgentFile, isNeverSoughtAmongTheSystemsLibraries) {
  EXPECT_THAT(complaint("libm.so.6"), HasSubstr("libm.so.6: the agent can't be loaded: "));
  EXPECT_THAT(complaint("libm.so.6"), HasSubstr("No such file"));
}

TEST(AgentFile, thatIsNoLibraryIsRefused) {
  const TemporaryFile file;
  { std::ofstream(file.path()) << "text"; }
  EXPECT_THAT(complaint(file.path()), HasSubstr(file.path() + ": the agent can't be loaded: "));
  EXPECT_THAT(complaint(file.path()), Not(HasSubstr("\n")));
}

TEST(AgentFile, withoutTheExportIsRefused) {
  EXPECT_EQ(complaint(QORV_TEST_NO_AGENT),
            std::string(QORV_TEST_NO_AGENT) + ": the agent can't be loaded: it has no entry 'rsCeApiMgr'");
}

}  // namespace
}  // namespace emulator
