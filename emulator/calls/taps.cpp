#include "emulator/calls/taps.h"

namespace emulator {

IUnknown* Taps::tap(IUnknown* object, const InterfaceInfo& declared) {
  const ObjectInterface own = ownInterface(object, declared);
  const auto* const whole = dynamic_cast<const void*>(own.object);
  const auto [first, last] = taps_.equal_range(whole);
  for (auto known = first; known != last; ++known) {
    Tap* const tap = known->second.get();
    if (tap->target == own.object && tap->interface == own.interface) return reinterpret_cast<IUnknown*>(tap);
  }
  auto made = std::make_unique<Tap>(Tap{own.interface->vtable, &monitor_, own.interface, own.object, whole});
  Tap* const tap = made.get();
  taps_.emplace(whole, std::move(made));
  addresses_.insert(tap);
  names_.objectName(own.interface->name, tap);
  return reinterpret_cast<IUnknown*>(tap);
}

IUnknown* Taps::target(IUnknown* pointer) const {
  if (!addresses_.contains(pointer)) return pointer;
  return reinterpret_cast<const Tap*>(pointer)->target;
}

void Taps::end(const void* object) {
  const auto [first, last] = taps_.equal_range(object);
  for (auto ended = first; ended != last; ++ended) {
    addresses_.erase(ended->second.get());
    names_.forgetObject(ended->second.get());
  }
  taps_.erase(first, last);
}

}  // namespace emulator
