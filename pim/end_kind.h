// The end kind as an item's stored recurrence has it.
#pragma once

#include <optional>
#include <span>

#include "pim/recurrence_block.h"

namespace qorv {

/// Reads the end type of a stored recurrence blob, the object store's standard structure. Its place depends on the
/// pattern type (with the calendar type above it). Nothing for a blob that is too short to tell.
std::optional<EndKind> storedEndKind(std::span<const BYTE> blob);

}  // namespace qorv
