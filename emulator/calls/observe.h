// Makes one observed call: the one place where log, faults and taps meet, driven by the call's form.
#pragma once

#include <string_view>
#include <utility>

#include "emulator/calls/call_monitor.h"
#include "emulator/calls/call_table.h"
#include "emulator/calls/failure.h"
#include "platform/errors.h"

namespace emulator {

/// What makes a call of the device.
template <typename Form>
struct Performer {
  typename Form::Result (*perform)(const void* context, const typename Form::Arguments& arguments);
  const void* context;
};

namespace observe_detail {

template <typename Form, std::size_t Place>
using ArgumentType = std::tuple_element_t<Place, typename Form::Arguments>;

template <typename Form, typename Visitor>
void forEachPlace(Visitor visit) {
  [&]<std::size_t... Places>(std::index_sequence<Places...>) {
    (visit.template operator()<Places>(), ...);
  }
  (std::make_index_sequence<Form::kArity>{});
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

template <typename Form, std::size_t Place>
void encodeArgument(ValueEncoder& encoder, const typename Form::Arguments& arguments) {
  constexpr Parameter kParameter = Form::template kParameter<Place>;
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

template <typename Form>
void encodeArguments(ValueEncoder& encoder, const typename Form::Arguments& arguments) {
  forEachPlace<Form>([&]<std::size_t Place>() {
    if constexpr (Form::template kParameter<Place>.direction != Direction::Out) {
      encodeArgument<Form, Place>(encoder, arguments);
    }
  });
}

template <typename Form>
void encodeResult(ValueEncoder& encoder, const typename Form::Result& result) {
  if constexpr (Form::kFailure == kReturnsHresult) {
    encoder.value(static_cast<DWORD>(result));
  } else {
    encoder.value(result);
  }
}

/// An argument as the device takes it: an object without its tap.
template <typename Form, std::size_t Place>
ArgumentType<Form, Place> forDevice(CallMonitor& monitor, const typename Form::Arguments& arguments) {
  constexpr Parameter kParameter = Form::template kParameter<Place>;
  using T = ArgumentType<Form, Place>;
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
template <typename Form, std::size_t Place>
const InterfaceInfo* requestedInterface(const typename Form::Arguments& arguments) {
  const InterfaceInfo* requested = nullptr;
  forEachPlace<Form>([&]<std::size_t Earlier>() {
    using T = ArgumentType<Form, Earlier>;
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
template <typename Form>
void tapResults(CallMonitor& monitor, const typename Form::Arguments& arguments) {
  forEachPlace<Form>([&]<std::size_t Place>() {
    constexpr Parameter kParameter = Form::template kParameter<Place>;
    if constexpr (kParameter.shape == Shape::Interface && kParameter.direction == Direction::Out) {
      const auto object = std::get<Place>(arguments);
      if (object == nullptr || *object == nullptr) return;
      if constexpr (std::is_same_v<ArgumentType<Form, Place>, void**>) {
        const InterfaceInfo* const requested = requestedInterface<Form, Place>(arguments);
        if (requested != nullptr) *object = monitor.taps().tap(static_cast<IUnknown*>(*object), *requested);
      } else {
        *object = monitor.tapped(*object);
      }
    }
  });
}

/// Only an HRESULT tells that what a call was to hand out is not there.
template <typename Form>
bool succeeded(const typename Form::Result& result) {
  if constexpr (Form::kFailure == kReturnsHresult) {
    return SUCCEEDED(result);
  } else {
    return true;
  }
}

template <typename T>
void forget(ObjectNames& names, T* closed) {
  names.forget(kindOf<T>(), closed);
}

/// The device's answer, with the program's objects exchanged for the device's on the way in, and back on the
/// way out.
template <typename Form>
typename Form::Result performed(CallMonitor& monitor, const typename Form::Arguments& arguments,
                                const Performer<Form>& performer) {
  using R = typename Form::Result;
  const auto exchanged = [&]<std::size_t... Places>(std::index_sequence<Places...>) {
    return typename Form::Arguments(forDevice<Form, Places>(monitor, arguments)...);
  }
  (std::make_index_sequence<Form::kArity>{});
  if constexpr (std::is_void_v<R>) {
    performer.perform(performer.context, exchanged);
  } else {
    const R result = performer.perform(performer.context, exchanged);
    if (succeeded<Form>(result)) tapResults<Form>(monitor, arguments);
    if constexpr (Form::kClosedPlace < Form::kArity) {
      forget(monitor.names(), std::get<Form::kClosedPlace>(arguments));
    }
    return result;
  }
}

}  // namespace observe_detail

/// Makes a call of a form for a program that is observed.
template <typename Form>
typename Form::Result observe(CallMonitor& monitor, std::string_view name,
                              const typename Form::Arguments& arguments, const Performer<Form>& performer) {
  using R = typename Form::Result;
  ObservedCall call(monitor, name);
  call.arguments([&](ValueEncoder& encoder) { observe_detail::encodeArguments<Form>(encoder, arguments); });
  const auto answer = [&]() -> R {
    return call.fault()
               ? failed<Form>(arguments, *call.fault(), [&](DWORD error) { call.setLastError(error); })
               : observe_detail::performed<Form>(monitor, arguments, performer);
  };
  if constexpr (std::is_void_v<R>) {
    answer();
  } else {
    const R result = answer();
    call.result([&](ValueEncoder& encoder) { observe_detail::encodeResult<Form>(encoder, result); });
    return result;
  }
}

}  // namespace emulator
