// Reads the device's items of one kind, as items.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "desktop/item_kind.h"
#include "desktop/item_reader.h"

namespace desktop {

/// What becomes of the items that are read, in the order in which they were asked for.
struct KindSink {
  std::function<void(Item item, std::uint32_t oid)> item;
  std::function<void(std::uint32_t oid, ReadFailure why)> failure;
};

/// Throws ProtocolError when the device sends anything but records of the kind.
void readItems(Session& session, const ItemKind& kind, std::span<const std::uint32_t> oids,
               const KindSink& sink);

}  // namespace desktop
