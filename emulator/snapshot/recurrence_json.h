// An item's recurrence pattern in a snapshot.
#pragma once

#include "emulator/pim/item_rules.h"
#include "emulator/snapshot/json_node.h"

namespace emulator {

/// A pattern is one value: what is not given is what a fresh pattern of its type has. A key that belongs to
/// another type is refused. The series ends after Occurrences when given, else on PatternEndDate when given,
/// else never.
RecurrenceRule readRule(const JsonNode& node, const ItemRecord& item, const LocalClock& clock);

/// With the parameters of its type and the one key that says how it ends.
Json ruleToJson(const RecurrenceRule& rule);

/// A day at the date that a snapshot gives; its time of day does not count.
Day readDay(const JsonNode& node);

}  // namespace emulator
