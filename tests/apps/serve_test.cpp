// qorv-device serve as a person and a desktop meet it, with the real agent.
#include <algorithm>
#include <arpa/inet.h>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "tests/apps/agent_option.h"
#include "tests/apps/serve_process.h"

namespace serve_test {
namespace {

using emulator::Descriptor;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// A message is a 32-bit length, low byte first, and that many bytes.
std::string message(const std::string& payload) {
  std::string bytes;
  for (const int shift : {0, 8, 16, 24}) bytes += static_cast<char>((payload.size() >> shift) & 0xFF);
  return bytes + payload;
}

std::string number(std::uint32_t value) {
  return message(std::string(value, '\0')).substr(0, 4);
}

// A request is a command, a data type and arguments; a text is its length in bytes and UTF-16.
const std::string kCountAppointments{"\x06\x02", 2};
const std::string kEnd{"\x01\x02", 2};
// Result 1, status 0, no items.
const std::string kNoItems("\x01\x00\x00\x00\x00\x00", 6);
const std::string kEmpty;

std::string text(const std::string& characters) {
  std::string bytes;
  for (const char character : characters) bytes += {character, '\0'};
  return message(bytes);
}

std::string appendFile(const std::string& path, const std::string& content) {
  return "\x12\x02" + text(path) + number(0) + message(content);
}

std::string readFile(const std::string& path, std::uint32_t count) {
  return "\x13\x02" + text(path) + number(0) + number(0) + number(count);
}

class Serve : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string name = ::testing::TempDir() + "qorv-serve-XXXXXX";
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    folder_ = name;
    device_ = folder_ + "/device.qdev";
    ASSERT_EQ(run({QORV_DEVICE, "create", device_}).status, 0);
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::vector<std::string> command(std::vector<std::string> options) const {
    std::vector<std::string> line{QORV_DEVICE, "serve", device_};
    if (std::ranges::find(options, "--agent") == options.end())
      std::ranges::copy(agentOption(), std::back_inserter(line));
    line.insert(line.end(), options.begin(), options.end());
    return line;
  }
  Outcome serve(std::vector<std::string> options, const std::string& input = {}) const {
    return run(command(std::move(options)), input);
  }

  /// The names of the calls in a log.
  std::vector<std::string> calls(const std::string& file) const {
    std::ifstream log(file);
    std::vector<std::string> names;
    for (std::string line; std::getline(log, line);) {
      const auto begin = line.find(": \"") + 3;
      names.push_back(line.substr(begin, line.find('"', begin) - begin));
    }
    return names;
  }

  std::string folder_;
  std::string device_;
};

/// A desktop's end of a session.
class Desktop {
 public:
  explicit Desktop(const std::string& address) {
    if (address.starts_with("unix:")) {
      sockaddr_un target{};
      target.sun_family = AF_UNIX;
      address.copy(target.sun_path, sizeof target.sun_path - 1, 5);
      open(AF_UNIX, target);
    } else {
      sockaddr_in target{};
      target.sin_family = AF_INET;
      target.sin_port = htons(static_cast<std::uint16_t>(std::stoi(address.substr(address.find(':') + 1))));
      target.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
      open(AF_INET, target);
    }
  }

  void send(const std::string& payload) {
    const std::string bytes = message(payload);
    EXPECT_EQ(::send(socket_.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL),
              static_cast<ssize_t>(bytes.size()));
  }
  std::string receive() {
    const std::string length = read(4);
    if (length.size() < 4) return "the device has hung up";
    std::uint32_t count = 0;
    for (int i = 3; i >= 0; --i)
      count = (count << 8) | static_cast<std::uint8_t>(length[static_cast<std::size_t>(i)]);
    return read(count);
  }
  std::string ask(const std::string& payload) {
    send(payload);
    return receive();
  }

 private:
  template <typename Address>
  void open(int family, const Address& target) {
    socket_ = Descriptor(socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0));
    EXPECT_EQ(connect(socket_.get(), reinterpret_cast<const sockaddr*>(&target), sizeof target), 0);
  }
  std::string read(std::size_t count) {
    std::string bytes(count, '\0');
    const ssize_t got = recv(socket_.get(), bytes.data(), count, MSG_WAITALL);
    bytes.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
    return bytes;
  }

  Descriptor socket_;
};

std::string addressIn(const std::string& line) {
  EXPECT_THAT(line, StartsWith("listening on "));
  return line.substr(std::string("listening on ").size());
}

TEST_F(Serve, carriesOneSessionOverStandardStreams) {
  const Outcome outcome = serve({"--stdio"}, message(kCountAppointments) + message(kEnd));
  EXPECT_EQ(outcome.output, message(kNoItems) + message(kEmpty));
  EXPECT_EQ(outcome.errors, "");
  EXPECT_EQ(outcome.status, 0);
}

TEST_F(Serve, endsWellWhenTheDesktopGoesWithoutAWord) {
  EXPECT_EQ(serve({"--stdio"}).status, 0);
  EXPECT_EQ(serve({"--stdio"}, "\x02").status, 0);
}

