// The object model's tables: one for each kind of item, with the columns of its properties, and the series'.
#pragma once

#include <algorithm>
#include <array>
#include <string>

#include "emulator/pim/item_table.h"

namespace emulator {
namespace detail {

constexpr std::string_view columnType(PropertyType type) {
  if (type == PropertyType::Text) return "TEXT";
  return type == PropertyType::Date ? "REAL" : "INTEGER";
}

/// Quoted, as END is a word of SQL.
constexpr std::string columnName(const Property& property) {
  return std::string("\"").append(property.name).append("\"");
}

constexpr std::string createStatement(std::string_view name, std::string_view firstColumns,
                                      const ItemTable& table, std::string_view constraint) {
  std::string sql = "CREATE TABLE ";
  sql.append(name).append(" (").append(firstColumns);
  for (const Property& property : table.properties) {
    sql.append(", ")
        .append(columnName(property))
        .append(" ")
        .append(columnType(property.type))
        .append(constraint);
  }
  return sql.append(")");
}

constexpr std::string createItemTable(const ItemTable& table) {
  return createStatement(table.name, "oid INTEGER PRIMARY KEY", table, " NOT NULL");
}

// Null where an exception has what its series has.
constexpr std::string createExceptionTable() {
  return createStatement("series_exception",
                         "series INTEGER NOT NULL, original_day INTEGER NOT NULL, deleted INTEGER NOT NULL",
                         kAppointmentTable, "");
}

/// Holds a text that is put together while compiling.
template <auto make>
inline constexpr auto kText = [] {
  std::array<char, make().size() + 1> text{};
  std::ranges::copy(make(), text.begin());
  return text;
}();

}  // namespace detail

inline constexpr std::array kItemSchema{
    detail::kText<[] { return detail::createItemTable(kContactTable); }>.data(),
    detail::kText<[] { return detail::createItemTable(kAppointmentTable); }>.data(),
    detail::kText<[] { return detail::createItemTable(kTaskTable); }>.data(),
    // The folders' orders, so that listing a folder reads no items.
    "CREATE INDEX contact_order ON contact (FileAs COLLATE NOCASE, oid)",
    "CREATE INDEX appointment_order ON appointment (Start, oid)",
    // SQLite counts a table's rows in its smallest index.
    "CREATE INDEX task_order ON task (Complete)",
    "CREATE TABLE recurrence (oid INTEGER PRIMARY KEY, type INTEGER NOT NULL, start_day INTEGER NOT NULL,"
    " series_end INTEGER NOT NULL, end_day INTEGER NOT NULL, occurrences INTEGER NOT NULL,"
    " repeat_interval INTEGER NOT NULL, day_mask INTEGER NOT NULL, day_of_month INTEGER NOT NULL,"
    " instance INTEGER NOT NULL, month_of_year INTEGER NOT NULL)",
    detail::kText<[] { return detail::createExceptionTable(); }>.data(),
    "CREATE UNIQUE INDEX series_exception_key ON series_exception (series, original_day)",
};

}  // namespace emulator
