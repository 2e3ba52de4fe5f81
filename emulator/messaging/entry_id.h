// Entry identifiers: how programs name the store, its folders and its messages.
#pragma once

#include <optional>

#include "emulator/messaging/mail_folder.h"
#include "emulator/store/object_store.h"

namespace emulator {

/// 20 bytes, of which programs know that the second word is the object's number, all little-endian:
///
///   offset  size  content
///        0     4  0: an identifier that stays valid
///        4     4  a message's Id, a folder's number, or the store's
///        8     4  the message's folder, or the folder itself; 0 for the store
///       12     4  MAPI_STORE, MAPI_FOLDER or MAPI_MESSAGE
///       16     4  "QORV": made by this device
inline constexpr std::size_t kEntryIdBytes = 20;

struct EntryId {
  ULONG type;  ///< MAPI_STORE, MAPI_FOLDER or MAPI_MESSAGE
  std::uint32_t number;
  MailFolder folder{};

  friend bool operator==(const EntryId&, const EntryId&) = default;
};

EntryId storeEntryId();
EntryId entryIdOf(MailFolder folder);
EntryId entryIdOf(MailFolder folder, Oid message);

Bytes toBytes(const EntryId& entryId);
/// Nothing for a null pointer, another length, or an identifier that this device can't have made.
std::optional<EntryId> parseEntryId(ULONG size, const BYTE* bytes);

}  // namespace emulator
