#include "tests/emulator/datagram_receiver.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/file.h>
#include <sys/socket.h>

namespace emulator::test {
namespace {

/// One receiver at a time has a port that several tests want; they may run in several processes.
Descriptor lockPort(std::uint16_t port) {
  const std::string file = "/tmp/qorv-udp-port-" + std::to_string(port);
  Descriptor lock(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666));
  EXPECT_EQ(::flock(lock.get(), LOCK_EX), 0) << file;
  return lock;
}

}  // namespace

DatagramReceiver::DatagramReceiver(std::uint16_t port)
    : lock_(port == 0 ? Descriptor() : lockPort(port)),
      socket_(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
  sockaddr_in name{};
  name.sin_family = AF_INET;
  name.sin_port = htons(port);
  name.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t size = sizeof name;
  EXPECT_EQ(::bind(socket_.get(), reinterpret_cast<sockaddr*>(&name), size), 0) << "port " << port;
  EXPECT_EQ(::getsockname(socket_.get(), reinterpret_cast<sockaddr*>(&name), &size), 0);
  port_ = name.sin_port;
  const timeval patience{10, 0};
  EXPECT_EQ(::setsockopt(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience), 0);
}

std::string DatagramReceiver::receive() const {
  std::string data(0x10000, '#');
  const ssize_t size = ::recv(socket_.get(), data.data(), data.size(), 0);
  if (size < 0) return "no datagram came";
  data.resize(static_cast<std::size_t>(size));
  return data;
}

}  // namespace emulator::test
