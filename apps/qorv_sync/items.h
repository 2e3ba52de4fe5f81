// Reads items for the commands that show them.
#pragma once

#include <functional>
#include <span>

#include "apps/qorv_sync/run.h"
#include "desktop/item_kind.h"
#include "desktop/kind_reader.h"

namespace qorv_sync {

using ItemUse = std::function<void(const desktop::Item& item, std::uint32_t oid)>;

/// Hands over each item that can be read; the others are failures of the run. What an item lacks is remarked.
void readItems(Run& run, desktop::Session& session, const desktop::ItemKind& kind,
               std::span<const std::uint32_t> oids, desktop::FilesWanted files, const ItemUse& use);

}  // namespace qorv_sync
