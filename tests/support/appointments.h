// Appointment records for requests.
#pragma once

#include "tests/support/bytes.h"

namespace test {

/// A record of `count` fields, which follow.
inline Bytes record(unsigned count) {
  return Bytes().u32(count);
}

inline Bytes textField(unsigned tag, std::u16string_view text) {
  return Bytes().u32(tag).text(text);
}
inline Bytes numberField(unsigned tag, std::uint64_t value) {
  return Bytes().u32(tag).u32(value);
}
/// 2005-03-14, a Monday.
inline Bytes timeField(unsigned tag, int hour, int minute = 0, int day = 14) {
  return Bytes().u32(tag).time(2005, 3, 0, day, hour, minute);
}

/// A subject and 09:00 to 09:30 on that day.
inline Bytes simpleAppointment(std::u16string_view subject) {
  return record(3).append(textField(1, subject)).append(timeField(16, 9)).append(timeField(18, 9, 30));
}

}  // namespace test
