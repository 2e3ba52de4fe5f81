#include "emulator/snapshot/values.h"

#include <array>
#include <cstring>
#include <limits>

#include "emulator/pim/variant_time.h"
#include "emulator/snapshot/base64.h"
#include "emulator/snapshot/fields.h"
#include "emulator/snapshot/time_text.h"
#include "emulator/system/utf16.h"

namespace emulator {
namespace {

constexpr const char* kUtf16Key = "utf16";

constexpr std::array<std::string_view, 9> kKindNames{"nothing",        "a file",   "a folder",
                                                     "a database",     "a record", "a contact",
                                                     "an appointment", "a task",   "a message"};

void readUnits(std::u16string& text, const JsonNode& node) {
  const Bytes bytes = readBytes(node);
  if (bytes.size() % sizeof(char16_t) != 0) node.refuse("half a character at the end");
  text.resize(bytes.size() / sizeof(char16_t));
  if (!text.empty()) std::memcpy(text.data(), bytes.data(), bytes.size());
}

constexpr std::array kUnitFields{Field<std::u16string>{kUtf16Key, readUnits}};

template <typename Value>
Value readTime(const JsonNode& node, std::optional<Value> (*parse)(std::string_view), const char* form) {
  const auto time = parse(node.text());
  if (!time) node.refuse(std::string("not a time of the form ") + form);
  return *time;
}

}  // namespace

Json textToJson(std::u16string_view text) {
  std::string utf8 = toUtf8(text);
  if (toUtf16(utf8) == text) return utf8;
  const auto* units = reinterpret_cast<const std::uint8_t*>(text.data());
  return Json::object({{kUtf16Key, toBase64(ByteView(units, text.size() * sizeof(char16_t)))}});
}

std::u16string readText(const JsonNode& node) {
  if (!node.isObject()) return toUtf16(node.text());
  std::u16string text;
  readFields<std::u16string>(node, kUnitFields, text);
  return text;
}

Json bytesToJson(ByteView bytes) {
  return toBase64(bytes);
}

Bytes readBytes(const JsonNode& node) {
  auto bytes = fromBase64(node.text());
  if (!bytes) node.refuse("not base64");
  return std::move(*bytes);
}

Ticks readUtc(const JsonNode& node) {
  return readTime(node, parseUtc, "YYYY-MM-DDTHH:MM:SS.mmmZ");
}

double readLocal(const JsonNode& node) {
  return readTime(node, parseLocal, "YYYY-MM-DDTHH:MM:SS.mmm");
}

void requireInCalendar(const JsonNode& node, double date, Day earliest) {
  if (isInCalendar(date, earliest)) return;
  constexpr std::size_t kDateLength = std::string_view("2999-12-31").size();
  const auto dateText = [](Day day) { return localText(day).substr(0, kDateLength); };
  node.refuse("is out of range (" + dateText(earliest) + " to " + dateText(kLastDay) + ")");
}

Oid readOid(const JsonNode& node) {
  return static_cast<Oid>(node.number(1, std::numeric_limits<Oid>::max()));
}

Oid readMessageId(const JsonNode& node) {
  return static_cast<Oid>(node.number(0, std::numeric_limits<Oid>::max()));
}

std::optional<Oid> readIdentifier(const JsonNode& entry, std::string_view key) {
  const auto node = entry.member(key);
  if (!node || node->isNull()) return std::nullopt;
  return readOid(*node);
}

std::string_view nameOf(ObjectKind kind) {
  return kKindNames.at(static_cast<std::size_t>(kind));
}

void refuseHeld(const JsonNode& node, ObjectKind holder) {
  node.refuse("identifier of " + std::string(nameOf(holder)));
}

JsonNode requireMember(const JsonNode& entry, std::string_view key) {
  const auto node = entry.member(key);
  if (!node) entry.refuse("has no " + std::string(key));
  return *node;
}

}  // namespace emulator
