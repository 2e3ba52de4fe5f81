// Objects of a snapshot read by a table: a key and what is done with its value.
#pragma once

#include <algorithm>
#include <span>
#include <string_view>

#include "emulator/snapshot/json_node.h"

namespace emulator {

template <typename Target>
struct Field {
  std::string_view key;
  void (*read)(Target& target, const JsonNode& node);
};

/// Reads the value of one key. A key without a row is refused.
template <typename Target>
void readField(std::span<const Field<Target>> fields, std::string_view key, Target& target,
               const JsonNode& node) {
  const auto field = std::ranges::find(fields, key, &Field<Target>::key);
  if (field == fields.end()) node.refuse("unknown key");
  field->read(target, node);
}

/// Reads every key that the object has, in the object's order.
template <typename Target>
void readFields(const JsonNode& object, std::span<const Field<Target>> fields, Target& target) {
  object.forEachMember(
      [&](std::string_view key, const JsonNode& node) { readField(fields, key, target, node); });
}

}  // namespace emulator
