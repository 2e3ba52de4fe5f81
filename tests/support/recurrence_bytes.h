// Recurrence blocks and exception records as a requester lays them out.
#pragma once

#include <optional>
#include <string>

#include "tests/support/bytes.h"

namespace test {

/// The numbers of the block, in the protocol's order.
struct BlockNumbers {
  unsigned type = 1;
  DWORD occurrences = 0;
  unsigned endKind = 3;
  DWORD interval = 1;
  DWORD dayOfWeekMask = 0;
  DWORD dayOfMonth = 0;
  DWORD instance = 0;
  DWORD monthOfYear = 0;
  DWORD exceptions = 0;
};

/// 98 bytes: start and end (16 each), 32 reserved, type, occurrences, end kind, 4 reserved, and the other
/// numbers.
inline Bytes block(const Bytes& start, const Bytes& end, const BlockNumbers& numbers) {
  return Bytes()
      .append(start)
      .append(end)
      .zeros(32)
      .u8(numbers.type)
      .u32(numbers.occurrences)
      .u8(numbers.endKind)
      .zeros(4)
      .u32(numbers.interval)
      .u32(numbers.dayOfWeekMask)
      .u32(numbers.dayOfMonth)
      .u32(numbers.instance)
      .u32(numbers.monthOfYear)
      .u32(numbers.exceptions);
}

inline Bytes day(int year, int month, int dayOfMonth, int hour = 0, int minute = 0) {
  return Bytes().time(year, month, 0, dayOfMonth, hour, minute);
}

struct ExceptionNumbers {
  DWORD deleted = 0;
  DWORD reminderSet = 0xFFFFFFFF;
  DWORD reminderMinutes = 0xFFFFFFFF;
  DWORD busyStatus = 0xFFFFFFFF;
};

/// 80 bytes, then the texts that are there.
inline Bytes exception(const Bytes& original, const Bytes& start, const Bytes& end,
                       const ExceptionNumbers& numbers = {},
                       const std::optional<std::u16string>& subject = {},
                       const std::optional<std::u16string>& location = {},
                       const std::optional<std::u16string>& body = {}) {
  Bytes bytes = Bytes()
                    .append(original)
                    .append(start)
                    .append(end)
                    .u32(numbers.deleted)
                    .u32(0xFFFFFFFF)
                    .u32(numbers.reminderSet)
                    .u32(numbers.reminderMinutes)
                    .u32(numbers.busyStatus)
                    .u32(subject ? 0x1000 : 0)
                    .u32(location ? 0x1000 : 0)
                    .u32(body ? 0x1000 : 0);
  for (const auto& text : {subject, location, body}) {
    if (text) bytes.text(*text);
  }
  return bytes;
}

}  // namespace test
