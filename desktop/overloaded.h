// One callable out of several, for visiting a variant.
#pragma once

namespace desktop {

template <typename... Callables>
struct Overloaded : Callables... {
  using Callables::operator()...;
};

template <typename... Callables>
Overloaded(Callables...) -> Overloaded<Callables...>;

}  // namespace desktop
