// A database that a program has opened: the order that it goes by, and its seek pointer.
#pragma once

#include "emulator/database/database_store.h"
#include "emulator/database/seek_pointer.h"
#include "emulator/system/handle_table.h"

namespace emulator {

class OpenDatabase final : public ClosableObject {
 public:
  /// `order` is one of the database's, or null for the order of the identifiers.
  OpenDatabase(DatabaseStore& store, std::shared_ptr<const PropertyDatabase> database, const SortOrder* order,
               bool autoIncrement)
      : database_(std::move(database)),
        order_(order),
        autoIncrement_(autoIncrement),
        pointer_(store.records(), store.connection(), database_->oid, order) {}

  const PropertyDatabase& database() const { return *database_; }
  SeekPointer& pointer() { return pointer_; }

  /// Moves the pointer as CeSeekDatabase does. ERROR_SUCCESS when it reached a record, ERROR_NO_MORE_ITEMS when
  /// there is none, ERROR_INVALID_PARAMETER for an unknown kind of seek, a record that is not the database's,
  /// or a value that is not of the order's first property.
  DWORD seek(DWORD type, DWORD_PTR value);
  /// The pointer's record was read, or deleted.
  void moveOn() {
    if (autoIncrement_) pointer_.by(1);
  }

 private:
  DWORD seekValue(DWORD type, const CEPROPVAL* value);

  std::shared_ptr<const PropertyDatabase> database_;  ///< kept while it is open
  const SortOrder* order_;
  bool autoIncrement_;
  SeekPointer pointer_;
};

}  // namespace emulator
