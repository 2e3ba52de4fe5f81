// The records of the property databases and their keys in the sort orders. Knows no handles.
#pragma once

#include "emulator/database/database_catalog.h"

namespace emulator {

struct Record {
  Oid oid = 0;
  Oid database = 0;
  RecordProperties properties;
};

/// Where a record stands in an order: its key there, and its identifier among those of equal keys.
struct RecordPlace {
  Bytes key;
  Oid record = 0;
};

class RecordStore {
 public:
  RecordStore(ObjectStore& store, DatabaseCatalog& catalog)
      : store_(store), connection_(store.connection()), catalog_(catalog) {}

  /// Another number after every change to a record of any database.
  std::uint64_t version() const { return version_; }
  /// What was written since the last commit is undone.
  void forgetUndone() { ++version_; }

  std::optional<Record> load(Oid record);
  /// All records of a database, by identifier.
  std::vector<Oid> list(Oid database);

  /// Whether a record with these properties may stand in the orders of the database: ERROR_SUCCESS, else
  /// ERROR_REPEATED_KEY or ERROR_INVALID_PARAMETER. `record` is the one that gets them, 0 a new one.
  DWORD check(const PropertyDatabase& database, Oid record, const RecordProperties& properties);
  /// Under a new identifier, or the given one. Throws StoreError when that is in use.
  Oid add(const PropertyDatabase& database, const RecordProperties& properties, Oid oid = 0);
  /// Gives a record of the database other properties.
  void change(const PropertyDatabase& database, const Record& record, const RecordProperties& properties);
  void remove(const PropertyDatabase& database, const Record& record);
  void removeAll(const PropertyDatabase& database);

  /// Puts every record of the database into a new order, and takes all out of one.
  void fillOrder(Oid database, const SortOrder& order);
  void clearOrder(const SortOrder& order);

 private:
  void addKeys(const PropertyDatabase& database, Oid record, const RecordProperties& properties);
  void removeKeys(const PropertyDatabase& database, const Record& record);
  bool isTaken(const SortOrder& order, const Bytes& key, Oid record);

  ObjectStore& store_;
  Connection& connection_;
  DatabaseCatalog& catalog_;
  std::uint64_t version_ = 0;
};

}  // namespace emulator
