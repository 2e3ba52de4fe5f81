// The tagged fields of a record: their numbers on the wire, their names for people, and where the value is
// held.
#pragma once

#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <variant>

#include "desktop/local_time.h"
#include "desktop/overloaded.h"
#include "desktop/wire.h"

namespace desktop {

/// In front of the fields: result, status, OID, number of fields.
constexpr std::size_t kRecordHeaderSize = 7;

/// A field of records that are held as a Value.
template <typename Value>
struct RecordField {
  using Text = std::u16string Value::*;
  using Number = std::uint32_t Value::*;
  using Flag = bool Value::*;
  using Time = LocalTime Value::*;

  std::uint32_t tag;
  std::string_view name;
  /// The member's type says how the value travels: as text, u32 or time; a flag as u32.
  std::variant<Text, Number, Flag, Time> member;
  /// What a flag that is set is sent as. The device sends 1 for each of them.
  std::uint32_t setFlag = 1;
};

/// The recurrence block, in the records of appointments and of tasks.
inline constexpr std::uint32_t kRecurrenceTag = 19;

/// Reads a record's header, 7 bytes, and says how many fields follow. `singular` is what a message calls such
/// an item. Throws ProtocolError unless it is the header of the given item's record.
std::uint8_t readRecordHeader(WireReader& reader, std::string_view singular, std::uint32_t oid);

/// Reads a time that may be none. Throws ProtocolError when it is neither none nor a time.
LocalTime readTimeOrNone(WireReader& reader, std::string_view singular, std::uint32_t oid,
                         std::string_view name);

/// Both throw ProtocolError: a record has a field that there isn't, or lacks one.
[[noreturn]] void refuseField(std::string_view singular, std::uint32_t oid, std::uint32_t tag);
[[noreturn]] void refuseLack(std::string_view singular, std::uint32_t oid, std::string_view name);

/// The tag and the value.
template <typename Value>
void writeField(WireWriter& writer, const RecordField<Value>& field, const Value& value) {
  using Field = RecordField<Value>;
  writer.number(field.tag);
  std::visit(Overloaded{
                 [&](typename Field::Text text) { writer.text(value.*text); },
                 [&](typename Field::Number number) { writer.number(value.*number); },
                 [&](typename Field::Flag flag) { writer.number(value.*flag ? field.setFlag : 0); },
                 [&](typename Field::Time time) { writer.time(value.*time); },
             },
             field.member);
}

template <typename Value>
void readField(WireReader& reader, const RecordField<Value>& field, std::string_view singular, Value& value) {
  using Field = RecordField<Value>;
  std::visit(Overloaded{
                 [&](typename Field::Text text) { value.*text = reader.text(); },
                 [&](typename Field::Number number) { value.*number = reader.number(); },
                 [&](typename Field::Flag flag) { value.*flag = reader.number() != 0; },
                 [&](typename Field::Time time) {
                   value.*time = readTimeOrNone(reader, singular, value.oid, field.name);
                 },
             },
             field.member);
}

/// A value, and which fields it was read from, by their places.
template <typename Value, std::size_t size>
struct SparseValue {
  Value value;
  std::bitset<size> seen;
};

/// Reads the record of the given item, from its header on, whatever fields it has. A tag that is none of the
/// fields' is handed to `readOther(reader, tag, value)`, which says whether it is one that such a record can
/// have. Throws ProtocolError for any other record.
template <typename Value, typename Fields, typename ReadOther>
auto readSparseRecord(WireReader& reader, std::string_view singular, std::uint32_t oid, const Fields& fields,
                      ReadOther readOther) {
  SparseValue<Value, std::tuple_size_v<Fields>> read;
  read.value.oid = oid;
  for (int left = readRecordHeader(reader, singular, oid); left > 0; --left) {
    const std::uint32_t tag = reader.number();
    std::size_t place = 0;
    while (place < fields.size() && fields[place].tag != tag) ++place;
    if (place < fields.size()) {
      read.seen.set(place);
      readField(reader, fields[place], singular, read.value);
    } else if (!readOther(reader, tag, read.value)) {
      refuseField(singular, oid, tag);
    }
  }
  return read;
}

/// The same for records that have all fields; throws ProtocolError also for one that lacks a field.
template <typename Value, typename Fields, typename ReadOther>
Value readRecord(WireReader& reader, std::string_view singular, std::uint32_t oid, const Fields& fields,
                 ReadOther readOther) {
  auto read = readSparseRecord<Value>(reader, singular, oid, fields, readOther);
  for (std::size_t place = 0; place < fields.size(); ++place) {
    if (!read.seen[place]) refuseLack(singular, oid, fields[place].name);
  }
  return std::move(read.value);
}

}  // namespace desktop
