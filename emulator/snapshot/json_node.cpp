#include "emulator/snapshot/json_node.h"

#include <limits>

#include "emulator/snapshot/json_path.h"
#include "emulator/snapshot/snapshot_error.h"

namespace emulator {
namespace {

std::string kindOf(const Json& value) {
  switch (value.type()) {
    case Json::value_t::null:
      return "null";
    case Json::value_t::boolean:
      return value.get<bool>() ? "true" : "false";
    case Json::value_t::string:
      return "a text";
    case Json::value_t::array:
      return "a list";
    case Json::value_t::object:
      return "an object";
    default:
      return "a number";
  }
}

}  // namespace

const std::string& JsonNode::text() const {
  require(value_->is_string(), "a text");
  return value_->get_ref<const std::string&>();
}

bool JsonNode::flag() const {
  require(value_->is_boolean(), "true or false");
  return value_->get<bool>();
}

double JsonNode::real() const {
  require(value_->is_number(), "a number");
  return value_->get<double>();
}

std::int64_t JsonNode::number(std::int64_t low, std::int64_t high) const {
  require(value_->is_number(), "a number");
  if (value_->is_number_float()) refuse("expected a whole number, found " + value_->dump());
  const bool isTooLarge =
      value_->is_number_unsigned() &&
      value_->get<std::uint64_t>() > std::uint64_t{std::numeric_limits<std::int64_t>::max()};
  const auto number = value_->get<std::int64_t>();
  if (isTooLarge || number < low || number > high) {
    refuse(value_->dump() + " is out of range (" + std::to_string(low) + " to " + std::to_string(high) + ")");
  }
  return number;
}

std::optional<JsonNode> JsonNode::member(std::string_view key) const {
  require(value_->is_object(), "an object");
  const auto found = value_->find(key);
  if (found == value_->end()) return std::nullopt;
  return JsonNode(found.value(), *this, found.key());
}

std::string JsonNode::path() const {
  if (parent_ == nullptr) return "";
  std::string path = parent_->path();
  if (key_) {
    appendKey(path, *key_);
  } else {
    appendIndex(path, index_);
  }
  return path;
}

void JsonNode::refuse(const std::string& reason) const {
  throw SnapshotError(path(), reason);
}

void JsonNode::require(bool isOfType, const char* expected) const {
  if (!isOfType) refuse(std::string("expected ") + expected + ", found " + kindOf(*value_));
}

}  // namespace emulator
