// The registry's tables.
#pragma once

#include <array>

namespace emulator {

/// Key 0 holds the predefined keys, so that a full path is sought like any other.
inline constexpr std::array kRegistrySchema{
    "CREATE TABLE registry_key (id INTEGER PRIMARY KEY, parent INTEGER REFERENCES registry_key, name TEXT "
    "NOT NULL,"
    " folded TEXT NOT NULL, UNIQUE (parent, folded))",
    "CREATE TABLE registry_value (key INTEGER NOT NULL REFERENCES registry_key ON DELETE CASCADE, name TEXT "
    "NOT NULL,"
    " folded TEXT NOT NULL, type INTEGER NOT NULL, data BLOB NOT NULL, PRIMARY KEY (key, folded)) WITHOUT "
    "ROWID",
    "INSERT INTO registry_key (id, parent, name, folded) VALUES (0, NULL, '', ''),"
    " (1, 0, 'HKEY_CLASSES_ROOT', 'HKEY_CLASSES_ROOT'), (2, 0, 'HKEY_CURRENT_USER', 'HKEY_CURRENT_USER'),"
    " (3, 0, 'HKEY_LOCAL_MACHINE', 'HKEY_LOCAL_MACHINE'), (4, 0, 'HKEY_USERS', 'HKEY_USERS')",
};

}  // namespace emulator
