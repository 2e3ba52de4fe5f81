#include "emulator/database/property_block.h"

#include <cstring>

namespace emulator {
namespace {

/// Texts and blobs lie each at an even address.
constexpr std::size_t evenSize(std::size_t size) {
  return (size + 1) & ~std::size_t{1};
}

CEVALUNION pointerTo(std::uint8_t* bytes, const BlockValue& value) {
  CEVALUNION val{};
  if (typeOf(value.value.propid) == CEVT_BLOB) {
    val.blob = {static_cast<DWORD>(value.bytes.size()), bytes};
  } else {
    val.lpwstr = reinterpret_cast<LPWSTR>(bytes);
  }
  return val;
}

}  // namespace

BlockValue blockValue(const RecordProperty& property) {
  BlockValue result;
  result.value.propid = property.id;
  if (numberSize(typeOf(property.id)) != 0) {
    std::memcpy(&result.value.val, property.data.data(), property.data.size());
  } else {
    result.bytes = property.data;
    if (typeOf(property.id) == CEVT_LPWSTR) result.bytes.resize(property.data.size() + sizeof(WCHAR));
  }
  return result;
}

BlockValue missingValue(CEPROPID id) {
  BlockValue result;
  result.value.propid = id;
  result.value.wFlags = CEDB_PROPNOTFOUND;
  return result;
}

std::size_t blockSize(std::span<const BlockValue> values) {
  std::size_t size = values.size() * sizeof(CEPROPVAL);
  for (const BlockValue& value : values) size += evenSize(value.bytes.size());
  return size;
}

void fillBlock(std::uint8_t* block, std::span<const BlockValue> values) {
  std::uint8_t* bytes = block + values.size() * sizeof(CEPROPVAL);
  for (const BlockValue& found : values) {
    CEPROPVAL value = found.value;
    if (!found.bytes.empty()) {
      std::memcpy(bytes, found.bytes.data(), found.bytes.size());
      value.val = pointerTo(bytes, found);
      bytes += evenSize(found.bytes.size());
    }
    std::memcpy(block, &value, sizeof value);
    block += sizeof value;
  }
}

}  // namespace emulator
