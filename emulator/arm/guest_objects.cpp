#include "emulator/arm/guest_objects.h"

namespace emulator::arm {

namespace {

constexpr GuestAddress kStart = 0x50000000;
/// The vtables and half a million objects.
constexpr std::size_t kSize = 0x400000;
constexpr GuestAddress kObjectSize = 8;

}  // namespace

GuestObjects::GuestObjects(GuestMemory& memory) : memory_(memory), next_(kStart) {
  memory_.add("objects", kStart, kSize, Access::Read);
}

GuestAddress GuestObjects::place() {
  if (unused_.empty()) {
    const GuestAddress taken = next_;
    next_ += kObjectSize;
    return taken;
  }
  const GuestAddress taken = unused_.back();
  unused_.pop_back();
  return taken;
}

void GuestObjects::addInterface(const InterfaceInfo& interface, const std::vector<GuestAddress>& traps) {
  const std::size_t size = traps.size() * sizeof(GuestAddress);
  std::memcpy(memory_.at(next_, size), traps.data(), size);
  vtables_.emplace(&interface, next_);
  next_ += static_cast<GuestAddress>((size + kObjectSize - 1) / kObjectSize * kObjectSize);
}

GuestAddress GuestObjects::wrap(IUnknown* object, const InterfaceInfo& declared) {
  if (object == nullptr) return 0;
  const ObjectInterface own = ownInterface(object, declared);
  const auto [known, isNew] = addresses_.try_emplace({own.object, own.interface}, 0);
  if (!isNew) return known->second;
  const GuestAddress address = place();
  std::memcpy(memory_.at(address, kObjectSize), &vtables_.at(own.interface), sizeof(GuestAddress));
  known->second = address;
  objects_.emplace(address, own);
  return address;
}

const ObjectInterface& GuestObjects::get(GuestAddress address) const {
  const auto found = objects_.find(address);
  if (found == objects_.end()) throw GuestFault("the library calls an object that is not there");
  return found->second;
}

void GuestObjects::forget(GuestAddress address) {
  const auto found = objects_.find(address);
  if (found == objects_.end()) return;
  addresses_.erase({found->second.object, found->second.interface});
  objects_.erase(found);
  unused_.push_back(address);
}

}  // namespace emulator::arm
