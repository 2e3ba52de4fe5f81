// The lasting name of a device's item in standard files.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "desktop/item_kind.h"

namespace desktop {

/// `appointment-18@IDENTITY`: the same for the same device and item for ever, as the device never uses an OID
/// again.
std::string itemUid(const ItemKind& kind, std::u16string_view deviceIdentity, std::uint32_t oid);

/// The item of that kind that a UID names on this device; nothing for any other UID. A device without an
/// identity recognises none, as it can't be told from another one.
std::optional<std::uint32_t> oidOfUid(const ItemKind& kind, std::u16string_view deviceIdentity,
                                      std::string_view uid);

}  // namespace desktop
