// A datagram socket of the host: the way of the device's datagrams into the real network.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "emulator/session/descriptor.h"

namespace emulator {

/// Both words as they lie in memory, in network order.
struct Ipv4Endpoint {
  std::uint32_t address = 0;
  std::uint16_t port = 0;
};

/// Both calls throw std::system_error with the host's reason.
class DatagramSocket {
 public:
  DatagramSocket();

  /// Sends one datagram, which may be empty. The bytes sent.
  std::size_t sendTo(const Ipv4Endpoint& to, std::span<const char> data) const;

 private:
  Descriptor descriptor_;
};

/// The address of a dotted text, in network order; all ones when it is none.
std::uint32_t parseIpv4Address(const char* text);

}  // namespace emulator