TEST_F(Serve, tellsWhenTheAgentFails) {
  const Outcome outcome = serve({"--stdio", "--fault", "CoCreateInstance=0x80040154"}, message(kEnd));
  EXPECT_EQ(outcome.output, "");
  EXPECT_EQ(outcome.errors, "rsCeApiMgr returned 0x80004005\n");
  EXPECT_EQ(outcome.status, 1);
}

TEST_F(Serve, outlivesAnAgentThatKeepsWhatItHas) {
  const Outcome outcome = serve({"--stdio", "--fault", "IPOutlookApp.Logon=0x80004005"}, message(kEnd));
  EXPECT_EQ(outcome.errors, "rsCeApiMgr returned 0x80004005\n");
  EXPECT_EQ(outcome.status, 1);
}

TEST_F(Serve, logsTheAgentsCallsInOrder) {
  const std::string log = folder_ + "/calls";
  { std::ofstream(log) << "old\n"; }
  EXPECT_EQ(serve({"--stdio", "--calls", log}, message(kEnd)).status, 0);
  EXPECT_THAT(calls(log),
              ElementsAre("GetModuleFileNameW", "CoInitializeEx", "RegOpenKeyExW", "CoCreateInstance",
                          "IPOutlookApp.Logon", "IRAPIStream.Read", "IRAPIStream.Read", "IRAPIStream.Write",
                          "IRAPIStream.Write", "IRAPIStream.Release", "IPOutlookApp.Logoff",
                          "IPOutlookApp.Release", "CoFreeUnusedLibraries"));
}

TEST_F(Serve, logsAnEntryOfALibraryUnderItsPlainName) {
  const std::string log = folder_ + "/calls";
  const Outcome outcome =
      serve({"--stdio", "--calls", log, "--fault", "CoCreateInstance=0x80040154*1"}, message(kEnd));
  EXPECT_EQ(outcome.status, 0);
  const auto names = calls(log);
  ASSERT_GT(names.size(), 9u);
  EXPECT_THAT(std::vector(names.begin() + 3, names.begin() + 9),
              ElementsAre("CoCreateInstance", "LoadLibraryW", "GetProcAddressW", "DllRegisterServer",
                          "FreeLibrary", "CoCreateInstance"));
}

TEST_F(Serve, takesSeveralFaults) {
  const std::string log = folder_ + "/calls";
  const Outcome outcome = serve(
      {"--stdio", "--fault", "CoCreateInstance=0x80040154*1", "--fault", "LoadLibraryW=126", "--calls", log},
      message(kEnd));
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(calls(log).back(), "LoadLibraryW");
}

TEST_F(Serve, servesOneDesktopAfterAnother) {
  Process process(command({"--listen", "127.0.0.1:0", "--sessions", "2"}));
  const std::string address = addressIn(process.errorLine());
  for (int session = 0; session < 2; ++session) {
    Desktop desktop(address);
    EXPECT_EQ(desktop.ask(kCountAppointments), kNoItems);
    EXPECT_EQ(desktop.ask(kEnd), kEmpty);
  }
  const Outcome outcome = process.wait();
  EXPECT_EQ(outcome.errors, "");
  EXPECT_EQ(outcome.status, 0);
}

TEST_F(Serve, goesOnAfterAFailedSessionAndTellsAtTheEnd) {
  Process process(command({"--listen", "unix:" + folder_ + "/socket", "--sessions", "2", "--fault",
                           "CoCreateInstance=0x80040154*2"}));
  const std::string address = addressIn(process.errorLine());
  EXPECT_EQ(Desktop(address).receive(), "the device has hung up");
  EXPECT_EQ(process.errorLine(), "rsCeApiMgr returned 0x80004005");
  EXPECT_EQ(Desktop(address).ask(kEnd), kEmpty);
  EXPECT_EQ(process.wait().status, 1);
  EXPECT_FALSE(std::filesystem::exists(folder_ + "/socket"));
}

TEST_F(Serve, goesOnAfterADesktopThatHangsUp) {
  Process process(command({"--listen", "127.0.0.1:0", "--sessions", "2"}));
  const std::string address = addressIn(process.errorLine());
  Desktop(address).send(kCountAppointments);
  EXPECT_EQ(Desktop(address).ask(kEnd), kEmpty);
  EXPECT_EQ(process.wait().status, 0);
}

TEST_F(Serve, endsCleanlyWhenItIsAskedToStop) {
  for (const int signal : {SIGTERM, SIGINT}) {
    Process process(command({"--listen", "unix:" + folder_ + "/socket"}));
    Desktop desktop(addressIn(process.errorLine()));
    EXPECT_EQ(desktop.ask(kCountAppointments), kNoItems);
    process.signal(signal);
    EXPECT_EQ(desktop.receive(), "the device has hung up");
    const Outcome outcome = process.wait();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_FALSE(std::filesystem::exists(folder_ + "/socket"));
  }
}

