// The header that the device's lists begin with.
#pragma once

#include <cstddef>
#include <cstdint>

#include "desktop/wire.h"

namespace desktop {

constexpr std::size_t kListHeaderSize = 7;

struct ListHeader {
  bool done = false;
  std::uint8_t status = 0;  ///< of lists of changes: 1 for a contract that the device can't use
  std::uint32_t count = 0;
};

ListHeader readListHeader(WireReader& reader);

/// Throws ProtocolError unless just the entries that the header claims follow, of `size` bytes each.
void expectEntries(const WireReader& reader, const ListHeader& header, std::size_t size);

}  // namespace desktop
