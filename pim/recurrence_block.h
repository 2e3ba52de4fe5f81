// The 98-byte block that carries one recurrence pattern as field 19 of appointments and tasks.
//
//   0   16  first day of the series (the time of day does not count)
//   16  16  last day, for an end on a date
//   32  32  reserved
//   64   1  recurrence type, the object model's own number
//   65   4  number of occurrences, for an end after them
//   69   1  end kind: 1 on a date, 2 after occurrences, 3 never
//   70   4  reserved
//   74   4  interval in units of the type
//   78   4  day-of-week mask
//   82   4  day of month
//   86   4  instance: which week of the month
//   90   4  month of year
//   94   4  number of exception records that follow (appointments)
#pragma once

#include <algorithm>
#include <array>
#include <span>

#include "channel/wire.h"

namespace qorv {

enum class EndKind : BYTE { OnDate = 1, AfterOccurrences = 2, Never = 3 };

/// Raw bytes, so that the reserved ranges stay as they came.
class RecurrenceBlock {
 public:
  static constexpr std::size_t kStart = 0;
  static constexpr std::size_t kEnd = 16;
  static constexpr std::size_t kType = 64;
  static constexpr std::size_t kOccurrences = 65;
  static constexpr std::size_t kEndKind = 69;
  static constexpr std::size_t kInterval = 74;
  static constexpr std::size_t kDayOfWeekMask = 78;
  static constexpr std::size_t kDayOfMonth = 82;
  static constexpr std::size_t kInstance = 86;
  static constexpr std::size_t kMonthOfYear = 90;
  static constexpr std::size_t kExceptionCount = 94;

  using Bytes = std::span<const BYTE, kRecurrenceBlockSize>;

  void assign(Bytes bytes) { std::ranges::copy(bytes, bytes_.begin()); }
  [[nodiscard]] Bytes bytes() const { return bytes_; }

  [[nodiscard]] SYSTEMTIME time(std::size_t offset) const { return loadSystemTime(&bytes_[offset]); }
  void setTime(std::size_t offset, const SYSTEMTIME& time) { storeSystemTime(&bytes_[offset], time); }
  [[nodiscard]] DWORD number(std::size_t offset) const { return loadDword(&bytes_[offset]); }
  void setNumber(std::size_t offset, DWORD number) { storeDword(&bytes_[offset], number); }
  [[nodiscard]] BYTE type() const { return bytes_[kType]; }
  void setType(BYTE type) { bytes_[kType] = type; }
  [[nodiscard]] EndKind endKind() const { return static_cast<EndKind>(bytes_[kEndKind]); }
  void setEndKind(EndKind kind) { bytes_[kEndKind] = static_cast<BYTE>(kind); }

 private:
  std::array<BYTE, kRecurrenceBlockSize> bytes_{};
};

}  // namespace qorv
