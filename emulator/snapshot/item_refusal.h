// What the object model's refusals mean, in a snapshot's words.
#pragma once

#include "emulator/snapshot/json_node.h"
#include "platform/types.h"

namespace emulator {

/// Throws SnapshotError for the item or exception at the node.
[[noreturn]] void refuseItem(const JsonNode& node, HRESULT result);

}  // namespace emulator
