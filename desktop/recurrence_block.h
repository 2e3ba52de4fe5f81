// The 98-byte block that carries a repetition rule.
//
//   offset 0   time   first day of the series
//          16  time   last day, for a series that ends on a date
//          32  32     unused
//          64  u8     type
//          65  u32    occurrences, for a series that ends after a number of them
//          69  u8     how it ends
//          70  u32    unused
//          74  u32    interval
//          78  u32    day-of-week mask
//          82  u32    day of month
//          86  u32    instance
//          90  u32    month of year
//          94  u32    number of exception records that follow the block
//
// What the type or the end doesn't use is sent as 0, and is left-over bytes when the device sends it.
#pragma once

#include "desktop/appointment.h"
#include "desktop/wire.h"

namespace desktop {

constexpr std::uint32_t kRecurrenceBlockSize = 98;

void writeRecurrenceBlock(WireWriter& writer, const Recurrence& rule, std::uint32_t exceptionCount);

struct RecurrenceBlock {
  Recurrence rule;
  std::uint32_t exceptionCount = 0;
};

/// Throws ProtocolError for a type, an end or a day that there isn't.
RecurrenceBlock readRecurrenceBlock(WireReader& reader);

}  // namespace desktop
