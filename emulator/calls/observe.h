// Makes one observed call: the one place where log, faults and taps meet, driven by the call's row.
#pragma once

#include <string_view>
#include <utility>

#include "emulator/calls/call_monitor.h"
#include "emulator/calls/call_table.h"
#include "emulator/calls/failure.h"
#include "platform/errors.h"

namespace emulator {

namespace observe_detail {

template <typename Row, std::size_t Place>
using ArgumentType = std::tuple_element_t<Place, typename Row::Arguments>;

template <typename Row, typename Visitor>
void forEachPlace(Visitor visit) {
  [&]<std::size_t... Places>(std::index_sequence<Places...>) {
    (visit.template operator()<Places>(), ...);
  }
  (std::make_index_sequence<Row::kArity>{});
}

/// The number that an argument holds, or that stands where it points to; 0 behind a null pointer.
template <typename T>
std::int64_t countIn(const T& argument) {
  if constexpr (std::is_pointer_v<T>) {
    return argument == nullptr ? 0 : static_cast<std::int64_t>(*argument);
  } else {
    return static_cast<std::int64_t>(argument);
  }
}

template <typename T>
inline constexpr bool kIsByte = std::is_void_v<T> || std::is_same_v<T, BYTE> || std::is_same_v<T, char>;

template <typename T>
void encodeCounted(ValueEncoder& encoder, const T* elements, std::int64_t count) {
  if constexpr (kIsByte<T>) {
    encoder.bytes(elements, count);
  } else if constexpr (std::is_same_v<T, WCHAR>) {
    encoder.text(elements, count);
  } else {
    encoder.array(elements, count);
  }
}

template <typename Row, std::size_t Place>
void encodeArgument(ValueEncoder& encoder, const typename Row::Arguments& arguments) {
  constexpr Parameter kParameter = Row::template parameter<Place>();
  const auto& argument = std::get<Place>(arguments);
  if constexpr (kParameter.shape == Shape::Value) {
    encoder.value(argument);
  } else if constexpr (kParameter.shape == Shape::Text) {
    encoder.text(argument);
  } else if constexpr (kParameter.shape == Shape::Interface) {
    encoder.object(argument);
  } else if constexpr (kParameter.shape == Shape::Pointee) {
    argument == nullptr ? encoder.line().null() : encoder.value(*argument);
  } else if constexpr (kParameter.shape == Shape::Counted) {
    encodeCounted(encoder, argument, countIn(std::get<kParameter.number>(arguments)));
  } else if constexpr (kParameter.shape == Shape::Block) {
    const void* const block = argument == nullptr ? nullptr : *argument;
    encoder.bytes(block, countIn(std::get<kParameter.number>(arguments)));
  } else if constexpr (kParameter.shape == Shape::SeekValue) {
    encoder.seekValue(std::get<kParameter.number>(arguments), argument);
  } else if constexpr (kParameter.shape == Shape::Message) {
    encoder.messageArgument(std::get<kParameter.number>(arguments), argument);
  } else {
    encoder.opaque(argument);
  }
}

template <typename Row>
void encodeArguments(ValueEncoder& encoder, const typename Row::Arguments& arguments) {
  forEachPlace<Row>([&]<std::size_t Place>() {
    if constexpr (Row::template parameter<Place>().direction != Direction::Out) {
      encodeArgument<Row, Place>(encoder, arguments);
    }
  });
}

template <typename Row>
void encodeResult(ValueEncoder& encoder, const typename Row::Result& result) {
  if constexpr (Row::failure() == kReturnsHresult) {
    encoder.value(static_cast<DWORD>(result));
  } else {
    encoder.value(result);
  }
}

/// An argument as the device takes it: an object without its tap.
template <typename Row, std::size_t Place>
ArgumentType<Row, Place> forDevice(CallMonitor& monitor, const typename Row::Arguments& arguments) {
  constexpr Parameter kParameter = Row::template parameter<Place>();
  using T = ArgumentType<Row, Place>;
  const auto& argument = std::get<Place>(arguments);
  if constexpr (kParameter.shape == Shape::Interface && kParameter.direction == Direction::In) {
    if constexpr (std::is_void_v<std::remove_pointer_t<T>>) {
      return monitor.untapped(static_cast<IUnknown*>(argument));
    } else {
      return monitor.untapped(argument);
    }
  } else {
    return argument;
  }
}

/// The interface that the last identifier before `Place` asks for.
template <typename Row, std::size_t Place>
const InterfaceInfo* requestedInterface(const typename Row::Arguments& arguments) {
  const InterfaceInfo* requested = nullptr;
  forEachPlace<Row>([&]<std::size_t Earlier>() {
    using T = ArgumentType<Row, Earlier>;
    if constexpr (Earlier < Place && std::is_same_v<T, REFIID>) {
      requested = findInterface(std::get<Earlier>(arguments));
    } else if constexpr (Earlier < Place && std::is_same_v<T, LPCIID>) {
      const LPCIID iid = std::get<Earlier>(arguments);
      requested = iid == nullptr ? nullptr : findInterface(*iid);
    }
  });
  return requested;
}

/// Replaces the objects that a successful call handed out by their taps.
template <typename Row>
void tapResults(CallMonitor& monitor, const typename Row::Arguments& arguments) {
  forEachPlace<Row>([&]<std::size_t Place>() {
    constexpr Parameter kParameter = Row::template parameter<Place>();
    if constexpr (kParameter.shape == Shape::Interface && kParameter.direction == Direction::Out) {
      const auto object = std::get<Place>(arguments);
      if (object == nullptr || *object == nullptr) return;
      if constexpr (std::is_same_v<ArgumentType<Row, Place>, void**>) {
        const InterfaceInfo* const requested = requestedInterface<Row, Place>(arguments);
        if (requested != nullptr) *object = monitor.taps().tap(static_cast<IUnknown*>(*object), *requested);
      } else {
        *object = monitor.tapped(*object);
      }
    }
  });
}

template <typename T>
void forget(ObjectNames& names, T* closed) {
  names.forget(kindOf<T>(), closed);
}

/// The device's answer, with the program's objects exchanged for the device's on the way in, and back on the
/// way out.
template <typename Row, typename Perform>
typename Row::Result performed(CallMonitor& monitor, const typename Row::Arguments& arguments,
                               Perform perform) {
  using R = typename Row::Result;
  const auto atDevice = [&]() -> R {
    return [&]<std::size_t... Places>(std::index_sequence<Places...>)->R {
      return perform(forDevice<Row, Places>(monitor, arguments)...);
    }
    (std::make_index_sequence<Row::kArity>{});
  };
  if constexpr (std::is_void_v<R>) {
    atDevice();
  } else {
    const R result = atDevice();
    if (Row::failure() != kReturnsHresult || result >= R{}) tapResults<Row>(monitor, arguments);
    if constexpr (Row::closedPlace() < Row::kArity) {
      forget(monitor.names(), std::get<Row::closedPlace()>(arguments));
    }
    return result;
  }
}

}  // namespace observe_detail

/// Makes a call of a row for a program that is observed. `perform` makes it of the device.
template <typename Row, typename Perform>
typename Row::Result observe(CallMonitor& monitor, std::string_view name,
                             const typename Row::Arguments& arguments, Perform perform) {
  using R = typename Row::Result;
  ObservedCall call(monitor, name);
  call.arguments([&](ValueEncoder& encoder) { observe_detail::encodeArguments<Row>(encoder, arguments); });
  const auto answer = [&]() -> R {
    return call.fault()
               ? failed<Row>(arguments, *call.fault(), [&](DWORD error) { call.setLastError(error); })
               : observe_detail::performed<Row>(monitor, arguments, perform);
  };
  if constexpr (std::is_void_v<R>) {
    answer();
  } else {
    const R result = answer();
    call.result([&](ValueEncoder& encoder) { observe_detail::encodeResult<Row>(encoder, result); });
    return result;
  }
}

}  // namespace emulator
