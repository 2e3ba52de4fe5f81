// Finding and reading the device's items of one type.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "desktop/session.h"

namespace desktop {

/// Nothing when the device has no folder of that type to count.
std::optional<std::uint32_t> countItems(Session& session, ItemType type);

/// Throws DeviceRefusal when the device can't list all its items.
std::vector<std::uint32_t> listItems(Session& session, ItemType type);

enum class ReadFailure {
  NotFound,
  TooLarge,  ///< the device can't send all of the item in one reply
  NotSupported,
  Refused,
};

std::string spell(ReadFailure failure);

/// What becomes of the items that are read, in the order in which they were asked for.
struct ItemSink {
  /// Reads exactly one record, from its header on; the record must be that of the given item.
  std::function<void(WireReader& record, std::uint32_t oid)> record;
  std::function<void(std::uint32_t oid, ReadFailure why)> failure;
};

/// Reads items in batches, as many at a time as the device can answer.
void readItems(Session& session, ItemType type, std::span<const std::uint32_t> oids, const ItemSink& sink);

}  // namespace desktop
