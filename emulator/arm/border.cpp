#include "emulator/arm/border.h"

#include <limits>

namespace emulator::arm {

namespace {

constexpr std::uint32_t kAllOnes = std::numeric_limits<std::uint32_t>::max();

}  // namespace

void* Crossing::opaque(std::uint32_t word) const {
  if (word == kAllOnes) return reinterpret_cast<void*>(~std::uintptr_t{0});
  if (border_.memory.bytesFrom(word) != 0) return border_.memory.at(word, 1);
  return reinterpret_cast<void*>(std::uintptr_t{word});
}

std::uint32_t Crossing::word(const void* pointer) const {
  const auto value = reinterpret_cast<std::uintptr_t>(pointer);
  if (value == ~std::uintptr_t{0}) return kAllOnes;
  if (const auto address = border_.memory.find(pointer)) return *address;
  if (value <= kAllOnes) return static_cast<std::uint32_t>(value);
  throw GuestFault("the platform hands out memory that the library can't reach");
}

std::uint32_t Crossing::functionWord(PlatformFunction function) const {
  if (function == nullptr) return 0;
  const auto found = border_.functions.find(function);
  if (found == border_.functions.end())
    throw GuestFault("the platform hands out a function that has no trap");
  return found->second;
}

}  // namespace emulator::arm
