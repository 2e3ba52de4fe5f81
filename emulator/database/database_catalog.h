// The property databases that a device has: what each is called, and its sort orders.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "emulator/database/sort_order.h"
#include "emulator/store/object_store.h"
#include "emulator/system/clock.h"

namespace emulator {

struct PropertyDatabase {
  Oid oid = 0;
  std::u16string name{};
  DWORD type = 0;
  DWORD flags = 0;                     ///< CEDB_NOCOMPRESS and CEDB_SYSTEMDB: kept, and of no effect
  std::vector<SortOrder> orders{};     ///< those that programs can open it on
  std::vector<SortOrder> ownOrders{};  ///< the device's own, which no program sees
};

/// What changes with every record.
struct DatabaseState {
  DWORD records = 0;
  DWORD bytes = 0;  ///< of the records' properties
  Ticks modified = 0;
};

class DatabaseCatalog {
 public:
  DatabaseCatalog(ObjectStore& store, const Clock& clock)
      : store_(store), connection_(store.connection()), clock_(clock) {}

  /// By name, without regard to case; 0 when there is none.
  Oid find(std::u16string_view name);
  std::optional<PropertyDatabase> load(Oid database);
  DatabaseState state(Oid database);
  /// All of them, in the order of their identifiers.
  std::vector<Oid> list();

  /// Makes a database under its own identifier, or under a new one that it is given. The name must be free.
  /// Throws StoreError when the identifier is in use.
  void create(PropertyDatabase& database);
  /// Stores another name, type and flags.
  void describe(const PropertyDatabase& database);
  /// Stores a new order and gives it its number. It has no keys yet.
  void addOrder(Oid database, SortOrder& order, bool isOwn);
  /// The orders that programs see. Their keys must have gone before.
  void removeOrders(Oid database);
  /// An empty database goes.
  void remove(Oid database);

  /// Notes that a record came, changed or went.
  void noteChange(Oid database, int records, std::int64_t bytes);

 private:
  std::vector<SortOrder> loadOrders(Oid database, bool own);

  ObjectStore& store_;
  Connection& connection_;
  const Clock& clock_;
};

}  // namespace emulator
