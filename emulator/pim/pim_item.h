// An item of the object model as a plain value: what the device file holds of it.
#pragma once

#include <optional>
#include <vector>

#include "emulator/pim/item_record.h"
#include "emulator/pim/recurrence_rule.h"
#include "emulator/store/object_store.h"

namespace emulator {

struct PimItem {
  explicit PimItem(ObjectKind kind) : properties(tableOf(kind)) {}

  [[nodiscard]] ObjectKind kind() const { return properties.table().kind; }

  Oid oid = 0;  ///< 0 before the first save
  ItemRecord properties;
  std::optional<RecurrenceRule> rule;  ///< of a series
  bool ruleChanged = false;            ///< since it was made or loaded
  bool exceptionsDropped = false;      ///< because the rule became another one
};

/// What became of one occurrence of a series. Without an appointment it was deleted.
struct SeriesException {
  Day originalDay = 0;
  std::optional<ItemRecord> appointment;
};

/// In ascending order of their original days.
using SeriesExceptions = std::vector<SeriesException>;

}  // namespace emulator