TEST_F(Serve, losesNothingThatWasAnsweredWhenItIsKilled) {
  {
    Process process(command({"--listen", "127.0.0.1:0"}));
    Desktop desktop(addressIn(process.errorLine()));
    // Result 1, a zero byte, error 0: the file is new.
    EXPECT_EQ(desktop.ask(appendFile("\\Temp\\a", "kept")), std::string("\x01\0\0\0\0\0", 6));
    process.signal(SIGKILL);
    EXPECT_EQ(process.wait().status, -SIGKILL);
  }
  const Outcome outcome = serve({"--stdio"}, message(readFile("\\Temp\\a", 100)) + message(kEnd));
  EXPECT_THAT(outcome.output, HasSubstr(message("kept")));
}

// Bad command lines and files: one line that says what and where, status 2, and nothing served.
void expectRefusal(const Outcome& outcome, const std::string& complaint) {
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.output, "");
  EXPECT_THAT(outcome.errors, HasSubstr(complaint));
  EXPECT_EQ(std::ranges::count(outcome.errors, '\n'), 1) << outcome.errors;
}

TEST_F(Serve, refusesAWrongCommandLine) {
  expectRefusal(serve({}), "--stdio");
  expectRefusal(serve({"--stdio", "--listen", "127.0.0.1:0"}), "--listen");
  expectRefusal(serve({"--stdio", "--verbose"}), "--verbose");
  expectRefusal(serve({"--stdio", "--sessions", "2"}), "--sessions");
  expectRefusal(serve({"--listen", "127.0.0.1:0", "--sessions", "0"}), "--sessions");
  expectRefusal(serve({"--listen", "127.0.0.1:0", "--sessions", "many"}), "--sessions");
  expectRefusal(serve({"--listen", "127.0.0.1:0", "--sessions", "99999999999999999999999"}), "--sessions");
  expectRefusal(serve({"--stdio", "--calls", ""}), "--calls");
  expectRefusal(serve({"--stdio", "--agent", ""}), "--agent");
  expectRefusal(serve({"--listen"}), "--listen");
}

TEST_F(Serve, refusesAFaultRuleThatNamesNoCall) {
  expectRefusal(serve({"--stdio", "--fault", "IAppointment.Sav=1"}),
                "fault rule 'IAppointment.Sav=1': the platform has no call 'IAppointment.Sav'");
}

TEST_F(Serve, refusesADeviceThatIsNone) {
  const std::string missing = folder_ + "/missing";
  expectRefusal(run({QORV_DEVICE, "serve", missing, "--stdio"}), missing);
  EXPECT_FALSE(std::filesystem::exists(missing));
  const std::string other = folder_ + "/text";
  { std::ofstream(other) << "no device"; }
  expectRefusal(run({QORV_DEVICE, "serve", other, "--stdio"}), other);
}

TEST_F(Serve, refusesAnAgentThatCantBeLoaded) {
  expectRefusal(serve({"--stdio", "--agent", folder_ + "/agent.so"}),
                folder_ + "/agent.so: the agent can't be loaded: ");
}

TEST_F(Serve, refusesALogThatCantBeWritten) {
  expectRefusal(serve({"--stdio", "--calls", folder_ + "/no/calls"}),
                folder_ + "/no/calls: the call log can't be");
}

TEST_F(Serve, refusesAnAddressThatCantBeBound) {
  expectRefusal(serve({"--listen", "unix:" + folder_ + "/no/socket"}), folder_ + "/no/socket: No such file");
  expectRefusal(serve({"--listen", "somewhere"}), "somewhere: an address is");
}

TEST_F(Serve, emptiesNoLogWhenItCantServe) {
  const std::string log = folder_ + "/calls";
  { std::ofstream(log) << "old\n"; }
  expectRefusal(serve({"--listen", "somewhere", "--calls", log}), "somewhere");
  EXPECT_EQ(std::filesystem::file_size(log), 4u);
}

std::string contentOf(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

TEST_F(Serve, writesNoLogOverItsDevice) {
  const std::string before = contentOf(device_);
  std::filesystem::create_hard_link(device_, folder_ + "/hard");
  std::filesystem::create_symlink("device.qdev", folder_ + "/soft");
  for (const std::string& log : {device_, folder_ + "/./device.qdev", folder_ + "/hard", folder_ + "/soft",
                                 device_ + "-wal", device_ + "-shm"}) {
    expectRefusal(serve({"--stdio", "--calls", log}),
                  log + ": the call log can't be written over the device");
    EXPECT_TRUE(contentOf(device_) == before) << log;
  }
  expectRefusal(run({QORV_DEVICE, "serve", folder_ + "/soft", "--stdio", "--calls", device_}),
                device_ + ": the call log can't be written over the device");
  EXPECT_TRUE(contentOf(device_) == before);
}

TEST_F(Serve, writesNoLogOverItsAgent) {
  const std::string agent = folder_ + "/agent.so";
  { std::ofstream(agent) << "an agent"; }
  expectRefusal(serve({"--stdio", "--agent", agent, "--calls",
                       folder_ + "/../" + folder_.substr(folder_.rfind('/') + 1) + "/agent.so"}),
                "the call log can't be written over the agent");
  EXPECT_EQ(contentOf(agent), "an agent");
}

}  // namespace
}  // namespace serve_test
