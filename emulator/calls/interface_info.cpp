#include "emulator/calls/interface_info.h"

#include <algorithm>
#include <array>

#include "emulator/calls/interfaces.h"

namespace emulator {

namespace {

template <typename... T>
std::array<const InterfaceInfo*, sizeof...(T)> collect(TypeList<T...>) {
  return {&interfaceInfo<T>()...};
}

/// How many steps lead from an interface down to a base of it; negative when that is no base.
int stepsDown(const InterfaceInfo* interface, const InterfaceInfo& base) {
  for (int steps = 0; interface != nullptr; interface = interface->base, ++steps) {
    if (interface == &base) return steps;
  }
  return -1;
}

}  // namespace

std::span<const InterfaceInfo* const> allInterfaces() {
  static const auto kAll = collect(Interfaces{});
  return kAll;
}

const InterfaceInfo* findInterface(REFIID iid) {
  const auto all = allInterfaces();
  const auto found = std::ranges::find_if(all, [&](const InterfaceInfo* info) { return info->iid == iid; });
  return found == all.end() ? nullptr : *found;
}

ObjectInterface ownInterface(IUnknown* object, const InterfaceInfo& declared) {
  ObjectInterface own{object, &declared};
  int furthest = 0;
  for (const InterfaceInfo* candidate : allInterfaces()) {
    const int steps = stepsDown(candidate, declared);
    if (steps <= furthest) continue;
    if (IUnknown* const reached = candidate->ofObject(object)) {
      own = {reached, candidate};
      furthest = steps;
    }
  }
  return own;
}

}  // namespace emulator
