// The top-level keys of a snapshot, one row each.
#pragma once

#include <span>
#include <string_view>

#include "emulator/device.h"
#include "emulator/snapshot/json_node.h"

namespace emulator {

struct Section {
  std::string_view key;
  /// Merges the section into the device. Throws SnapshotError, half-way too.
  void (*load)(Device& device, const JsonNode& section);
  /// The section as it is on the device.
  Json (*dump)(Device& device);
  /// The key under which the entries of a list name their object; empty for other sections.
  std::string_view identifier = {};
  /// The key under which an entry lists objects of its own, which name themselves likewise; empty for others.
  std::string_view inner = {};
};

/// In the order in which a snapshot is loaded and dumped, whatever the order in the text: objects are deleted
/// last.
std::span<const Section> sections();

}  // namespace emulator
