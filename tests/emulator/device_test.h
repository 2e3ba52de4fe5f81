// A fresh emulated device for a test, with a host clock that stands still.
#pragma once

#include <gtest/gtest.h>
#include <optional>
#include <sstream>
#include <string>

#include "emulator/device.h"
#include "tests/emulator/temporary_folder.h"

namespace emulator::test {

class DeviceTest : public ::testing::Test {
 protected:
  /// `memory`: where the device allocates for an agent, when not in the program's own memory.
  explicit DeviceTest(PlatformMemory* memory = nullptr) : memory_(memory) {
    NewDevice description;
    description.hostClock = [this] { return hostNow_; };
    Device::create(path_, description);
    open();
  }

  Device& device() { return *device_; }

  /// Commits, closes the device and opens it again.
  void reopen() {
    device_->commit();
    device_.reset();
    open();
  }

  TemporaryFolder folder_;
  const std::string path_ = folder_.file("device");
  /// 2005-03-14 12:00:00 UTC.
  Ticks hostNow_ = ticksOf(SYSTEMTIME{2005, 3, 0, 14, 12, 0, 0, 0}).value();
  std::ostringstream messages_;

 private:
  void open() {
    device_.emplace(path_,
                    DeviceOptions{Clock::Pace::Skipping, [this] { return hostNow_; }, messages_, memory_});
  }

  PlatformMemory* memory_;
  std::optional<Device> device_;
};

}  // namespace emulator::test
