// The parts of a database in a snapshot: property identifiers, values and sort orders.
#pragma once

#include "emulator/database/sort_order.h"
#include "emulator/snapshot/json_node.h"

namespace emulator {

/// `["0xIIIITTTT", value]`: a number for integers and CEVT_R8, true or false, a text, base64 for blobs, and for
/// CEVT_FILETIME a time, or its number where no time of four-digit years says it.
RecordProperty readProperty(const JsonNode& node);
Json propertyToJson(const RecordProperty& property);

/// `{"property": "0xIIIITTTT", "flags": 1}`, or `{"keys": [one such for each], "key_flags": 0}`.
SortOrder readOrder(const JsonNode& node);
Json orderToJson(const SortOrder& order);

}  // namespace emulator
