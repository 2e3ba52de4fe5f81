// Addresses, and what is done with the file of a Unix socket.
#include <arpa/inet.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/un.h>

#include "emulator/session/listener.h"
#include "emulator/session/session_error.h"
#include "tests/emulator/session_pipe.h"

namespace emulator {
namespace {

using ::testing::HasSubstr;
using testing::Pipe;
using ::testing::StartsWith;

std::string complaint(const std::string& address) {
  try {
    const Listener listener(address);
  } catch (const SessionError& error) {
    return error.what();
  }
  return {};
}

Descriptor connectToPort(const std::string& address) {
  Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in target{};
  target.sin_family = AF_INET;
  target.sin_port = htons(static_cast<std::uint16_t>(std::stoi(address.substr(address.find(':') + 1))));
  target.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  EXPECT_EQ(connect(socket.get(), reinterpret_cast<sockaddr*>(&target), sizeof target), 0);
  return socket;
}

class UnixSocket : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string name = ::testing::TempDir() + "qorv-listener-XXXXXX";
    ASSERT_NE(mkdtemp(name.data()), nullptr);
    folder_ = name;
    path_ = folder_ / "device";
    address_ = "unix:" + path_.string();
  }
  void TearDown() override { std::filesystem::remove_all(folder_); }

  std::filesystem::path folder_;
  std::filesystem::path path_;
  std::string address_;
};

TEST(ListenerAddress, isOneOfTwoForms) {
  EXPECT_EQ(complaint("localhost:1"), "localhost:1: an address is 127.0.0.1:PORT or unix:PATH");
  EXPECT_THAT(complaint(""), HasSubstr("an address is"));
  EXPECT_THAT(complaint("0.0.0.0:5000"), HasSubstr("an address is"));
  EXPECT_EQ(complaint("127.0.0.1:"), "127.0.0.1:: a port is a number from 0 to 65535");
  EXPECT_THAT(complaint("127.0.0.1:65536"), HasSubstr("a port is"));
  EXPECT_THAT(complaint("127.0.0.1:1x"), HasSubstr("a port is"));
  EXPECT_EQ(complaint("unix:"), "unix:: the path is empty");
  EXPECT_THAT(complaint("unix:/" + std::string(200, 'x')), HasSubstr("too long"));
  EXPECT_EQ(complaint("unix:/no/such/folder/x"), "unix:/no/such/folder/x: No such file or directory");
}

TEST(ListenerAddress, namesThePortThatWasPicked) {
  const Listener listener("127.0.0.1:0");
  EXPECT_THAT(listener.address(), StartsWith("127.0.0.1:"));
  EXPECT_NE(listener.address(), "127.0.0.1:0");
}

TEST(ListenerAddress, thatIsInUseIsRefused) {
  const Listener listener("127.0.0.1:0");
  EXPECT_EQ(complaint(listener.address()), listener.address() + ": Address already in use");
}

TEST(Listener, sendsSmallRepliesAtOnce) {
  const Listener listener("127.0.0.1:0");
  const Descriptor desktop = connectToPort(listener.address());
  const auto device = listener.accept(-1);
  ASSERT_TRUE(device);
  int noDelay = 0;
  socklen_t size = sizeof noDelay;
  ASSERT_EQ(getsockopt(device->get(), IPPROTO_TCP, TCP_NODELAY, &noDelay, &size), 0);
  EXPECT_NE(noDelay, 0);
}

TEST(Listener, stopsWaiting) {
  const Listener listener("127.0.0.1:0");
  Pipe stop;
  testing::put(stop.write, {0});
  EXPECT_FALSE(listener.accept(stop.read.get()));
}

TEST_F(UnixSocket, isRemovedAtTheEnd) {
  {
    const Listener listener(address_);
    EXPECT_EQ(listener.address(), address_);
    EXPECT_TRUE(std::filesystem::is_socket(path_));
  }
  EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(UnixSocket, thatNobodyServesAnyMoreIsReplaced) {
  {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path_.string().copy(address.sun_path, sizeof address.sun_path - 1);
    const Descriptor left(::socket(AF_UNIX, SOCK_STREAM, 0));
    ASSERT_EQ(bind(left.get(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
  }
  ASSERT_TRUE(std::filesystem::is_socket(path_));
  EXPECT_EQ(complaint(address_), "");
}

TEST_F(UnixSocket, thatIsServedIsRefusedAndLeftAlone) {
  const Listener listener(address_);
  EXPECT_EQ(complaint(address_), address_ + ": Address already in use");
  EXPECT_TRUE(std::filesystem::is_socket(path_));
}

TEST_F(UnixSocket, thatIsServedGetsNoDesktopFromAnotherServersQuestion) {
  const Listener listener(address_);
  EXPECT_NE(complaint(address_), "");
  sockaddr_un target{};
  target.sun_family = AF_UNIX;
  path_.string().copy(target.sun_path, sizeof target.sun_path - 1);
  const Descriptor desktop(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  ASSERT_EQ(connect(desktop.get(), reinterpret_cast<sockaddr*>(&target), sizeof target), 0);
  ASSERT_EQ(write(desktop.get(), "y", 1), 1);
  // The first that is accepted is the one that connected: what it says arrives.
  const Pipe stop;
  const auto accepted = listener.accept(stop.read.get());
  ASSERT_TRUE(accepted);
  char said = 0;
  EXPECT_EQ(read(accepted->get(), &said, 1), 1);
  EXPECT_EQ(said, 'y');
}

TEST_F(UnixSocket, neverTakesThePlaceOfAnotherFile) {
  { std::ofstream(path_) << "mine"; }
  EXPECT_EQ(complaint(address_), address_ + ": Address already in use");
  EXPECT_TRUE(std::filesystem::is_regular_file(path_));
}

}  // namespace
}  // namespace emulator
