#include "emulator/snapshot/database_values_json.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

#include "emulator/database/database_description.h"
#include "emulator/snapshot/fields.h"
#include "emulator/snapshot/time_text.h"
#include "emulator/snapshot/values.h"

namespace emulator {
namespace {

constexpr const char* kPropertyKey = "property";
constexpr const char* kFlagsKey = "flags";
constexpr const char* kKeysKey = "keys";
constexpr const char* kKeyFlagsKey = "key_flags";

// JSON has no such numbers.
constexpr const char* kInfinity = "Infinity";
constexpr const char* kMinusInfinity = "-Infinity";
constexpr const char* kNotANumber = "NaN";

template <typename Number>
Bytes bytesOf(Number number) {
  Bytes bytes(sizeof number);
  std::memcpy(bytes.data(), &number, sizeof number);
  return bytes;
}

template <typename Number>
Number numberIn(const Bytes& bytes) {
  Number number{};
  std::memcpy(&number, bytes.data(), std::min(sizeof number, bytes.size()));
  return number;
}

template <typename Number>
Bytes readInteger(const JsonNode& node) {
  using Limits = std::numeric_limits<Number>;
  return bytesOf(static_cast<Number>(node.number(Limits::min(), Limits::max())));
}
template <typename Number>
Json integerToJson(const Bytes& bytes) {
  return numberIn<Number>(bytes);
}

Bytes readFlag(const JsonNode& node) {
  return bytesOf(node.flag() ? BOOL{TRUE} : BOOL{FALSE});
}
Json flagToJson(const Bytes& bytes) {
  return numberIn<BOOL>(bytes) != FALSE;
}

Bytes readReal(const JsonNode& node) {
  if (!node.isText()) return bytesOf(node.real());
  if (node.text() == kInfinity) return bytesOf(std::numeric_limits<double>::infinity());
  if (node.text() == kMinusInfinity) return bytesOf(-std::numeric_limits<double>::infinity());
  if (node.text() == kNotANumber) return bytesOf(std::numeric_limits<double>::quiet_NaN());
  node.refuse("expected a number, Infinity, -Infinity or NaN");
}
Json realToJson(const Bytes& bytes) {
  const auto value = numberIn<double>(bytes);
  if (std::isnan(value)) return kNotANumber;
  if (std::isinf(value)) return value < 0 ? kMinusInfinity : kInfinity;
  return value;
}

Bytes readCharacters(const JsonNode& node) {
  const std::u16string text = readText(node);
  if (text.find(u'\0') != std::u16string::npos) node.refuse("has a NUL, where a text ends");
  Bytes bytes(text.size() * sizeof(char16_t));
  if (!text.empty()) std::memcpy(bytes.data(), text.data(), bytes.size());
  return bytes;
}
Json charactersToJson(const Bytes& bytes) {
  std::u16string text(bytes.size() / sizeof(char16_t), u'\0');
  if (!text.empty()) std::memcpy(text.data(), bytes.data(), text.size() * sizeof(char16_t));
  return textToJson(text);
}

Bytes readFileTime(const JsonNode& node) {
  if (node.isNumber()) return readInteger<Ticks>(node);
  const auto time = parsePreciseUtc(node.text());
  if (!time) node.refuse("not a time of the form YYYY-MM-DDTHH:MM:SS.0000000Z");
  return bytesOf(*time);
}
Json fileTimeToJson(const Bytes& bytes) {
  const auto time = numberIn<Ticks>(bytes);
  const auto text = preciseUtcText(time);
  return text ? Json(*text) : Json(time);
}

Json blobToJson(const Bytes& bytes) {
  return bytesToJson(bytes);
}

struct TypeRow {
  WORD type;
  Bytes (*read)(const JsonNode& node);
  Json (*toJson)(const Bytes& bytes);
};

constexpr std::array kTypes{
    TypeRow{CEVT_I2, readInteger<SHORT>, integerToJson<SHORT>},
    TypeRow{CEVT_UI2, readInteger<USHORT>, integerToJson<USHORT>},
    TypeRow{CEVT_I4, readInteger<LONG>, integerToJson<LONG>},
    TypeRow{CEVT_UI4, readInteger<ULONG>, integerToJson<ULONG>},
    TypeRow{CEVT_R8, readReal, realToJson},
    TypeRow{CEVT_BOOL, readFlag, flagToJson},
    TypeRow{CEVT_FILETIME, readFileTime, fileTimeToJson},
    TypeRow{CEVT_LPWSTR, readCharacters, charactersToJson},
    TypeRow{CEVT_BLOB, readBytes, blobToJson},
};

const TypeRow* rowOf(CEPROPID id) {
  const auto* const row = std::ranges::find(kTypes, typeOf(id), &TypeRow::type);
  return row == kTypes.end() ? nullptr : row;
}

CEPROPID readIdentifier(const JsonNode& node) {
  constexpr std::string_view kPrefix = "0x";
  constexpr std::size_t kDigits = 8;
  const std::string& text = node.text();
  CEPROPID id = 0;
  const bool hasForm = text.starts_with(kPrefix) && text.size() == kPrefix.size() + kDigits;
  const char* const end = text.data() + text.size();
  if (!hasForm || std::from_chars(text.data() + kPrefix.size(), end, id, 16).ptr != end) {
    node.refuse("not a property identifier of the form 0xIIIITTTT");
  }
  if (rowOf(id) == nullptr) node.refuse("no record has properties of this type");
  return id;
}

Json identifierToJson(CEPROPID id) {
  std::array<char, 16> text{};
  const int length = std::snprintf(text.data(), text.size(), "0x%08X", id);
  return std::string(text.data(), static_cast<std::size_t>(length));
}

DWORD readFlags(const JsonNode& node) {
  return static_cast<DWORD>(node.number(0, std::numeric_limits<DWORD>::max()));
}

constexpr std::array kSortPropertyFields{
    Field<SortProperty>{kPropertyKey,
                        [](SortProperty& key, const JsonNode& node) {
                          key.id = readIdentifier(node);
                          if (typeOf(key.id) == CEVT_BLOB) node.refuse("records are not sorted by blobs");
                        }},
    Field<SortProperty>{kFlagsKey,
                        [](SortProperty& key, const JsonNode& node) { key.flags = readFlags(node); }},
};

SortProperty readSortProperty(const JsonNode& node) {
  SortProperty key;
  requireMember(node, kPropertyKey);
  readFields<SortProperty>(node, kSortPropertyFields, key);
  return key;
}

constexpr std::array kOrderFields{
    Field<SortOrder>{kKeysKey,
                     [](SortOrder& order, const JsonNode& node) {
                       node.forEachElement([&order](const JsonNode& key) {
                         order.properties.push_back(readSortProperty(key));
                       });
                       const std::size_t count = order.properties.size();
                       if (count == 0 || count > CEDB_MAXSORTPROP)
                         node.refuse("a sort order has 1 to 3 keys");
                     }},
    Field<SortOrder>{kKeyFlagsKey,
                     [](SortOrder& order, const JsonNode& node) {
                       order.keyFlags = static_cast<WORD>(node.number(0, std::numeric_limits<WORD>::max()));
                     }},
};

Json sortPropertyToJson(const SortProperty& key) {
  return Json::object({{kPropertyKey, identifierToJson(key.id)}, {kFlagsKey, key.flags}});
}

}  // namespace

RecordProperty readProperty(const JsonNode& node) {
  std::vector<JsonNode> parts;
  node.forEachElement([&parts](const JsonNode& part) { parts.push_back(part); });
  if (parts.size() != 2) node.refuse("expected a property identifier and a value");
  const CEPROPID id = readIdentifier(parts[0]);
  RecordProperty property{id, rowOf(id)->read(parts[1])};
  if (property.data.size() > kLongestProperty) {
    parts[1].refuse("longer than " + std::to_string(kLongestProperty) + " bytes");
  }
  return property;
}

Json propertyToJson(const RecordProperty& property) {
  return Json::array({identifierToJson(property.id), rowOf(property.id)->toJson(property.data)});
}

SortOrder readOrder(const JsonNode& node) {
  SortOrder order;
  if (node.member(kKeysKey)) {
    readFields<SortOrder>(node, kOrderFields, order);
  } else {
    order.properties.push_back(readSortProperty(node));
  }
  return order;
}

Json orderToJson(const SortOrder& order) {
  if (order.properties.size() == 1 && order.keyFlags == 0)
    return sortPropertyToJson(order.properties.front());
  Json keys = Json::array();
  for (const SortProperty& key : order.properties) keys.push_back(sortPropertyToJson(key));
  return Json::object({{kKeysKey, std::move(keys)}, {kKeyFlagsKey, order.keyFlags}});
}

}  // namespace emulator
