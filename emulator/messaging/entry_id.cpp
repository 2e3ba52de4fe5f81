#include "emulator/messaging/entry_id.h"

#include <algorithm>

namespace emulator {
namespace {

constexpr std::uint32_t kStoreNumber = 0x01000000;
constexpr std::uint32_t kSignature = 0x56524F51;  // "QORV"
constexpr std::size_t kWordBytes = 4;

using Words = std::array<std::uint32_t, kEntryIdBytes / kWordBytes>;

Words wordsOf(const EntryId& entryId) {
  return {0, entryId.number, static_cast<std::uint32_t>(entryId.folder), entryId.type, kSignature};
}

Words wordsOf(const BYTE* bytes) {
  Words words{};
  for (std::size_t i = 0; i < kEntryIdBytes; ++i) {
    words[i / kWordBytes] |= std::uint32_t{bytes[i]} << (i % kWordBytes * 8);
  }
  return words;
}

}  // namespace

EntryId storeEntryId() {
  return {MAPI_STORE, kStoreNumber};
}

EntryId entryIdOf(MailFolder folder) {
  return {MAPI_FOLDER, static_cast<std::uint32_t>(folder), folder};
}

EntryId entryIdOf(MailFolder folder, Oid message) {
  return {MAPI_MESSAGE, message, folder};
}

Bytes toBytes(const EntryId& entryId) {
  Bytes bytes;
  bytes.reserve(kEntryIdBytes);
  for (const std::uint32_t word : wordsOf(entryId)) {
    for (std::size_t i = 0; i < kWordBytes; ++i) bytes.push_back(static_cast<BYTE>(word >> (i * 8)));
  }
  return bytes;
}

std::optional<EntryId> parseEntryId(ULONG size, const BYTE* bytes) {
  if (bytes == nullptr || size != kEntryIdBytes) return std::nullopt;
  const Words words = wordsOf(bytes);
  const EntryId entryId{words[3], words[1], static_cast<MailFolder>(words[2])};
  if (words != wordsOf(entryId)) return std::nullopt;
  if (entryId == storeEntryId()) return entryId;
  if (findMailFolder(entryId.folder) == nullptr) return std::nullopt;
  const bool isKnown = entryId == entryIdOf(entryId.folder) || entryId.type == MAPI_MESSAGE;
  return isKnown ? std::optional(entryId) : std::nullopt;
}

}  // namespace emulator
