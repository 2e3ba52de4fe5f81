#include "emulator/database/sort_order.h"

#include <algorithm>
#include <cstring>

#include "emulator/system/case_fold.h"

namespace emulator {
namespace {

// Every property's part of a key begins with one of these.
constexpr std::uint8_t kMissingFirst = 0;
constexpr std::uint8_t kKnown = 1;
constexpr std::uint8_t kMissingLast = 2;

constexpr std::uint8_t kSignBit = 0x80;

bool has(DWORD flags, DWORD flag) {
  return (flags & flag) != 0;
}

bool isSigned(WORD type) {
  return type == CEVT_I2 || type == CEVT_I4;
}

/// The high byte first, and negative numbers below the others.
void appendInteger(Bytes& key, WORD type, ByteView data) {
  const std::size_t start = key.size();
  key.insert(key.end(), data.rbegin(), data.rend());
  if (isSigned(type)) key[start] ^= kSignBit;
}

/// The bits of a double compare as an integer does, with the negative ones upside down.
void appendReal(Bytes& key, ByteView data) {
  double value = 0;
  std::memcpy(&value, data.data(), sizeof value);
  if (value == 0) value = 0;  // there is a negative zero too
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof bits);
  const bool isNegative = (bits >> 63) != 0;
  bits = isNegative ? ~bits : bits | std::uint64_t{1} << 63;
  for (int shift = 56; shift >= 0; shift -= 8) key.push_back(static_cast<std::uint8_t>(bits >> shift));
}

/// Ends with a NUL, so that a text stands before those that begin with it.
void appendText(Bytes& key, ByteView data, bool fold) {
  for (std::size_t at = 0; at + 1 < data.size(); at += sizeof(char16_t)) {
    const auto unit = static_cast<char16_t>(data[at] | data[at + 1] << 8);
    const char16_t sorted = fold ? foldCase(unit) : unit;
    key.push_back(static_cast<std::uint8_t>(sorted >> 8));
    key.push_back(static_cast<std::uint8_t>(sorted));
  }
  key.insert(key.end(), sizeof(char16_t), 0);
}

void appendValue(Bytes& key, const SortProperty& property, ByteView data) {
  const WORD type = typeOf(property.id);
  key.push_back(kKnown);
  const auto start = static_cast<std::ptrdiff_t>(key.size());
  if (type == CEVT_LPWSTR) {
    appendText(key, data, has(property.flags, CEDB_SORT_CASEINSENSITIVE));
  } else if (type == CEVT_R8) {
    appendReal(key, data);
  } else {
    appendInteger(key, type, data);
  }
  if (!has(property.flags, CEDB_SORT_DESCENDING)) return;
  std::transform(key.begin() + start, key.end(), key.begin() + start,
                 [](std::uint8_t byte) { return static_cast<std::uint8_t>(~byte); });
}

}  // namespace

bool SortOrder::isUniqueFor(const RecordProperties& record) const {
  const auto isUnique = [](const SortProperty& property) { return has(property.flags, CEDB_SORT_UNIQUE); };
  if (!has(keyFlags, CEDB_SORT_UNIQUE) && std::ranges::none_of(properties, isUnique)) return false;
  return std::ranges::all_of(
      properties, [&](const SortProperty& property) { return findProperty(record, property.id) != nullptr; });
}

bool SortOrder::takes(const RecordProperties& record) const {
  return std::ranges::all_of(properties, [&](const SortProperty& property) {
    return !has(property.flags, CEDB_SORT_NONNULL) || findProperty(record, property.id) != nullptr;
  });
}

bool hasProperties(const SortOrder& order, std::span<const CEPROPID> ids) {
  return std::ranges::equal(order.properties, ids, {}, &SortProperty::id);
}

Bytes sortKey(const SortOrder& order, const RecordProperties& record) {
  Bytes key;
  for (const SortProperty& property : order.properties) {
    if (const RecordProperty* const found = findProperty(record, property.id)) {
      appendValue(key, property, found->data);
    } else {
      key.push_back(has(property.flags, CEDB_SORT_UNKNOWNFIRST) ? kMissingFirst : kMissingLast);
    }
  }
  return key;
}

Bytes sortKeyOfValue(const SortProperty& property, ByteView data) {
  Bytes key;
  appendValue(key, property, data);
  return key;
}

Bytes keyPast(Bytes prefix) {
  while (prefix.back() == 0xFF) prefix.pop_back();
  ++prefix.back();
  return prefix;
}

Bytes leastKnownKey() {
  return {kKnown};
}

}  // namespace emulator
