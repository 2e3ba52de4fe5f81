// How the fields of a record travel, for reading a record that needn't mean anything.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "desktop/record_field.h"

namespace desktop {

enum class FieldEncoding : std::uint8_t {
  Text,
  Number,
  Time,
  Recurrence,  ///< the block, and the exception records that it says follow
};

struct FieldLayout {
  std::uint32_t tag;
  std::string_view name;
  FieldEncoding encoding;
};

template <typename Value>
constexpr FieldLayout layoutOf(const RecordField<Value>& field) {
  // In the order of a field's kinds of members: a flag travels as a number.
  constexpr std::array kEncodings{FieldEncoding::Text, FieldEncoding::Number, FieldEncoding::Number,
                                  FieldEncoding::Time};
  return {field.tag, field.name, kEncodings[field.member.index()]};
}

template <typename Value, std::size_t size>
constexpr std::array<FieldLayout, size> layoutsOf(const std::array<RecordField<Value>, size>& fields) {
  std::array<FieldLayout, size> layouts{};
  for (std::size_t i = 0; i < size; ++i) layouts[i] = layoutOf(fields[i]);
  return layouts;
}

/// The same for items that can repeat.
template <typename Value, std::size_t size>
constexpr std::array<FieldLayout, size + 1> seriesLayoutsOf(
    const std::array<RecordField<Value>, size>& fields) {
  std::array<FieldLayout, size + 1> layouts{};
  for (std::size_t i = 0; i < size; ++i) layouts[i] = layoutOf(fields[i]);
  layouts[size] = {kRecurrenceTag, "repetition", FieldEncoding::Recurrence};
  return layouts;
}

}  // namespace desktop
