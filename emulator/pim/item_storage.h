// The rows of contacts, appointments and tasks in the device file. No rule of the object model is applied
// here.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "emulator/pim/pim_item.h"

namespace emulator {

class ItemStorage {
 public:
  explicit ItemStorage(ObjectStore& store);

  /// Number of items in the kind's folder; a series counts as one.
  std::int32_t count(ObjectKind kind);
  /// The folder's items in its order.
  std::vector<Oid> list(ObjectKind kind);
  /// Nothing when no item of the kind has the identifier.
  std::optional<PimItem> load(ObjectKind kind, Oid oid);

  /// The identifier is the item's own when it has one, else a new one. Throws StoreError when it is in use.
  void insert(PimItem& item);
  /// The item must exist.
  void update(const PimItem& item);
  /// With its rule and exceptions; the identifier is never used again.
  void remove(ObjectKind kind, Oid oid);

  SeriesExceptions loadExceptions(const PimItem& series);
  std::optional<SeriesException> loadException(const PimItem& series, Day originalDay);
  /// Adds the exception or replaces the one of the same original day.
  void putException(const PimItem& series, const SeriesException& exception);
  /// Stores the times of an exception that is there, and nothing else of it: what it has from its series
  /// stays the series'.
  void moveException(Oid series, const SeriesException& exception);
  void removeExceptions(Oid series);

 private:
  struct Statements {
    std::string count, list, load, insert, update, remove;
  };

  static Statements statementsFor(const ItemTable& table);
  const Statements& statements(ObjectKind kind) const;
  void writeRule(const PimItem& item);

  ObjectStore& store_;
  Connection& connection_;
  std::array<Statements, kItemTables.size()> statements_;
  std::string loadExceptions_;
  std::string loadException_;
  std::string putException_;
  std::string moveException_;
};

}  // namespace emulator
