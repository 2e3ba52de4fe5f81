// What is known of an interface at run time, and the vtable that stands in for it while calls are observed.
#pragma once

#include <span>
#include <string_view>

#include "platform/com.h"

namespace emulator {

struct InterfaceInfo {
  std::string_view name;
  IID iid;
  std::span<const std::string_view> members;  ///< in the order of their slots, inherited ones first
  const InterfaceInfo* base;                  ///< null for IUnknown
  /// What the vtable pointer of a Tap of this interface points to.
  const void* vtable;
  /// The interface of that kind that an object has, whichever of its interfaces is given; null when it has
  /// none.
  IUnknown* (*ofObject)(IUnknown*);
};

/// Defined for every interface that the platform declares.
template <typename T>
const InterfaceInfo& interfaceInfo();

/// Bases before what derives from them.
std::span<const InterfaceInfo* const> allInterfaces();

/// Null when the platform declares no interface of that identifier.
const InterfaceInfo* findInterface(REFIID iid);

/// An object and the interface through which it is reached.
struct ObjectInterface {
  IUnknown* object;
  const InterfaceInfo* interface;
};

/// The object's own interface: the one that goes furthest beyond `declared`, as which it was handed out.
ObjectInterface ownInterface(IUnknown* object, const InterfaceInfo& declared);

}  // namespace emulator
