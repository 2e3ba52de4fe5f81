// What the object model's items are made of: properties, their types and their values.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <variant>

#include "emulator/pim/calendar_day.h"

namespace emulator {

enum class PropertyType : std::uint8_t { Text, Date, Number, Flag };

/// The alternatives stand in the order of PropertyType. A date is a DATE's number: days since 1899-12-30.
using PropertyValue = std::variant<std::u16string, double, std::int32_t, bool>;

inline constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

struct Property {
  std::string_view name;  ///< the object model's, and the column's
  PropertyType type;
  std::uint32_t tag = 0;     ///< its identifier in the item's property interface; 0 where there is none
  std::int32_t initial = 0;  ///< of numbers and flags; texts begin empty, dates unset
  std::size_t longest = kUnlimited;                                  ///< characters of a text
  std::int32_t greatest = std::numeric_limits<std::int32_t>::max();  ///< of a number
  Day earliest = kFirstDay;                                          ///< of a date
  bool canBeUnset = true;                                            ///< whether a date may be put to no date
  bool isInternal = false;  ///< the device's own: no interface and no snapshot shows it
};

constexpr Property text(std::string_view name, std::uint32_t tag = 0, std::size_t longest = kUnlimited) {
  return {.name = name, .type = PropertyType::Text, .tag = tag, .longest = longest};
}
constexpr Property date(std::string_view name, Day earliest = kFirstDay) {
  return {.name = name, .type = PropertyType::Date, .earliest = earliest};
}
/// A date that every item of the kind has.
constexpr Property moment(std::string_view name, Day earliest) {
  return {.name = name, .type = PropertyType::Date, .earliest = earliest, .canBeUnset = false};
}
constexpr Property number(std::string_view name, std::uint32_t tag = 0, std::int32_t initial = 0,
                          std::int32_t greatest = std::numeric_limits<std::int32_t>::max()) {
  return {.name = name, .type = PropertyType::Number, .tag = tag, .initial = initial, .greatest = greatest};
}
constexpr Property flag(std::string_view name, std::uint32_t tag = 0) {
  return {.name = name, .type = PropertyType::Flag, .tag = tag};
}
constexpr Property internalFlag(std::string_view name) {
  return {.name = name, .type = PropertyType::Flag, .isInternal = true};
}

/// A property's place in its table, found while compiling.
template <std::size_t size>
consteval std::size_t placeOf(const std::array<Property, size>& properties, std::string_view name) {
  for (std::size_t place = 0; place < size; ++place) {
    if (properties[place].name == name) return place;
  }
  throw "no such property";
}

}  // namespace emulator
