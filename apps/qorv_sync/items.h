// Reads items for the commands that show them.
#pragma once

#include <functional>
#include <span>

#include "apps/qorv_sync/run.h"
#include "desktop/item_kind.h"

namespace qorv_sync {

using ItemUse = std::function<void(desktop::Item item, std::uint32_t oid)>;

/// Hands over each item that can be read; the others are failures of the run.
void readItems(Run& run, desktop::Session& session, const desktop::ItemKind& kind,
               std::span<const std::uint32_t> oids, const ItemUse& use);

}  // namespace qorv_sync
