// The exceptions of a series in a snapshot.
#pragma once

#include "emulator/pim/pim_items.h"
#include "emulator/snapshot/json_node.h"

namespace emulator {

/// Gives a saved series the exceptions of a list, in place of those it had. An appointment has what it does
/// not say from the series. Throws SnapshotError, also for what the object model refuses.
void loadExceptions(PimItems& items, const PimItem& series, const JsonNode& list);

Json exceptionsToJson(const PimItem& series, const SeriesExceptions& exceptions);

}  // namespace emulator
