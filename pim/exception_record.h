// One changed or deleted occurrence of a series as it travels behind the recurrence block.
//
//   0   16  original date (only year, month and day count)
//   16  16  start
//   32  16  end
//   48   4  1 = deleted, 0 = changed
//   52   4  reserved, all ones when the device sends it
//   56   4  reminder set, sign-extended
//   60   4  reminder minutes
//   64   4  busy status
//   68   4  not 0: a subject follows the record
//   72   4  not 0: a location follows
//   76   4  not 0: a body follows
//
// All ones in the words from 56 to 67 leave the occurrence's property as it is. The texts that are present
// follow in that order, each as a u32 byte count and UTF-16LE.
#pragma once

#include <array>
#include <string>

#include "channel/reply_writer.h"
#include "pim/field_reader.h"

namespace qorv {

inline constexpr DWORD kExceptionRecordSize = 80;
/// A true reminder flag that the device sends is this word too, so sending it back changes nothing.
inline constexpr DWORD kLeaveUnchanged = 0xFFFFFFFF;

struct ExceptionText {
  bool present = false;
  std::u16string text;
};

struct ExceptionRecord {
  SYSTEMTIME originalDate{};
  SYSTEMTIME start{};
  SYSTEMTIME end{};
  DWORD deleted = 0;
  DWORD reserved = kLeaveUnchanged;
  DWORD reminderSet = kLeaveUnchanged;
  DWORD reminderMinutes = kLeaveUnchanged;
  DWORD busyStatus = kLeaveUnchanged;
  ExceptionText subject;
  ExceptionText location;
  ExceptionText body;

  /// The 80 bytes in front of the texts. A present text's word is 1: any value but 0 says so.
  [[nodiscard]] std::array<BYTE, kExceptionRecordSize> bytes() const;
};

/// Reads one record and its texts; what the request lacks is left at zero.
ExceptionRecord readExceptionRecord(FieldReader& fields);

/// Appends the record and its texts, untagged.
void writeExceptionRecord(ReplyWriter& writer, const ExceptionRecord& record);

}  // namespace qorv
