// Deletes the device's items of one kind, and tells which of them are gone.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "desktop/item_kind.h"
#include "desktop/session.h"

namespace desktop {

/// Those that were there and are there no more, in the given order. Throws DeviceRefusal when the device can't list
/// items of a kind of which only the list tells.
std::vector<std::uint32_t> deleteHeldItems(Session& session, const ItemKind& kind,
                                           std::span<const std::uint32_t> oids);

}  // namespace desktop
