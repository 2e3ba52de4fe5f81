#include "emulator/database/record_property.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace emulator {
namespace {

struct TypeRow {
  WORD type;
  std::size_t size;  ///< of a number; 0 for what has any length
};

constexpr std::array kTypes{
    TypeRow{CEVT_I2, 2},   TypeRow{CEVT_UI2, 2},    TypeRow{CEVT_I4, 4},
    TypeRow{CEVT_UI4, 4},  TypeRow{CEVT_R8, 8},     TypeRow{CEVT_FILETIME, 8},
    TypeRow{CEVT_BOOL, 4}, TypeRow{CEVT_LPWSTR, 0}, TypeRow{CEVT_BLOB, 0},
};

/// In front of every value: its identifier and its length.
constexpr std::size_t kHeadBytes = 2 * sizeof(DWORD);

Bytes bytesOf(const void* data, std::size_t size) {
  const auto* const bytes = static_cast<const std::uint8_t*>(data);
  return size == 0 ? Bytes() : Bytes(bytes, bytes + size);
}

void appendWord(Bytes& bytes, DWORD word) {
  const auto at = bytes.size();
  bytes.resize(at + sizeof word);
  std::memcpy(&bytes[at], &word, sizeof word);
}

DWORD wordAt(ByteView bytes, std::size_t at) {
  DWORD word = 0;
  std::memcpy(&word, &bytes[at], sizeof word);
  return word;
}

std::optional<Bytes> textOf(LPCWSTR text) {
  if (text == nullptr) return std::nullopt;
  return bytesOf(text, std::u16string_view(text).size() * sizeof(WCHAR));
}

std::optional<Bytes> blobOf(const CEBLOB& blob) {
  if (blob.lpb == nullptr && blob.dwCount != 0) return std::nullopt;
  return bytesOf(blob.lpb, blob.dwCount);
}

std::optional<Bytes> dataOf(const CEPROPVAL& value) {
  const WORD type = typeOf(value.propid);
  if (type == CEVT_LPWSTR) return textOf(value.val.lpwstr);
  if (type == CEVT_BLOB) return blobOf(value.val.blob);
  if (type == CEVT_BOOL) {
    const BOOL flag = value.val.boolVal != FALSE ? TRUE : FALSE;
    return bytesOf(&flag, sizeof flag);
  }
  return bytesOf(&value.val, numberSize(type));
}

}  // namespace

bool isRecordType(WORD type) {
  return std::ranges::find(kTypes, type, &TypeRow::type) != kTypes.end();
}

std::size_t numberSize(WORD type) {
  const auto* const row = std::ranges::find(kTypes, type, &TypeRow::type);
  return row == kTypes.end() ? 0 : row->size;
}

const RecordProperty* findProperty(const RecordProperties& properties, CEPROPID id) {
  const auto found = std::ranges::find(properties, id, &RecordProperty::id);
  return found == properties.end() ? nullptr : &*found;
}

void putProperty(RecordProperties& properties, RecordProperty property) {
  const auto found = std::ranges::find(properties, property.id, &RecordProperty::id);
  if (found == properties.end()) {
    properties.push_back(std::move(property));
  } else {
    found->data = std::move(property.data);
  }
}

void removeProperty(RecordProperties& properties, CEPROPID id) {
  std::erase_if(properties, [id](const RecordProperty& property) { return property.id == id; });
}

std::size_t sizeOf(const RecordProperties& properties) {
  std::size_t size = 0;
  for (const RecordProperty& property : properties) size += kHeadBytes + property.data.size();
  return size;
}

Bytes packed(const RecordProperties& properties) {
  Bytes bytes;
  bytes.reserve(sizeOf(properties));
  for (const RecordProperty& property : properties) {
    appendWord(bytes, property.id);
    appendWord(bytes, static_cast<DWORD>(property.data.size()));
    bytes.insert(bytes.end(), property.data.begin(), property.data.end());
  }
  return bytes;
}

RecordProperties unpacked(ByteView bytes) {
  RecordProperties properties;
  while (bytes.size() >= kHeadBytes) {
    const CEPROPID id = wordAt(bytes, 0);
    const ByteView rest = bytes.subspan(kHeadBytes);
    const ByteView data = rest.first(std::min<std::size_t>(wordAt(bytes, sizeof id), rest.size()));
    properties.push_back({id, Bytes(data.begin(), data.end())});
    bytes = rest.subspan(data.size());
  }
  return properties;
}

std::optional<RecordProperty> propertyOf(const CEPROPVAL& value) {
  if (!isRecordType(typeOf(value.propid))) return std::nullopt;
  auto data = dataOf(value);
  if (!data || data->size() > kLongestProperty) return std::nullopt;
  return RecordProperty{value.propid, std::move(*data)};
}

RecordProperty numberProperty(CEPROPID id, DWORD number) {
  return {id, bytesOf(&number, sizeof number)};
}

std::optional<DWORD> numberOf(const RecordProperties& properties, CEPROPID id) {
  const RecordProperty* const property = findProperty(properties, id);
  if (property == nullptr || property->data.size() != sizeof(DWORD)) return std::nullopt;
  return wordAt(property->data, 0);
}

}  // namespace emulator
