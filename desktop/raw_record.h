// A record's bytes with the names of what they are.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "desktop/item_kind.h"
#include "desktop/record_layout.h"
#include "desktop/session.h"

namespace desktop {

/// Some bytes of a record that belong together: of a field its tag and its value.
struct RawPart {
  std::size_t offset = 0;
  BytesView bytes;    ///< of the record that was taken apart
  std::string name;   ///< `subject (tag 1)`
  std::string value;  ///< spelled for people; empty for what has no value of its own
};

struct RawParts {
  std::vector<RawPart> parts;  ///< all bytes of the record
  std::string fault;           ///< why the last part is no more than bytes; empty when all have a meaning
};

/// Takes a record apart, from its header on. Without layouts only the header is known.
RawParts takeApart(BytesView record, std::span<const FieldLayout> layouts);

/// The record of one item as the device sends it; the device is rid of the files that accompany it. Throws
/// DeviceRefusal when the device has no such item.
Bytes readRawRecord(Session& session, const ItemKind& kind, std::uint32_t oid);

}  // namespace desktop
