// A whole device as JSON: merged into a device as its user would change it, and written out again.
#pragma once

#include <iosfwd>
#include <string_view>

#include "emulator/device.h"

namespace emulator {

/// Merges a snapshot and commits, or throws and leaves the device as it was: SnapshotError for what is wrong
/// with the snapshot, StoreError for what is wrong with the device file.
void loadSnapshot(Device& device, std::string_view text);

/// Writes the device as a snapshot. Loaded into a fresh device and dumped again it gives the same bytes.
void dumpSnapshot(Device& device, std::ostream& out);

}  // namespace emulator
