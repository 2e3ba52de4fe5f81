#include "emulator/snapshot/json_path.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace emulator {
namespace {

bool isPlain(std::string_view key) {
  const auto isCharacterOfName = [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  };
  return !key.empty() && std::ranges::all_of(key, isCharacterOfName);
}

}  // namespace

void appendKey(std::string& path, std::string_view key) {
  if (!isPlain(key)) {
    path += '[' + nlohmann::json(key).dump() + ']';
    return;
  }
  if (!path.empty()) path += '.';
  path += key;
}

void appendIndex(std::string& path, std::size_t index) {
  path += '[' + std::to_string(index) + ']';
}

}  // namespace emulator
