// Where the library's memory and the platform meet: what a call needs to bring its values across.
#pragma once

#include <memory_resource>
#include <unordered_map>

#include "emulator/arm/callbacks.h"
#include "emulator/arm/guest_objects.h"

namespace emulator::arm {

/// A function of the platform, as a plain pointer.
using PlatformFunction = const void*;

struct Border {
  GuestMemory& memory;
  GuestHeap& heap;
  GuestObjects& objects;
  Callbacks& callbacks;
  /// Where the library finds a function that the platform hands out.
  std::unordered_map<PlatformFunction, GuestAddress> functions;
};

/// One call, until it returns: owns the host's copies of what the library gave.
class Crossing {
 public:
  explicit Crossing(Border& border) : border_(border) {}

  GuestMemory& memory() { return border_.memory; }
  GuestObjects& objects() { return border_.objects; }
  Callbacks& callbacks() { return border_.callbacks; }

  /// Room for that many values, which is not initialised.
  template <typename T>
  T* room(std::size_t count) {
    static_assert(std::is_trivially_destructible_v<T>);
    return static_cast<T*>(copies_.allocate(count * sizeof(T), alignof(T)));
  }

  /// The library's own bytes, as the host sees them; null for address 0.
  template <typename T>
  T* direct(GuestAddress address, std::size_t count = 1) {
    if (address == 0) return nullptr;
    if constexpr (std::is_void_v<T>) {
      return border_.memory.at(address, count);
    } else {
      return reinterpret_cast<T*>(border_.memory.at(address, count * sizeof(T), alignof(T)));
    }
  }
  /// As `direct`, for what the platform fills.
  template <typename T>
  T* writable(GuestAddress address, std::size_t count = 1) {
    if (address == 0) return nullptr;
    if constexpr (std::is_void_v<T>) {
      return border_.memory.writableAt(address, count);
    } else {
      return reinterpret_cast<T*>(border_.memory.writableAt(address, count * sizeof(T), alignof(T)));
    }
  }
  /// A text, of which the NUL is the library's too.
  template <typename Character>
  Character* text(GuestAddress address);

  /// A handle, which is only a number, or a block of the library's memory.
  void* opaque(std::uint32_t word) const;
  /// The other way. Throws GuestFault for memory of the host, which the library can't reach.
  std::uint32_t word(const void* pointer) const;
  /// A function of the platform that is handed out; 0 for null.
  std::uint32_t functionWord(PlatformFunction function) const;

 private:
  Border& border_;
  std::pmr::monotonic_buffer_resource copies_;
};

template <typename Character>
Character* Crossing::text(GuestAddress address) {
  if (address == 0) return nullptr;
  const std::size_t most = border_.memory.bytesFrom(address) / sizeof(Character);
  auto* const text = direct<Character>(address, most == 0 ? 1 : most);
  for (std::size_t i = 0; i < most; ++i) {
    if (text[i] == 0) return text;
  }
  throw GuestFault("a text has no end");
}

}  // namespace emulator::arm
