#include "emulator/calls/known_calls.h"

#include "emulator/calls/functions.h"
#include "emulator/calls/interfaces.h"

namespace emulator {

namespace {

template <typename... Calls>
constexpr bool hasCall(CallList<Calls...>, std::string_view name) {
  return ((Calls::kName == name) || ...);
}

template <typename... T>
constexpr bool hasMember(TypeList<T...>, std::string_view interface, std::string_view member) {
  return ((kTypeName<T> == interface && hasCall(AllMembers<T>{}, member)) || ...);
}

}  // namespace

bool isPlatformCall(std::string_view name) {
  const auto dot = name.find('.');
  if (dot == std::string_view::npos) return hasCall(Functions{}, name);
  return hasMember(Interfaces{}, name.substr(0, dot), name.substr(dot + 1));
}

}  // namespace emulator
