// A value of a snapshot that knows where it stands, so that whoever refuses it can say so.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "emulator/snapshot/json.h"

namespace emulator {

/// Every reader throws SnapshotError when the value is of another type, and names the place and both types.
class JsonNode {
 public:
  /// The whole snapshot. The value must outlive the node, and a node those that are reached through it.
  explicit JsonNode(const Json& root) : value_(&root) {}

  [[nodiscard]] bool isNull() const { return value_->is_null(); }
  [[nodiscard]] bool isObject() const { return value_->is_object(); }
  [[nodiscard]] bool isNumber() const { return value_->is_number(); }
  [[nodiscard]] bool isText() const { return value_->is_string(); }

  /// Valid as long as the snapshot is.
  [[nodiscard]] const std::string& text() const;
  [[nodiscard]] bool flag() const;
  /// Any number.
  [[nodiscard]] double real() const;
  /// A whole number within the limits.
  [[nodiscard]] std::int64_t number(std::int64_t low, std::int64_t high) const;

  /// Does something with each element of a list.
  template <typename Action>
  void forEachElement(Action action) const;
  /// Does something with each key of an object and what stands there.
  template <typename Action>
  void forEachMember(Action action) const;
  /// What an object has at a key, if it has it.
  [[nodiscard]] std::optional<JsonNode> member(std::string_view key) const;

  [[nodiscard]] std::string path() const;
  [[noreturn]] void refuse(const std::string& reason) const;

 private:
  JsonNode(const Json& value, const JsonNode& parent, std::string_view key)
      : value_(&value), parent_(&parent), key_(key) {}
  JsonNode(const Json& value, const JsonNode& parent, std::size_t index)
      : value_(&value), parent_(&parent), index_(index) {}

  void require(bool isOfType, const char* expected) const;

  const Json* value_;
  const JsonNode* parent_ = nullptr;
  std::optional<std::string_view> key_;
  std::size_t index_ = 0;
};

template <typename Action>
void JsonNode::forEachElement(Action action) const {
  require(value_->is_array(), "a list");
  for (std::size_t index = 0; index < value_->size(); ++index)
    action(JsonNode((*value_)[index], *this, index));
}

template <typename Action>
void JsonNode::forEachMember(Action action) const {
  require(value_->is_object(), "an object");
  for (auto member = value_->begin(); member != value_->end(); ++member) {
    action(std::string_view(member.key()), JsonNode(member.value(), *this, member.key()));
  }
}

}  // namespace emulator
