// A stream over a connected socket, with a bound on every wait.
#pragma once

#include <chrono>
#include <string>

#include "desktop/descriptor.h"
#include "desktop/stream.h"

namespace desktop {

using Seconds = std::chrono::seconds;

class SocketStream : public Stream {
 public:
  /// `name` is how messages call the other side.
  SocketStream(Descriptor socket, std::string name, Seconds timeout)
      : socket_(std::move(socket)), name_(std::move(name)), timeout_(timeout) {}

  void write(BytesView bytes) override;
  std::size_t read(std::span<std::uint8_t> room) override;
  void finish() override;
  std::string endReason() override;

 protected:
  const std::string& name() const { return name_; }
  Seconds timeout() const { return timeout_; }

 private:
  void await(short events);

  Descriptor socket_;
  std::string name_;
  Seconds timeout_;
};

/// Waits until the descriptor is ready for `events` (as poll spells them); false when the time ran out.
bool awaitDescriptor(int descriptor, short events, Seconds timeout);

}  // namespace desktop
