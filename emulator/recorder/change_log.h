// One change log: a database with a record for every item that changed, newest first, and its counter.
#pragma once

#include "emulator/database/database_store.h"
#include "emulator/system/registry.h"

namespace emulator {

/// How the logs tell what became of an item.
enum class LoggedChange : DWORD { Added = 1, Changed = 2, Deleted = 3 };

class ChangeLog {
 public:
  /// The log of that name, made when the device has none. Its counter is the value of that name of the key.
  ChangeLog(DatabaseStore& databases, Registry& registry, std::u16string name,
            std::u16string_view registryKey);

  /// Whether nobody has removed it since.
  bool isThere() const { return database_->oid != 0; }

  /// The item's one record says so from now on, under the counter's next number.
  void append(DWORD item, LoggedChange change);
  /// The item's record says so from now on, and keeps its number. One that is gone is made anew.
  void amend(DWORD item, LoggedChange change);

 private:
  std::optional<Record> find(DWORD item);
  void write(const std::optional<Record>& existing, DWORD item, DWORD sequence, LoggedChange change);
  DWORD countOn();

  DatabaseStore& databases_;
  Registry& registry_;
  std::u16string name_;
  Registry::KeyId registryKey_;
  std::shared_ptr<PropertyDatabase> database_;
};

}  // namespace emulator
