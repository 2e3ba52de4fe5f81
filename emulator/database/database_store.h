// The property databases and their records in one, with those that are in use.
#pragma once

#include <map>

#include "emulator/database/record_store.h"

namespace emulator {

class DatabaseStore {
 public:
  DatabaseStore(ObjectStore& store, const Clock& clock)
      : store_(store), catalog_(store, clock), records_(store, catalog_) {}
  DatabaseStore(const DatabaseStore&) = delete;
  DatabaseStore& operator=(const DatabaseStore&) = delete;

  DatabaseCatalog& catalog() { return catalog_; }
  RecordStore& records() { return records_; }
  Connection& connection() { return store_.connection(); }

  /// A database, the same object for everybody for as long as somebody keeps it; null when there is none.
  std::shared_ptr<PropertyDatabase> use(Oid database);
  /// Whether somebody keeps it.
  bool isInUse(Oid database) const;

  /// A database goes with its records, if it is there. For whoever keeps it, its identifier is 0 then.
  void remove(Oid database);
  /// One record goes; whether there was such a record.
  bool removeRecord(Oid record);
  /// What was written since the last commit is undone: those that are kept lose the orders that went with it.
  void forgetUndone();
  /// The device's own ascending order on a property, made and filled when the database does not have it.
  const SortOrder& ownOrder(PropertyDatabase& database, CEPROPID property);

 private:
  ObjectStore& store_;
  DatabaseCatalog catalog_;
  RecordStore records_;
  std::map<Oid, std::weak_ptr<PropertyDatabase>> used_;
};

}  // namespace emulator
