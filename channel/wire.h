// The wire format: framing, command and data type codes, and the reply headers.
//
//   message         u32 payload length L, then L bytes; both directions
//   request         u8 command, u8 data type, then the command's arguments
//   reply           what the operation built, from the start of the response buffer
//   item reply      u8 result, u8 status, u32 OID, u32 reference                        (10 bytes)
//   list reply      u8 result, u8 status, u32 entries, u8 field count of the last record (7 bytes)
//   record          u8 result, u8 status, u32 OID, u8 field count, then the fields       (7 bytes and on)
//   tagged field    u32 field id, then a u32, a text, a time or a block of 98 bytes
//   text            u32 byte count, then UTF-16LE; in replies the count includes the terminating NUL
//   time            eight u16: year, month, day of week, day, hour, minute, second, milliseconds
//
// Integers are little-endian and nothing is aligned.
#pragma once

#include <array>

#include "platform/types.h"

namespace qorv {

enum class Command : BYTE {
  EndSession = 1,
  AddItem = 2,
  ChangeItem = 3,
  DeleteItem = 4,
  DeleteAllItems = 5,
  CountItems = 6,
  ReadItem = 7,
  CreateContract = 8,
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

enum class DataType : BYTE { Contact = 1, Appointment = 2, Task = 3, Mail = 4, InkNote = 5 };
inline constexpr std::size_t kDataTypes = 5;

constexpr bool isDataType(BYTE code) {
  return code >= 1 && code <= kDataTypes;
}

/// What stands in front of a request's arguments: command and data type.
inline constexpr DWORD kRequestHeaderSize = 2;

/// The session's one buffer, into which every reply is built.
inline constexpr DWORD kResponseBufferSize = 0x36000;
/// No text is written past this length; the other half of the buffer is headroom for what isn't text.
inline constexpr DWORD ResponseBufferLimit = kResponseBufferSize / 2;

inline constexpr DWORD kRecurrenceBlockSize = 98;

inline constexpr BYTE kStatusNone = 0;
/// The data type has no record writer.
inline constexpr BYTE kStatusNoWriter = 1;
/// The contract was not found, has no sequence number, or could not be written.
inline constexpr BYTE kStatusContractFailed = 1;
/// The object model refused the item or the folder.
inline constexpr BYTE kStatusRefused = 3;

void storeWord(BYTE* at, WORD value);
void storeDword(BYTE* at, DWORD value);
[[nodiscard]] WORD loadWord(const BYTE* at);
[[nodiscard]] DWORD loadDword(const BYTE* at);

inline constexpr std::size_t kSystemTimeSize = 16;
void storeSystemTime(BYTE* at, const SYSTEMTIME& time);
[[nodiscard]] SYSTEMTIME loadSystemTime(const BYTE* at);

/// The answer to one written item.
struct ItemReplyHeader {
  static constexpr std::size_t kSize = 10;

  BYTE result = 0;
  BYTE status = kStatusNone;
  DWORD oid = 0;        ///< 0 until the item was saved
  DWORD reference = 0;  ///< the requester's own number of an added item; the OID of a changed one

  [[nodiscard]] std::array<BYTE, kSize> bytes() const;
};

/// The first bytes of a list reply. Records begin with the same seven bytes, the OID in place of the entry
/// count, and are built in the same block; so a list keeps its own count elsewhere meanwhile.
struct ListReplyHeader {
  static constexpr std::size_t kSize = 7;

  BYTE result = 0;
  BYTE status = kStatusNone;
  DWORD count = 0;
  BYTE fieldCount = 0;  ///< tagged fields of the last record, modulo 256

  [[nodiscard]] std::array<BYTE, kSize> bytes() const;
};
using RecordHeader = ListReplyHeader;

}  // namespace qorv
