// The device's sockets: real datagrams on the loopback address.
#include <cstring>

#include "tests/emulator/datagram_receiver.h"
#include "tests/emulator/device_test.h"

namespace emulator {
namespace {

class DeviceSockets : public test::DeviceTest {
 protected:
  Sockets& sockets() { return device().sockets; }
  int lastError() { return static_cast<int>(device().lastError.value()); }
  void start() {
    WSADATA data;
    ASSERT_EQ(sockets().startUp(0x0101, &data), 0);
  }
  SOCKET newSocket() { return sockets().open(2, 2, 17); }

  const test::DatagramReceiver receiver_;
  /// 127.0.0.1 in network order.
  const SOCKADDR_IN target_{2, receiver_.port(), 0x0100007F, {}};
};

TEST_F(DeviceSockets, aDatagramArrivesAsItWasSent) {
  start();
  const SOCKET socket = newSocket();
  EXPECT_EQ(sockets().sendTo(socket, "a\0b", 3, 0, &target_, 16), 3);
  EXPECT_EQ(receiver_.receive(), std::string("a\0b", 3));
  EXPECT_EQ(sockets().sendTo(socket, "", 0, 0, &target_, 16), 0);
  EXPECT_EQ(receiver_.receive(), "");
}

TEST_F(DeviceSockets, thereIsOneVersion) {
  WSADATA data;
  std::memset(&data, 0x5A, sizeof data);
  EXPECT_EQ(sockets().startUp(0x0202, &data), 0);
  EXPECT_EQ(data.wVersion, 0x0101);
  EXPECT_EQ(data.wHighVersion, 0x0101);
  EXPECT_STREQ(data.szSystemStatus, "Running");
  EXPECT_EQ(sockets().startUp(0x0001, &data), 10092);  // version 1.0: the major version is the low byte
  EXPECT_EQ(sockets().startUp(0x0101, nullptr), 10014);
  EXPECT_EQ(sockets().startUps(), 1u);
}

TEST_F(DeviceSockets, nothingWorksBeforeTheStart) {
  EXPECT_EQ(newSocket(), INVALID_SOCKET);
  EXPECT_EQ(lastError(), 10093);
  device().lastError.set(0);
  EXPECT_EQ(sockets().sendTo(1, "", 0, 0, &target_, 16), SOCKET_ERROR);
  EXPECT_EQ(lastError(), 10093);
  EXPECT_EQ(sockets().close(1), SOCKET_ERROR);
  EXPECT_EQ(sockets().cleanUp(), SOCKET_ERROR);
}

TEST_F(DeviceSockets, theLastCleanUpClosesWhatIsOpen) {
  start();
  start();
  const SOCKET socket = newSocket();
  EXPECT_EQ(sockets().cleanUp(), 0);
  EXPECT_EQ(sockets().openCount(), 1u);
  EXPECT_EQ(sockets().cleanUp(), 0);
  EXPECT_EQ(sockets().openCount(), 0u);
  start();
  EXPECT_EQ(sockets().close(socket), SOCKET_ERROR);
  EXPECT_EQ(lastError(), 10038);
}

TEST_F(DeviceSockets, areDatagramSocketsOfOneFamily) {
  start();
  const auto refused = [this](int family, int type, int protocol) {
    EXPECT_EQ(sockets().open(family, type, protocol), INVALID_SOCKET);
    return lastError();
  };
  EXPECT_EQ(refused(23, 2, 17), 10047);
  EXPECT_EQ(refused(2, 1, 6), 10044);
  EXPECT_EQ(refused(2, 2, 6), 10043);
  EXPECT_NE(sockets().open(2, 2, 0), INVALID_SOCKET);
}

TEST_F(DeviceSockets, aTargetMustBeOne) {
  start();
  const SOCKET socket = newSocket();
  const auto refused = [&](int size, int flags, const SOCKADDR_IN* to, int toSize) {
    EXPECT_EQ(sockets().sendTo(socket, "abc", size, flags, to, toSize), SOCKET_ERROR);
    return lastError();
  };
  SOCKADDR_IN other = target_;
  other.sin_family = 23;
  EXPECT_EQ(refused(3, 1, &target_, 16), 10045);
  EXPECT_EQ(refused(-1, 0, &target_, 16), 10014);
  EXPECT_EQ(refused(3, 0, nullptr, 16), 10014);
  EXPECT_EQ(refused(3, 0, &target_, 15), 10014);
  EXPECT_EQ(refused(3, 0, &other, 16), 10047);
  EXPECT_EQ(sockets().sendTo(socket + 4, "abc", 3, 0, &target_, 16), SOCKET_ERROR);
  EXPECT_EQ(lastError(), 10038);
}

TEST_F(DeviceSockets, aDatagramThatIsTooLongIsRefused) {
  start();
  const std::string tooLong(65508, 'x');  // 65535 less 20 and 8 bytes of headers, and one more
  EXPECT_EQ(sockets().sendTo(newSocket(), tooLong.data(), 65508, 0, &target_, 16), SOCKET_ERROR);
  EXPECT_EQ(lastError(), 10040);
}

TEST_F(DeviceSockets, anAddressIsFourNumbers) {
  EXPECT_EQ(parseIpv4Address("10.1.2.3"), 0x0302010Au);
  EXPECT_EQ(parseIpv4Address("desktop"), 0xFFFFFFFFu);
  EXPECT_EQ(parseIpv4Address(nullptr), 0xFFFFFFFFu);
}

TEST(DeviceDebugOutput, isKeptAndReportedLineByLine) {
  std::ostringstream report;
  DebugOutput output(report);
  output.send(u"one\r\ntwo\n");
  output.send(u"");
  EXPECT_EQ(report.str(), "debugger: one\\ntwo\ndebugger: \n");
  ASSERT_EQ(output.sent().size(), 2u);
  EXPECT_EQ(output.sent()[0], u"one\r\ntwo\n");
}

}  // namespace
}  // namespace emulator
