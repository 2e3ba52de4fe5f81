// The emulated processor's memory, as the host reads and writes it: every access is checked.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "emulator/arm/guest_fault.h"

namespace emulator::arm {

using GuestAddress = std::uint32_t;

enum class Access : std::uint8_t { Read = 1, ReadWrite = 3, ReadExecute = 5 };

inline constexpr GuestAddress kPageSize = 0x1000;

/// Rounded up to whole pages.
constexpr std::size_t wholePages(std::size_t size) {
  return (size + kPageSize - 1) / kPageSize * kPageSize;
}

/// A run of pages. Its bytes begin as zero.
class Region {
 public:
  Region(std::string name, GuestAddress start, std::size_t size, Access access);

  const std::string& name() const { return name_; }
  GuestAddress start() const { return start_; }
  std::size_t size() const { return size_; }
  Access access() const { return access_; }
  std::uint8_t* bytes() const { return bytes_.get(); }

  bool contains(GuestAddress address, std::size_t size) const {
    return address >= start_ && size <= size_ && address - start_ <= size_ - size;
  }

 private:
  struct Unmapper {
    std::size_t size;
    void operator()(std::uint8_t* bytes) const;
  };

  std::string name_;
  GuestAddress start_;
  std::size_t size_;
  Access access_;
  std::unique_ptr<std::uint8_t[], Unmapper> bytes_;
};

class GuestMemory {
 public:
  /// Start and size are whole pages that no region has yet. The region lives until it is dropped, at the
  /// latest as long as the memory.
  Region& add(std::string name, GuestAddress start, std::size_t size, Access access);

  /// Takes the regions back that were added after the first `count`.
  void dropAfter(std::size_t count) { regions_.resize(count); }

  /// The host's view of that many bytes; throws GuestFault when they are not all the guest's. The alignment
  /// is what the device's processor asks for.
  std::uint8_t* at(GuestAddress address, std::size_t size, std::size_t alignment = 1) const;
  /// As `at`, for bytes that the platform writes: throws GuestFault when the guest itself could not.
  std::uint8_t* writableAt(GuestAddress address, std::size_t size, std::size_t alignment = 1) const;
  /// How many bytes the guest has from here on; 0 when the address is not its own.
  std::size_t bytesFrom(GuestAddress address) const;

  /// Where the guest sees what the host holds at a pointer; nothing when that is not in its memory.
  std::optional<GuestAddress> find(const void* pointer) const;

  template <typename T>
  T read(GuestAddress address) const {
    T value;
    std::memcpy(&value, at(address, sizeof value, alignof(T)), sizeof value);
    return value;
  }
  template <typename T>
  void write(GuestAddress address, const T& value) const {
    std::memcpy(writableAt(address, sizeof value, alignof(T)), &value, sizeof value);
  }

  const std::vector<std::unique_ptr<Region>>& regions() const { return regions_; }

 private:
  const Region& regionOf(GuestAddress address, std::size_t size, std::size_t alignment) const;

  std::vector<std::unique_ptr<Region>> regions_;
};

}  // namespace emulator::arm
