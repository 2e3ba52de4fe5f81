// Adding, changing and deleting the device's items of one type.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "desktop/session.h"

namespace desktop {

struct ItemWrite {
  std::uint32_t oid = 0;  ///< the item to change, or 0 to add one
  Bytes record;
};

/// What the device says of one write. Only reading the item back tells what became of its properties.
struct WriteAnswer {
  bool accepted = false;
  std::uint32_t oid = 0;  ///< the written item; 0 when the device couldn't save a new one
};

/// Writes in batches; one answer for each write, in the same order.
std::vector<WriteAnswer> writeItems(Session& session, ItemType type, std::span<const ItemWrite> writes);

/// The items that the device deleted, in its order.
std::vector<std::uint32_t> deleteItems(Session& session, ItemType type, std::span<const std::uint32_t> oids);

}  // namespace desktop
