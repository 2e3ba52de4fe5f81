// The store's own tables: who holds which object identifier, and the device's settings.
#pragma once

#include <array>

namespace emulator {

inline constexpr std::array kStoreSchema{
    // A kind of 0 marks an identifier that is free but was used, so that it is never given out again.
    "CREATE TABLE object (oid INTEGER PRIMARY KEY, kind INTEGER NOT NULL)",
    "CREATE TABLE setting (name TEXT PRIMARY KEY, value) WITHOUT ROWID",
};

}  // namespace emulator
