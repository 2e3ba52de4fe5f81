// Named values of a device: what `create` chose, and what outlives a session beside the objects.
#pragma once

#include <optional>
#include <string_view>

#include "emulator/store/sqlite.h"

namespace emulator {

class Settings {
 public:
  explicit Settings(Connection& connection) : connection_(connection) {}

  /// Nothing when the setting was never put. T as for Cursor::get.
  template <typename T>
  std::optional<T> get(std::string_view name) const {
    Cursor row = connection_.query("SELECT value FROM setting WHERE name = ?", name);
    if (!row.next()) return std::nullopt;
    return row.get<T>(0);
  }

  template <typename T>
  void put(std::string_view name, const T& value) {
    connection_.run("INSERT OR REPLACE INTO setting (name, value) VALUES (?, ?)", name, value);
  }

 private:
  Connection& connection_;
};

}  // namespace emulator
