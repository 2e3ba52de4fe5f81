// The tables of the property databases.
#pragma once

#include <array>

namespace emulator {

/// A record's properties are one value, as they are always read together. The keys under which it stands in
/// the sort orders of its database compare bytewise as the orders go, so that SQLite's index is the order.
inline constexpr std::array kDatabaseSchema{
    "CREATE TABLE property_database (oid INTEGER PRIMARY KEY REFERENCES object, name TEXT NOT NULL,"
    " folded TEXT NOT NULL UNIQUE, type INTEGER NOT NULL, flags INTEGER NOT NULL, modified INTEGER NOT NULL,"
    " records INTEGER NOT NULL DEFAULT 0, size INTEGER NOT NULL DEFAULT 0)",
    // An order of the device's own is seen by no program.
    "CREATE TABLE sort_order (id INTEGER PRIMARY KEY, parent INTEGER NOT NULL REFERENCES property_database"
    " ON DELETE CASCADE, key_flags INTEGER NOT NULL, is_own INTEGER NOT NULL)",
    "CREATE INDEX sort_order_by_database ON sort_order (parent)",
    "CREATE TABLE sort_property (sort_order INTEGER NOT NULL REFERENCES sort_order ON DELETE CASCADE,"
    " place INTEGER NOT NULL, property INTEGER NOT NULL, flags INTEGER NOT NULL,"
    " PRIMARY KEY (sort_order, place)) WITHOUT ROWID",
    "CREATE TABLE record (oid INTEGER PRIMARY KEY REFERENCES object, parent INTEGER NOT NULL REFERENCES"
    " property_database, properties BLOB NOT NULL)",
    "CREATE INDEX record_by_database ON record (parent, oid)",
    "CREATE TABLE record_key (sort_order INTEGER NOT NULL, key BLOB NOT NULL, record INTEGER NOT NULL,"
    " PRIMARY KEY (sort_order, key, record)) WITHOUT ROWID",
};

}  // namespace emulator
