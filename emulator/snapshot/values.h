// How the values that several parts of a snapshot have are written and read.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "emulator/pim/calendar_day.h"
#include "emulator/snapshot/json_node.h"
#include "emulator/store/object_store.h"
#include "emulator/system/file_time.h"

namespace emulator {

/// A text that is no well-formed UTF-16 is written as {"utf16": base64 of its little-endian units}, so that
/// nothing of it is lost.
Json textToJson(std::u16string_view text);
std::u16string readText(const JsonNode& node);

/// Base64.
Json bytesToJson(ByteView bytes);
Bytes readBytes(const JsonNode& node);

/// See time_text.h: UTC with Z, and the number of a local DATE.
Ticks readUtc(const JsonNode& node);
double readLocal(const JsonNode& node);
/// Refuses a date that lies outside the platform's calendar, or before the earliest day.
void requireInCalendar(const JsonNode& node, double date, Day earliest);

Oid readOid(const JsonNode& node);
/// A message's identifier, which can be 0 as well.
Oid readMessageId(const JsonNode& node);
/// The identifier that an entry gives under a key; nothing when it has none, or null.
std::optional<Oid> readIdentifier(const JsonNode& entry, std::string_view key);

/// "a contact", "a file", ...
std::string_view nameOf(ObjectKind kind);
/// Refuses an identifier because of what has it.
[[noreturn]] void refuseHeld(const JsonNode& node, ObjectKind holder);

/// The member at a key that an object must have.
JsonNode requireMember(const JsonNode& entry, std::string_view key);

}  // namespace emulator
