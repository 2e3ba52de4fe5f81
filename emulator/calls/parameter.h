// What a parameter of a platform call means: its direction, and what lies behind a pointer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

// Whether a pointer is an object depends on its class being declared, so every interface is.
#include "platform/appointment.h"
#include "platform/contact.h"
#include "platform/messaging.h"
#include "platform/outlook.h"
#include "platform/rapi_stream.h"
#include "platform/recurrence.h"
#include "platform/task.h"

namespace emulator {

enum class Direction : std::uint8_t { In, Out, InOut };

enum class Shape : std::uint8_t {
  Value,      ///< the argument itself
  Text,       ///< NUL-terminated
  Opaque,     ///< a handle, a cookie or a reserved pointer: never looked through
  Pointee,    ///< one object behind the pointer
  Counted,    ///< as many elements as another argument says; bytes when the type is void, BYTE or char
  Fixed,      ///< room for a fixed number of elements
  Block,      ///< a pointer to a pointer to a block; another argument says or receives its bytes
  Interface,  ///< an object; going out, a pointer to the pointer, its interface named by the type or an IID
  SeekValue,  ///< a word that is the address of a CEPROPVAL when the seek type beside it seeks by value
  Message,    ///< a word that is the address of an EDITSTREAM when the message beside it streams
};

inline constexpr std::size_t kNoPlace = ~std::size_t{0};

/// Places count from 0, without the object itself. Plain data, so that a call's row can carry it.
struct Parameter {
  std::size_t place;
  Direction direction;
  Shape shape;
  std::size_t number =
      0;  ///< the place of the argument that counts or tells the kind; for Fixed the elements
  std::size_t recordCount =
      kNoPlace;  ///< the place of the argument that counts the property values at the start of a Block
  bool required = false;  ///< the platform looks behind the pointer without asking whether there is one
};

struct Extent {
  Shape shape = Shape::Pointee;
  std::size_t number = 0;
  std::size_t recordCount = kNoPlace;
};

/// The count stands in another argument, or behind it when that is a pointer.
constexpr Extent countedBy(std::size_t place) {
  return {Shape::Counted, place};
}
constexpr Extent roomFor(std::size_t elements) {
  return {Shape::Fixed, elements};
}
constexpr Extent blockOf(std::size_t place) {
  return {Shape::Block, place};
}
/// A block that begins with property values, which point into it.
constexpr Extent recordsOf(std::size_t sizePlace, std::size_t countPlace) {
  return {Shape::Block, sizePlace, countPlace};
}

constexpr Parameter in(std::size_t place, Extent extent = {}) {
  return {place, Direction::In, extent.shape, extent.number, extent.recordCount};
}
/// A structure that goes out may carry its own size or version in; neither is looked at.
constexpr Parameter out(std::size_t place, Extent extent = {}) {
  return {place, Direction::Out, extent.shape, extent.number, extent.recordCount};
}
constexpr Parameter inOut(std::size_t place, Extent extent = {}) {
  return {place, Direction::InOut, extent.shape, extent.number, extent.recordCount};
}
constexpr Parameter required(Parameter parameter) {
  parameter.required = true;
  return parameter;
}
constexpr Parameter inInterface(std::size_t place) {
  return {place, Direction::In, Shape::Interface};
}
constexpr Parameter opaque(std::size_t place) {
  return {place, Direction::In, Shape::Opaque};
}
constexpr Parameter seekValue(std::size_t place, std::size_t typePlace) {
  return {place, Direction::In, Shape::SeekValue, typePlace};
}
constexpr Parameter messageArgument(std::size_t place, std::size_t messagePlace) {
  return {place, Direction::In, Shape::Message, messagePlace};
}

namespace parameter_detail {

template <typename T>
concept Complete = requires {
  sizeof(T);
};

template <typename T>
concept AnInterface = Complete<T> && std::is_base_of_v<IUnknown, T>;

template <typename Pointee>
constexpr Parameter behindPointer(std::size_t place) {
  using Plain = std::remove_const_t<Pointee>;
  if constexpr (std::is_same_v<Plain, WCHAR> || std::is_same_v<Pointee, const char>) {
    return {place, Direction::In, Shape::Text};
  } else if constexpr (std::is_pointer_v<Pointee>) {
    using Object = std::remove_pointer_t<Pointee>;
    constexpr bool anObject = std::is_void_v<Object> || AnInterface<Object>;
    return {place, Direction::Out, anObject ? Shape::Interface : Shape::Pointee};
  } else if constexpr (AnInterface<Pointee>) {
    return {place, Direction::In, Shape::Interface};
  } else if constexpr (std::is_void_v<Plain> || std::is_function_v<Pointee> || !Complete<Plain>) {
    return {place, Direction::In, Shape::Opaque};
  } else {
    return {place, std::is_const_v<Pointee> ? Direction::In : Direction::Out, Shape::Pointee};
  }
}

}  // namespace parameter_detail

/// What a parameter means when its call's row doesn't say otherwise.
template <typename T>
constexpr Parameter defaultParameter(std::size_t place) {
  if constexpr (std::is_pointer_v<T>) {
    return parameter_detail::behindPointer<std::remove_pointer_t<T>>(place);
  } else {
    return {place, Direction::In, Shape::Value};
  }
}

}  // namespace emulator
