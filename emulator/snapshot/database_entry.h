// An entry of "databases", as it was read: what it does not say is absent.
#pragma once

#include <optional>
#include <string>

#include "emulator/database/record_store.h"
#include "emulator/snapshot/json_node.h"

namespace emulator {

struct DatabaseEntry {
  std::optional<Oid> oid;
  std::optional<std::u16string> name;
  std::optional<DWORD> type;
  std::optional<DWORD> flags;
  std::optional<std::vector<SortOrder>> orders;
  bool hasRecords = false;
};

/// Throws SnapshotError. The records are left to readRecord, one by one.
DatabaseEntry readDatabaseEntry(const JsonNode& node);
/// The record has the identifier 0 when the snapshot gives none.
Record readRecord(const JsonNode& node);

Json recordToJson(const Record& record);
/// With its records.
Json databaseToJson(const PropertyDatabase& database, RecordStore& records);

inline constexpr const char* kRecordsKey = "records";

}  // namespace emulator
