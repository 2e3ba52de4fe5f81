// What callers ask of an object when they open it: its interface, and whether they will change it.
#pragma once

#include "platform/messaging.h"

namespace emulator {

/// Whether an identifier names the object's own interface or a base of it; null names its own.
template <typename Interface>
bool isInterfaceOf(LPCIID iid) {
  return iid == nullptr || *iid == Interface::kIid || *iid == IMAPIProp::kIid || *iid == IUnknown::kIid;
}
template <>
inline bool isInterfaceOf<IMAPIFolder>(LPCIID iid) {
  return isInterfaceOf<IMAPIContainer>(iid) || *iid == IMAPIFolder::kIid;
}

constexpr bool asksToWrite(ULONG flags) {
  return (flags & (MAPI_MODIFY | MAPI_BEST_ACCESS)) != 0;
}

}  // namespace emulator
