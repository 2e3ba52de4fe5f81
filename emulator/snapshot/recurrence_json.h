// An item's recurrence pattern in a snapshot.
#pragma once

#include "emulator/pim/recurrence_rule.h"
#include "emulator/snapshot/json_node.h"

namespace emulator {

/// A pattern is one value: what is not given is what `fresh`, retyped, has. A key that belongs to
/// another type is refused. The series ends after Occurrences when given, else on PatternEndDate when given,
/// else never.
RecurrenceRule readRule(const JsonNode& node, RecurrenceRule fresh);

/// With the parameters of its type and the one key that says how it ends.
Json ruleToJson(const RecurrenceRule& rule);

/// A day at the date that a snapshot gives; its time of day does not count.
Day readDay(const JsonNode& node);

}  // namespace emulator
