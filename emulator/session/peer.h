// The bytes to and from the desktop, over a pair of pipes or a socket.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace emulator {

/// Borrows its descriptors. A signal that asks the program to stop ends every wait.
class Peer {
 public:
  /// `stop` becomes readable when waiting shall end; -1 for never.
  Peer(int in, int out, int stop);

  /// Waits until the buffer is full or the stream ends; how many bytes came. Negative when the descriptor
  /// failed, or the wait was ended, before any did.
  std::ptrdiff_t receive(std::span<std::uint8_t> buffer);
  /// Sends everything, over a socket with one call when it takes it at once. False when it can't.
  bool send(std::span<const std::uint8_t> bytes);

 private:
  bool wait(int descriptor, short event) const;
  std::ptrdiff_t sendSome(std::span<const std::uint8_t> bytes) const;

  int in_;
  int out_;
  int stop_;
  bool outIsSocket_;
};

}  // namespace emulator
