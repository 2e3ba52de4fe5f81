#include "emulator/seam/current_device.h"

#include <cstdio>
#include <cstdlib>

namespace emulator {

namespace {

// The platform's calls are plain functions, so what they reach can't be handed to them.
CurrentDevice* current = nullptr;

}  // namespace

CurrentDevice::CurrentDevice(Device& device, CallMonitor* monitor)
    : device_(device), monitor_(monitor), previous_(current) {
  current = this;
}

CurrentDevice::~CurrentDevice() {
  current = previous_;
}

CurrentDevice& CurrentDevice::get() {
  if (current == nullptr) {
    std::fputs("a call of the platform was made while no device is current\n", stderr);
    std::abort();
  }
  return *current;
}

}  // namespace emulator
