// The tables of the device's files.
#pragma once

#include <array>

namespace emulator {

/// The root is no row: its identifier is 0. A chunk that is missing, and the part that a short one lacks, is
/// zeros.
inline constexpr std::array kFileSchema{
    "CREATE TABLE file (oid INTEGER PRIMARY KEY REFERENCES object, parent INTEGER NOT NULL, name TEXT NOT "
    "NULL,"
    " folded TEXT NOT NULL, attributes INTEGER NOT NULL, size INTEGER NOT NULL, written INTEGER NOT NULL,"
    " UNIQUE (parent, folded))",
    "CREATE INDEX file_by_parent ON file (parent, oid)",
    "CREATE TABLE file_chunk (file INTEGER NOT NULL REFERENCES file ON DELETE CASCADE, number INTEGER NOT "
    "NULL,"
    " data BLOB NOT NULL, UNIQUE (file, number))",
};

}  // namespace emulator
