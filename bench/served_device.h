// A fresh emulated device that serves the real agent over a socket, from a thread of its own.
#pragma once

#include <filesystem>
#include <thread>

#include "bench/loopback.h"
#include "bench/temporary_folder.h"
#include "emulator/device.h"

namespace bench {

/// Filled with appointments before it serves. Its session ends when it is destroyed.
class ServedDevice {
 public:
  explicit ServedDevice(int appointments);
  ~ServedDevice();

  [[nodiscard]] int socket() const { return pair_.requester.get(); }
  [[nodiscard]] std::uint32_t firstOid() const { return firstOid_; }

 private:
  [[nodiscard]] std::filesystem::path file() const { return folder_.path() / "device"; }
  void fill(int appointments);

  TemporaryFolder folder_;
  std::uint32_t firstOid_ = 0;
  Loopback pair_;
  std::thread thread_;
};

}  // namespace bench
