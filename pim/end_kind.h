// The end kind as an item's stored recurrence has it.
#pragma once

#include <optional>
#include <span>

#include "pim/recurrence_block.h"
#include "platform/outlook.h"

namespace qorv {

/// Reads the end type of a stored recurrence blob, the object store's standard structure. Its place depends on
/// the pattern type (with the calendar type above it). Nothing for a blob that is too short to tell.
std::optional<EndKind> storedEndKind(std::span<const BYTE> blob);

/// Corrects the block's end kind from the item's stored recurrence, which knows whether the user chose a date or a
/// number of occurrences. An item without the stored property is taken to end after its occurrences. When any step
/// fails the end kind stays and the result is false.
bool correctEndKind(IPOutlookApp& application, DWORD oid, CEPROPID property, RecurrenceBlock& block);

}  // namespace qorv
