// Where desktops reach the device: a TCP port of this machine or a Unix socket.
#pragma once

#include <optional>
#include <string>

#include "emulator/session/descriptor.h"

namespace emulator {

class Listener {
 public:
  /// "127.0.0.1:PORT", where port 0 picks a free one, or "unix:PATH". A socket file that nobody serves any
  /// more is replaced; any other file at the path is left alone. Throws SessionError.
  explicit Listener(const std::string& address);
  /// Removes the socket file.
  ~Listener();
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  /// The address in use, with the port that was picked.
  const std::string& address() const { return address_; }
  /// Waits for the next desktop; nothing once `stop` is readable. Throws SessionError.
  std::optional<Descriptor> accept(int stop) const;

 private:
  void listenOnPort(const std::string& port);
  void listenOnPath();
  [[noreturn]] void fail(const std::string& reason) const;

  std::string address_;
  std::string path_;  ///< of the socket file; empty for a port
  Descriptor socket_;
};

}  // namespace emulator
