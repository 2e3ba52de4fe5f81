// What stands behind the addresses that the library takes for the platform's functions.
#pragma once

#include <string_view>
#include <vector>

#include "emulator/arm/border.h"
#include "emulator/arm/crossing_call.h"

namespace emulator::arm {

/// A function of the platform, or a member of one of its interfaces.
struct Trap {
  std::string_view name;
  /// Makes the call and returns the result's word.
  std::uint32_t (*carry)(Border& border, const Trap& trap, const ArgumentWords& words);
  PlatformFunction function = nullptr;       ///< null for a member
  const InterfaceInfo* interface = nullptr;  ///< null for a function
  std::size_t slot = 0;
};

/// Every function of the platform, and every member of every interface in the order of their slots; the C run
/// time's heap too.
std::vector<Trap> platformTraps();

}  // namespace emulator::arm
