// An item's properties as keys of a snapshot's objects, by the object model's tables.
#pragma once

#include <span>
#include <string_view>

#include "emulator/pim/item_record.h"
#include "emulator/snapshot/json_node.h"

namespace emulator {

/// Gives the record the values that an object has; null resets one. Keys in `others` are left to the caller,
/// any other is refused. What the object does not give stays, but for an appointment's end that would come
/// before its start, or the reverse: then the duration stays.
void readProperties(const JsonNode& object, std::span<const std::string_view> others, ItemRecord& record);

/// Adds every property but missing dates.
void dumpProperties(const ItemRecord& record, Json& object);

/// Adds the properties in which a changed occurrence differs from its series, and its own times; null for an
/// end that only the series has.
void dumpDifferences(const ItemRecord& occurrence, const ItemRecord& series, Json& object);

}  // namespace emulator
