#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>

#include "desktop/command_stream.h"
#include "desktop/connect.h"
#include "desktop/device_error.h"
#include "desktop/input_error.h"
#include "tests/desktop/temporary_folder.h"
#include "tests/desktop/wire_bytes.h"

namespace {

using namespace desktop;

constexpr Seconds kTimeout{5};
constexpr Seconds kShortTimeout{1};

/// What an action says when it finds no device.
template <typename Action>
std::string absence(Action action) {
  try {
    action();
  } catch (const NoDevice& error) {
    return error.what();
  }
  return "none";
}

/// Reads until the stream ends.
std::string readAll(Stream& stream) {
  std::string all;
  std::array<std::uint8_t, 7> room;
  while (const std::size_t got = stream.read(room)) all.append(room.begin(), room.begin() + got);
  return all;
}

Bytes bytesOf(std::string_view text) {
  return {text.begin(), text.end()};
}

/// Listens on an address of the system's choice.
class Listener {
 public:
  Listener() : socket_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in name{};
    name.sin_family = AF_INET;
    name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof name;
    EXPECT_EQ(::bind(socket_.get(), reinterpret_cast<sockaddr*>(&name), size), 0);
    EXPECT_EQ(::listen(socket_.get(), 1), 0);
    EXPECT_EQ(::getsockname(socket_.get(), reinterpret_cast<sockaddr*>(&name), &size), 0);
    address_ = "127.0.0.1:" + std::to_string(ntohs(name.sin_port));
  }

  const std::string& address() const { return address_; }
  Descriptor accept() { return Descriptor(::accept(socket_.get(), nullptr, nullptr)); }

 private:
  Descriptor socket_;
  std::string address_;
};

TEST(Address, isHostAndPortOrAPath) {
  for (const char* address :
       {"", "127.0.0.1", "127.0.0.1:", ":80", "127.0.0.1:0", "127.0.0.1:65536", "127.0.0.1:8o", "unix:"}) {
    EXPECT_THROW(connectTo(address, kTimeout), InputError) << address;
  }
  EXPECT_THROW(connectTo("unix:" + std::string(200, 'x'), kTimeout), InputError);
}

TEST(Connection, carriesBytesBothWays) {
  Listener listener;
  const auto stream = connectTo(listener.address(), kTimeout);
  const Descriptor other = listener.accept();
  stream->write(bytesOf("ping"));
  std::array<char, 8> room{};
  ASSERT_EQ(::recv(other.get(), room.data(), room.size(), 0), 4);
  EXPECT_STREQ(room.data(), "ping");
  ASSERT_EQ(::send(other.get(), "pong", 4, 0), 4);
  ::shutdown(other.get(), SHUT_WR);
  EXPECT_EQ(readAll(*stream), "pong");
  EXPECT_EQ(stream->endReason(), listener.address() + " closed the connection");
}

TEST(Connection, carriesMoreThanTheSystemHolds) {
  Listener listener;
  const auto stream = connectTo(listener.address(), kTimeout);
  Descriptor other = listener.accept();
  const std::size_t size = 20'000'000;
  std::size_t received = 0;
  std::thread reader([&] {
    std::vector<char> room(65536);
    while (received < size) {
      const ssize_t got = ::recv(other.get(), room.data(), room.size(), 0);
      if (got <= 0) break;
      received += static_cast<std::size_t>(got);
    }
  });
  stream->write(Bytes(size));
  reader.join();
  EXPECT_EQ(received, size);
}

TEST(Connection, isRefusedWhereNobodyListens) {
  std::string address;
  {
    Listener listener;
    address = listener.address();
  }
  EXPECT_EQ(absence([&] { connectTo(address, kTimeout); }),
            "no device at " + address + ": Connection refused");
  TemporaryFolder folder;
  const std::string path = "unix:" + (folder / "none").string();
  EXPECT_EQ(absence([&] { connectTo(path, kTimeout); }),
            "no device at " + path + ": No such file or directory");
}

