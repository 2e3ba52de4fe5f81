// The desktop's own reading of the wire: message layout, codes, and bounds-checked reading and writing of
// values.
//
//   message    u32 length, then that many bytes; one request, one reply, in turns
//   request    u8 command, u8 item type (1 to 5, in every request), arguments
//   integers   little-endian, at any byte
//   text       u32 byte count, then UTF-16LE; in a reply the count and the bytes include a terminating NUL
//   time       8 x u16: year, month, day of week (Sunday 0), day, hour, minute, second, millisecond; local
//   time
//
//   command  arguments                                reply
//    1 end        -                                   empty
//    2 add        u32 reference, record               item reply, 10 unused bytes
//    3 change     u32 OID, record                     as 2
//    6 count      -                                   u8 result, u8 status, u32 count
//    7 read one   u32 OID                            record; 0, 3 when there is no such item
//    9 forget     text contract                      0 or 2 bytes: u8 result, u8 status
//   10 find       text contract                      u8 result, u8 status
//   11 changes    text contract                      list header, (u32 OID, u8 kind) each
//   12 commit     text contract                      u8 result, u8 status
//   13 list       -                                   list header, u32 OID each
//   14 identity   -                                   u32, text
//   15 write      u32 n, n x (u8 2 = add or 3 = change, u8 item type, u32 reference or OID, record)
//                                                     item reply each; 0, 3 ends the reply at an item that
//                                                     can't be had
//   16 read       u32 n, n x u32 OID                  list header, records
//   17 delete     u32 n, n x u32 OID                  u32 OID of each deleted item
//   18 append     text path, u32 unused, u32 n, n bytes
//                                                     u8 result, u8 0, u32 error
//   19 read file  text path, u32 unused, u32 offset, u32 n
//                                                     u8 result, u8 0, u32 error, u32 n, n bytes
//   20 level      -                                   u32 1 or 0
//
//   item reply     10 bytes: u8 result, u8 status, u32 OID, u32 reference (an add's own, a change's OID)
//   list header     7 bytes: u8 result, u8 status, u32 number of entries, u8 fields of the last record
//   record header   7 bytes: u8 1, u8 0, u32 OID, u8 number of fields
//   field          u32 tag, then a u32, a text, a time or the 98-byte recurrence block, as the tag says
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/local_time.h"

namespace desktop {

using Bytes = std::vector<std::uint8_t>;
using BytesView = std::span<const std::uint8_t>;

enum class Command : std::uint8_t {
  EndSession = 1,
  AddItem = 2,
  ChangeItem = 3,
  CountItems = 6,
  ReadItem = 7,
  DeleteContract = 9,
  FindContract = 10,
  GetChanges = 11,
  CommitChanges = 12,
  GetAllItems = 13,
  GetDeviceIdentity = 14,
  WriteItems = 15,
  ReadItems = 16,
  DeleteItems = 17,
  AppendFile = 18,
  ReadFileChunk = 19,
  GetPlatformLevel = 20,
};

enum class ItemType : std::uint8_t { Contact = 1, Appointment = 2, Task = 3, Mail = 4, Note = 5 };

/// The device builds every reply in one buffer of this size; a longer reply can't be one.
constexpr std::size_t kReplyBufferSize = 0x36000;

/// Reads one reply from its first byte on. Every read that would leave the reply throws ProtocolError.
class WireReader {
 public:
  explicit WireReader(BytesView reply) : rest_(reply) {}

  std::uint8_t byte();
  std::uint32_t number();
  LocalTime time();
  /// Up to the first NUL.
  std::u16string text();
  /// The view is good for as long as the reply is.
  BytesView raw(std::size_t count);

  std::size_t left() const { return rest_.size(); }
  /// Throws ProtocolError unless the reply ends here.
  void expectEnd() const;

 private:
  BytesView rest_;
};

/// Builds the arguments of a request; the bytes are taken with `take`.
class WireWriter {
 public:
  void byte(std::uint8_t value);
  void number(std::uint32_t value);
  void time(const LocalTime& value);
  void text(std::u16string_view value);
  void raw(BytesView bytes);
  void zeros(std::size_t count);

  Bytes take() { return std::move(bytes_); }

 private:
  void half(std::uint16_t value);

  Bytes bytes_;
};

}  // namespace desktop
