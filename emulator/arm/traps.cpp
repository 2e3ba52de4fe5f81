#include "emulator/arm/traps.h"

#include "emulator/calls/functions.h"

namespace emulator::arm {

namespace {

constexpr std::size_t kReleaseSlot = 2;

template <typename Form, typename... A>
std::uint32_t carryFunction(Border& border, const Trap& trap, const ArgumentWords& words, std::tuple<A...>*) {
  const auto function = reinterpret_cast<typename Form::Result (*)(A...)>(const_cast<void*>(trap.function));
  return carry<Form>(border, words, 0,
                     [&](const std::tuple<A...>& arguments) { return std::apply(function, arguments); });
}

/// A member function takes its object as a first argument of a plain function.
template <typename Form, typename... A>
std::uint32_t carryMember(Border& border, const Trap& trap, const ArgumentWords& words, std::tuple<A...>*) {
  using Function = typename Form::Result (*)(IUnknown*, A...);
  const GuestAddress object = words(0);
  const ObjectInterface target = border.objects.get(object);
  if (target.interface != trap.interface)
    throw GuestFault("the library calls an object by another's interface");
  const auto function = reinterpret_cast<Function>((*reinterpret_cast<void***>(target.object))[trap.slot]);
  const std::uint32_t result = carry<Form>(border, words, 1, [&](const std::tuple<A...>& arguments) {
    return std::apply([&](A... argument) { return function(target.object, argument...); }, arguments);
  });
  if (trap.slot == kReleaseSlot && result == 0) border.objects.forget(object);
  return result;
}

template <typename Form>
std::uint32_t functionTrap(Border& border, const Trap& trap, const ArgumentWords& words) {
  return carryFunction<Form>(border, trap, words, static_cast<typename Form::Arguments*>(nullptr));
}

template <typename Form>
std::uint32_t memberTrap(Border& border, const Trap& trap, const ArgumentWords& words) {
  return carryMember<Form>(border, trap, words, static_cast<typename Form::Arguments*>(nullptr));
}

template <typename... Rows>
void addFunctions(std::vector<Trap>& traps, CallList<Rows...>) {
  (traps.push_back(
       {Rows::kName, &functionTrap<FormOf<Rows>>, reinterpret_cast<PlatformFunction>(Rows::kCallee)}),
   ...);
}

template <typename... Rows>
void addMembers(std::vector<Trap>& traps, const InterfaceInfo& interface, CallList<Rows...>) {
  std::size_t slot = 0;
  (traps.push_back({Rows::kName, &memberTrap<FormOf<Rows>>, nullptr, &interface, slot++}), ...);
}

template <typename... T>
void addInterfaces(std::vector<Trap>& traps, TypeList<T...>) {
  (addMembers(traps, interfaceInfo<T>(), AllMembers<T>{}), ...);
}

/// The library's own heap is no call that anybody observes.
std::uint32_t allocate(Border& border, const Trap&, const ArgumentWords& words) {
  return border.heap.allocateOwn(words(0));
}
std::uint32_t release(Border& border, const Trap&, const ArgumentWords& words) {
  border.heap.freeOwn(words(0));
  return 0;
}

}  // namespace

std::vector<Trap> platformTraps() {
  std::vector<Trap> traps{{"malloc", &allocate}, {"free", &release}};
  addFunctions(traps, Functions{});
  addInterfaces(traps, Interfaces{});
  return traps;
}

}  // namespace emulator::arm
