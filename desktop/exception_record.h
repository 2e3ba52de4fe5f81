// The records of a series' exceptions, which follow its recurrence block.
//
//   offset 0   time   the day of the occurrence that it replaces
//          16  time   start
//          32  time   end; for an all-day series the midnight after the last day
//          48  u32    1 = the occurrence was deleted
//          52  u32    unused
//          56  u32    reminder set
//          60  u32    reminder minutes
//          64  u32    busy status
//          68  3 x u32  whether a subject, a location, a body follows: any value but 0 says yes
//          80         the texts that follow
//
// 0xFFFFFFFF as reminder set, reminder minutes or busy status tells the device to leave it as it is in the
// series. The device itself sends that value for a reminder that is set, so a set reminder is sent to it as
// 0x0000FFFF.
#pragma once

#include "desktop/appointment.h"
#include "desktop/wire.h"

namespace desktop {

constexpr std::size_t kExceptionRecordSize = 80;

void writeException(WireWriter& writer, const AppointmentException& exception);

/// Throws ProtocolError for a time that there isn't. What the device sends in full stays in the result, also
/// where it equals the series.
AppointmentException readException(WireReader& reader);

}  // namespace desktop
