#include "emulator/system/datagram_socket.h"

#include <arpa/inet.h>
#include <cerrno>
#include <netinet/in.h>
#include <sys/socket.h>
#include <system_error>

namespace emulator {
namespace {

[[noreturn]] void fail() {
  throw std::system_error(errno, std::generic_category());
}

}  // namespace

DatagramSocket::DatagramSocket() : descriptor_(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_UDP)) {
  if (!descriptor_) fail();
}

std::size_t DatagramSocket::sendTo(const Ipv4Endpoint& to, std::span<const char> data) const {
  sockaddr_in target{};
  target.sin_family = AF_INET;
  target.sin_port = to.port;
  target.sin_addr.s_addr = to.address;
  const ssize_t sent = ::sendto(descriptor_.get(), data.data(), data.size(), 0,
                                reinterpret_cast<const sockaddr*>(&target), sizeof target);
  if (sent < 0) fail();
  return static_cast<std::size_t>(sent);
}

std::uint32_t parseIpv4Address(const char* text) {
  return text == nullptr ? INADDR_NONE : ::inet_addr(text);
}

}  // namespace emulator
