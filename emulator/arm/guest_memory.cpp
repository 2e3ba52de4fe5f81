#include "emulator/arm/guest_memory.h"

#include <cstdio>
#include <new>
#include <sys/mman.h>

namespace emulator::arm {

namespace {

std::string hexadecimal(std::uint64_t value) {
  char text[19];
  std::snprintf(text, sizeof text, "0x%08llx", static_cast<unsigned long long>(value));
  return text;
}

std::uint8_t* mapPages(std::size_t size) {
  void* const pages = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (pages == MAP_FAILED) throw std::bad_alloc();
  return static_cast<std::uint8_t*>(pages);
}

}  // namespace

Region::Region(std::string name, GuestAddress start, std::size_t size, Access access)
    : name_(std::move(name)), start_(start), size_(size), access_(access), bytes_(mapPages(size), {size}) {}

void Region::Unmapper::operator()(std::uint8_t* bytes) const {
  munmap(bytes, size);
}

Region& GuestMemory::add(std::string name, GuestAddress start, std::size_t size, Access access) {
  regions_.push_back(std::make_unique<Region>(std::move(name), start, size, access));
  return *regions_.back();
}

const Region& GuestMemory::regionOf(GuestAddress address, std::size_t size, std::size_t alignment) const {
  if (address % alignment != 0) {
    throw GuestFault("the address " + hexadecimal(address) + " is not aligned to " +
                     std::to_string(alignment) + " bytes");
  }
  for (const auto& region : regions_) {
    if (region->contains(address, size)) return *region;
  }
  throw GuestFault(std::to_string(size) + " bytes at " + hexadecimal(address) + " are not the library's");
}

std::uint8_t* GuestMemory::at(GuestAddress address, std::size_t size, std::size_t alignment) const {
  const Region& region = regionOf(address, size, alignment);
  return region.bytes() + (address - region.start());
}

std::uint8_t* GuestMemory::writableAt(GuestAddress address, std::size_t size, std::size_t alignment) const {
  const Region& region = regionOf(address, size, alignment);
  if (region.access() != Access::ReadWrite) {
    throw GuestFault(std::to_string(size) + " bytes at " + hexadecimal(address) + " can't be written");
  }
  return region.bytes() + (address - region.start());
}

std::size_t GuestMemory::bytesFrom(GuestAddress address) const {
  for (const auto& region : regions_) {
    if (region->contains(address, 1)) return region->size() - (address - region->start());
  }
  return 0;
}

std::optional<GuestAddress> GuestMemory::find(const void* pointer) const {
  const auto value = reinterpret_cast<std::uintptr_t>(pointer);
  for (const auto& region : regions_) {
    const auto start = reinterpret_cast<std::uintptr_t>(region->bytes());
    if (value >= start && value - start < region->size()) {
      return region->start() + static_cast<GuestAddress>(value - start);
    }
  }
  return std::nullopt;
}

}  // namespace emulator::arm
