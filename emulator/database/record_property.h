// What records are made of: properties under their identifiers, each with the bytes of its value.
#pragma once

#include <optional>
#include <vector>

#include "emulator/store/sqlite.h"
#include "platform/property_database.h"

namespace emulator {

/// What the bytes are depends on the type in the identifier's low word: a number of 2, 4 or 8 bytes with the
/// low byte first (CEVT_BOOL: 4 bytes, 0 or 1), the UTF-16 characters of a text without a NUL, or a blob.
struct RecordProperty {
  CEPROPID id = 0;
  Bytes data;

  friend bool operator==(const RecordProperty&, const RecordProperty&) = default;
};

/// In the order in which they were written first.
using RecordProperties = std::vector<RecordProperty>;

constexpr WORD typeOf(CEPROPID id) {
  return static_cast<WORD>(id);
}
/// Whether a record can have properties of the type.
bool isRecordType(WORD type);
/// The bytes of a number; 0 for texts and blobs.
std::size_t numberSize(WORD type);
/// Texts and blobs can have any length up to this.
inline constexpr std::size_t kLongestProperty = 4092 * 16 - 1;
/// All values and their identifiers together.
inline constexpr std::size_t kLongestRecord = 128 * 1024;

const RecordProperty* findProperty(const RecordProperties& properties, CEPROPID id);
/// Replaces the property where it stands, or adds it behind the others.
void putProperty(RecordProperties& properties, RecordProperty property);
void removeProperty(RecordProperties& properties, CEPROPID id);
std::size_t sizeOf(const RecordProperties& properties);

/// Properties as one value of the device file, and back.
Bytes packed(const RecordProperties& properties);
RecordProperties unpacked(ByteView bytes);

/// What a program gave; nothing for a type that no record has, a null pointer or a value that is too long.
std::optional<RecordProperty> propertyOf(const CEPROPVAL& value);

/// A property of a type with 4 bytes, and what one holds.
RecordProperty numberProperty(CEPROPID id, DWORD number);
std::optional<DWORD> numberOf(const RecordProperties& properties, CEPROPID id);

}  // namespace emulator
