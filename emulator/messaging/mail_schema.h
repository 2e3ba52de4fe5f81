// The tables of the device's message store.
#pragma once

#include <array>

namespace emulator {

/// A message is a row of its folder: its identifier may stand in two folders at once. Rows count on as messages
/// arrive, which is the order of a folder, and are never used again, as open messages know their row. A body or
/// attachment that was never written has no content.
inline constexpr std::array kMailSchema{
    "CREATE TABLE mail_content (number INTEGER PRIMARY KEY AUTOINCREMENT, size INTEGER NOT NULL)",
    "CREATE TABLE mail_chunk (content INTEGER NOT NULL REFERENCES mail_content ON DELETE CASCADE,"
    " number INTEGER NOT NULL, data BLOB NOT NULL, UNIQUE (content, number))",
    "CREATE TABLE message (number INTEGER PRIMARY KEY AUTOINCREMENT, folder INTEGER NOT NULL, id INTEGER NOT "
    "NULL,"
    " sender TEXT NOT NULL, subject TEXT NOT NULL, delivered INTEGER, is_read INTEGER NOT NULL,"
    " start_date INTEGER, end_date INTEGER, place TEXT, body INTEGER,"
    " UNIQUE (folder, id))",
    "CREATE INDEX message_order ON message (folder, number)",
    "CREATE INDEX message_id ON message (id)",
    "CREATE TABLE message_recipient (message INTEGER NOT NULL REFERENCES message ON DELETE CASCADE,"
    " position INTEGER NOT NULL, type INTEGER NOT NULL, address TEXT NOT NULL, UNIQUE (message, position))",
    "CREATE TABLE attachment (message INTEGER NOT NULL REFERENCES message ON DELETE CASCADE,"
    " number INTEGER NOT NULL, name TEXT NOT NULL, data INTEGER,"
    " UNIQUE (message, number))",
    // The names of named properties and the numbers that they were given.
    "CREATE TABLE mail_name (number INTEGER PRIMARY KEY, property_set BLOB NOT NULL, name NOT NULL,"
    " UNIQUE (property_set, name))",
};

}  // namespace emulator