TEST(Connection, goesOverAPath) {
  TemporaryFolder folder;
  const std::string path = (folder / "device").string();
  const Descriptor listener(::socket(AF_UNIX, SOCK_STREAM, 0));
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  path.copy(name.sun_path, sizeof name.sun_path - 1);
  ASSERT_EQ(::bind(listener.get(), reinterpret_cast<const sockaddr*>(&name), sizeof name), 0);
  ASSERT_EQ(::listen(listener.get(), 1), 0);
  const auto stream = connectTo("unix:" + path, kTimeout);
  const Descriptor other(::accept(listener.get(), nullptr, nullptr));
  ASSERT_EQ(::send(other.get(), "pong", 4, 0), 4);
  ::shutdown(other.get(), SHUT_WR);
  EXPECT_EQ(readAll(*stream), "pong");
}

TEST(Connection, waitsNoLongerThanItsTimeOut) {
  Listener listener;
  const auto stream = connectTo(listener.address(), kShortTimeout);
  const Descriptor other = listener.accept();
  std::array<std::uint8_t, 1> room;
  EXPECT_EQ(absence([&] { stream->read(room); }), listener.address() + " gives no answer within 1 seconds");
}

TEST(Connection, noticesThatTheOtherSideIsGone) {
  Listener listener;
  const auto stream = connectTo(listener.address(), kTimeout);
  listener.accept().reset();
  const auto writeOn = [&] {
    for (int i = 0; i < 1000; ++i) stream->write(Bytes(100'000));
  };
  EXPECT_EQ(absence(writeOn), listener.address() + " closed the connection without an answer");
}

TEST(DeviceCommand, speaksThroughItsInputAndOutput) {
  const auto stream = startCommand("read line; echo \"got $line\"", kTimeout);
  stream->write(bytesOf("ping\n"));
  EXPECT_EQ(readAll(*stream), "got ping\n");
  EXPECT_NO_THROW(stream->finish());
}

TEST(DeviceCommand, saysHowItEnded) {
  const auto failed = startCommand("exit 7", kTimeout);
  EXPECT_EQ(readAll(*failed), "");
  EXPECT_EQ(failed->endReason(), "the device's command ended with status 7");
  const auto killed = startCommand("kill -9 $$", kTimeout);
  EXPECT_EQ(readAll(*killed), "");
  EXPECT_EQ(killed->endReason(), "the device's command ended by signal 9");
}

TEST(DeviceCommand, failsItsSessionWithItsStatus) {
  const auto stream = startCommand("cat > /dev/null; exit 1", kTimeout);
  EXPECT_THROW(stream->finish(), DeviceRefusal);
}

TEST(DeviceCommand, isTerminatedWhenItStaysOn) {
  const auto stream = startCommand("exec sleep 100", kShortTimeout);
  EXPECT_THROW(stream->finish(), DeviceRefusal);
  EXPECT_EQ(stream->endReason(), "the device's command ended by signal 15");
}

/// The process that a command names in its first line.
pid_t readProcess(Stream& stream) {
  std::array<std::uint8_t, 1> room;
  std::string line;
  while (stream.read(room) == 1 && room[0] != '\n') line += static_cast<char>(room[0]);
  return std::stoi(line);
}

/// Whether it ends soon; one that has ended may wait for its parent as a zombie.
bool isGoneSoon(pid_t process) {
  const std::string file = "/proc/" + std::to_string(process) + "/stat";
  for (int i = 0; i < 100; ++i) {
    std::string text;
    std::getline(std::ifstream(file), text);
    if (text.empty() || text.find(") Z ") != std::string::npos) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

TEST(DeviceCommand, takesWhomItStartedAlongWhenItStaysOn) {
  auto stream = startCommand("sleep 100 & echo $!; wait", kShortTimeout);
  const pid_t sleeper = readProcess(*stream);
  stream.reset();
  EXPECT_TRUE(isGoneSoon(sleeper));
}

TEST(DeviceCommand, takesWhomItStartedAlongWhenItEndsEarly) {
  auto stream = startCommand("sleep 100 & echo $!; exit 3", kShortTimeout);
  const pid_t sleeper = readProcess(*stream);
  stream.reset();
  EXPECT_TRUE(isGoneSoon(sleeper));
}

}  // namespace
