// How the message store names its folders and messages.
#pragma once

#include <algorithm>
#include <array>
#include <optional>

#include "channel/wire.h"
#include "platform/messaging.h"

namespace qorv {

/// Messages have identifiers of exactly this size.
inline constexpr ULONG kEntryIdSize = 20;
using EntryId = std::array<BYTE, kEntryIdSize>;

/// Bytes 4 to 7 of an identifier, little-endian: the number by which the desktop knows a message, and by
/// which a message's folder is recognised.
inline constexpr std::size_t kObjectIdOffset = 4;

inline DWORD objectId(const EntryId& entryId) {
  return loadDword(&entryId[kObjectIdOffset]);
}

/// Of an identifier as the platform hands it out; nothing when it is too short to have a number.
inline std::optional<DWORD> objectId(const SBinary& entryId) {
  if (entryId.lpb == nullptr || entryId.cb < kObjectIdOffset + sizeof(DWORD)) return std::nullopt;
  return loadDword(entryId.lpb + kObjectIdOffset);
}

/// A message's identifier, copied; nothing when it is too short to be one.
inline std::optional<EntryId> copyEntryId(const SBinary& entryId) {
  if (entryId.lpb == nullptr || entryId.cb < kEntryIdSize) return std::nullopt;
  EntryId copy;
  std::copy_n(entryId.lpb, kEntryIdSize, copy.begin());
  return copy;
}

}  // namespace qorv
