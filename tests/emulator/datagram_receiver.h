// Receives datagrams on the loopback address of the host.
#pragma once

#include <cstdint>
#include <string>

#include "emulator/session/descriptor.h"

namespace emulator::test {

// The host's own socket headers are not included here: some of their names are macros.
class DatagramReceiver {
 public:
  /// On the port, or on any free one. A port that is given is waited for: other tests want it too.
  explicit DatagramReceiver(std::uint16_t port = 0);

  /// In network order.
  [[nodiscard]] std::uint16_t port() const { return port_; }
  /// The next datagram; "no datagram came" when none arrives.
  [[nodiscard]] std::string receive() const;

 private:
  Descriptor lock_;
  Descriptor socket_;
  std::uint16_t port_ = 0;
};

}  // namespace emulator::test
