// What ends a session of the device library: it did something that a device's processor does not survive.
#pragma once

#include <stdexcept>

namespace emulator::arm {

class GuestFault : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace emulator::arm
