// Failing a call as the platform would, driven by the call's form.
#pragma once

#include "emulator/calls/call_table.h"

namespace emulator {

namespace failure_detail {

template <typename R>
R fromNumber(std::int64_t number) {
  if constexpr (std::is_pointer_v<R>) {
    return reinterpret_cast<R>(static_cast<std::intptr_t>(number));
  } else {
    return static_cast<R>(number);
  }
}

template <typename Form, std::size_t Place>
void clearPointer(const typename Form::Arguments& arguments) {
  using T = std::tuple_element_t<Place, typename Form::Arguments>;
  constexpr bool kGoesOut = Form::template kParameter<Place>.direction == Direction::Out;
  if constexpr (kGoesOut && std::is_pointer_v<std::remove_pointer_t<T>>) {
    if (std::get<Place>(arguments) != nullptr) *std::get<Place>(arguments) = nullptr;
  }
}

/// Pointers that a call would hand out become null; everything else stays as it was.
template <typename Form, std::size_t... Places>
void clearPointers(const typename Form::Arguments& arguments, std::index_sequence<Places...>) {
  (clearPointer<Form, Places>(arguments), ...);
}

}  // namespace failure_detail

/// The result of a call that fails with a code: an HRESULT or an error number, as the call returns it or
/// leaves it behind with `setLastError`.
template <typename Form, typename SetLastError>
typename Form::Result failed(const typename Form::Arguments& arguments, DWORD code,
                             SetLastError setLastError) {
  using R = typename Form::Result;
  constexpr Failure kFailure = Form::kFailure;
  failure_detail::clearPointers<Form>(arguments, std::make_index_sequence<Form::kArity>{});
  if constexpr (kFailure.kind == Failure::Kind::Hresult || kFailure.kind == Failure::Kind::ErrorCode) {
    return static_cast<R>(code);
  } else {
    setLastError(code);
    if constexpr (kFailure.kind == Failure::Kind::Argument) {
      return std::get<static_cast<std::size_t>(kFailure.value)>(arguments);
    } else if constexpr (!std::is_void_v<R>) {
      return failure_detail::fromNumber<R>(kFailure.value);
    }
  }
}

}  // namespace emulator
