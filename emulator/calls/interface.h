// How the interface tables are built: an interface's base, and its own members in declared order.
#pragma once

#include "emulator/calls/call_table.h"

namespace emulator {

/// Specialised for every interface that the platform declares: `Base` (void for IUnknown) and `Members`.
template <typename T>
struct Interface;

namespace interface_detail {

template <typename T>
struct AllMembers {
  using Type =
      Concatenated<typename AllMembers<typename Interface<T>::Base>::Type, typename Interface<T>::Members>;
};
template <>
struct AllMembers<void> {
  using Type = CallList<>;
};

}  // namespace interface_detail

/// Every member, inherited ones first: the place in this list is the slot in the vtable.
template <typename T>
using AllMembers = typename interface_detail::AllMembers<T>::Type;

}  // namespace emulator
