// An emulated device that serves the real agent over a socket from a process of its own, so that several can
// be asked in turn.
#pragma once

#include <functional>
#include <sys/types.h>

#include "bench/loopback.h"
#include "bench/temporary_folder.h"
#include "emulator/device.h"

namespace bench {

/// Its session ends when it is destroyed and nobody else holds its socket. To be made while the program has one thread.
class ServedProcess {
 public:
  /// `fill` gets the fresh device; what it makes is committed.
  explicit ServedProcess(const std::function<void(emulator::Device&)>& fill);
  ServedProcess(const ServedProcess&) = delete;
  ServedProcess& operator=(const ServedProcess&) = delete;
  ~ServedProcess();

  [[nodiscard]] int socket() const { return pair_.requester.get(); }

 private:
  TemporaryFolder folder_;
  Loopback pair_;
  pid_t process_;
};

}  // namespace bench
