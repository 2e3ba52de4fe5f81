// What every definition of a platform function goes through.
#pragma once

#include <new>

#include "emulator/calls/functions.h"
#include "emulator/calls/observe.h"
#include "emulator/device.h"
#include "emulator/seam/current_device.h"

namespace emulator {

namespace call_detail {

/// What a program sees of a device file that can't be read or written.
template <typename Row>
inline constexpr DWORD kDeviceFailed = Row::failure() == kReturnsHresult ? DWORD{0x80070000} | ERROR_DISK_FULL
                                                                         : ERROR_DISK_FULL;
template <typename Row>
inline constexpr DWORD kNoMemory = Row::failure() == kReturnsHresult ? static_cast<DWORD>(E_OUTOFMEMORY)
                                                                     : ERROR_NOT_ENOUGH_MEMORY;

/// Nothing is thrown across the platform's calls.
template <typename Row, typename Perform>
typename Row::Result guarded(Device& device, const typename Row::Arguments& arguments, Perform perform) {
  const auto setLastError = [&](DWORD error) { device.lastError.set(error); };
  try {
    return perform(device);
  } catch (const std::bad_alloc&) {
    return failed<FormOf<Row>>(arguments, kNoMemory<Row>, setLastError);
  } catch (const StoreError&) {
    return failed<FormOf<Row>>(arguments, kDeviceFailed<Row>, setLastError);
  }
}

template <typename Row, typename Perform>
typename Row::Result observed(CurrentDevice& current, const typename Row::Arguments& arguments,
                              const Perform& perform) {
  const auto atDevice = [&] { return guarded<Row>(current.device(), arguments, perform); };
  using AtDevice = decltype(atDevice);
  const Performer<FormOf<Row>> performer{[](const void* context, const typename Row::Arguments&) {
                                           return (*static_cast<const AtDevice*>(context))();
                                         },
                                         &atDevice};
  return observe<FormOf<Row>>(*current.monitor(), Row::kName, arguments, performer);
}

}  // namespace call_detail

/// Defines a platform function: `perform`, which takes the current device, is what the function does;
/// `given` are the function's arguments. Without a monitor there is nothing else to it.
template <auto Function, typename Perform, typename... Given>
typename RowOf<Function, Functions>::Result call(Perform perform, const Given&... given) {
  using Row = RowOf<Function, Functions>;
  const typename Row::Arguments values(given...);
  CurrentDevice& current = CurrentDevice::get();
  if (current.monitor() == nullptr) [[likely]] {
    return call_detail::guarded<Row>(current.device(), values, perform);
  }
  return call_detail::observed<Row>(current, values, perform);
}

/// A text that a program gave; empty for a null pointer.
inline std::u16string_view textOf(LPCWSTR text) {
  return text == nullptr ? std::u16string_view() : std::u16string_view(text);
}

}  // namespace emulator
