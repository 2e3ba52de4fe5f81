// The JSON of snapshots: objects keep the order of their keys.
#pragma once

#include <nlohmann/json.hpp>
#include <string_view>

namespace emulator {

using Json = nlohmann::ordered_json;

/// Throws SnapshotError: for a text that is no JSON with its line and column, for a key that an object has
/// twice with its path.
Json parseJson(std::string_view text);

}  // namespace emulator
