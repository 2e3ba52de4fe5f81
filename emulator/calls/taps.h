// Stand-ins for the objects that a program holds while its calls are observed.
#pragma once

#include <map>
#include <memory>
#include <unordered_set>

#include "emulator/calls/interface_info.h"
#include "emulator/calls/object_names.h"

namespace emulator {

class CallMonitor;

/// To its holder a Tap is an object of the interface: its first word points to a vtable of that layout, whose
/// functions take the Tap itself as their object.
struct Tap {
  const void* vtable;
  CallMonitor* monitor;
  const InterfaceInfo* interface;
  IUnknown* target;
  const void* object;  ///< the whole object's address, the same for all its interfaces
};

/// One tap for each interface of each object, as long as the object lives. A tap has no count of its own:
/// AddRef and Release reach the object.
class Taps {
 public:
  Taps(CallMonitor& monitor, ObjectNames& names) : monitor_(monitor), names_(names) {}

  /// The stand-in for an object that is handed out as `declared`, by its own interface. Not null.
  IUnknown* tap(IUnknown* object, const InterfaceInfo& declared);
  /// What a tap stands for; anything else is returned as it is.
  IUnknown* target(IUnknown* pointer) const;
  /// The whole object at this address is gone, and its taps with it.
  void end(const void* object);

 private:
  CallMonitor& monitor_;
  ObjectNames& names_;
  std::multimap<const void*, std::unique_ptr<Tap>> taps_;
  std::unordered_set<const void*> addresses_;
};

}  // namespace emulator
