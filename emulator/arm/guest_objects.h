// The platform's objects as the library sees them: two words in its memory, of which the first leads to a vtable of traps.
#pragma once

#include <map>
#include <unordered_map>
#include <vector>

#include "emulator/arm/guest_memory.h"
#include "emulator/calls/interface_info.h"

namespace emulator::arm {

class GuestObjects {
 public:
  explicit GuestObjects(GuestMemory& memory);

  /// From now on objects of this interface are known by this vtable: the traps of its members in the order of
  /// their slots.
  void addInterface(const InterfaceInfo& interface, const std::vector<GuestAddress>& traps);

  /// What stands for an object that is handed out as `declared`: by its own interface, since a caller may
  /// count on more than it was promised. 0 for null.
  GuestAddress wrap(IUnknown* object, const InterfaceInfo& declared);
  /// Throws GuestFault when no object is there.
  const ObjectInterface& get(GuestAddress address) const;
  /// The object is gone.
  void forget(GuestAddress address);

  std::size_t count() const { return objects_.size(); }

 private:
  GuestAddress place();

  GuestMemory& memory_;
  GuestAddress next_;
  std::vector<GuestAddress> unused_;
  std::unordered_map<const InterfaceInfo*, GuestAddress> vtables_;
  std::map<std::pair<const void*, const InterfaceInfo*>, GuestAddress> addresses_;
  std::unordered_map<GuestAddress, ObjectInterface> objects_;
};

}  // namespace emulator::arm
