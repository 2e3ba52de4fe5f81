// A calendar entry as a record on the wire, in both directions.
//
//   to the device    u32 number of fields, the fields (see appointment_fields.h), the recurrence block as the
//   last one,
//                    then its exception records, which don't count as fields
//   from the device  record header, fields, recurrence block and exception records
#pragma once

#include "desktop/appointment.h"
#include "desktop/wire.h"

namespace desktop {

/// The record without any field: makes the device's item a single one and leaves the rest of it alone.
Bytes clearingRecord();

/// The entry must be one that the device can hold (see all_day_end.h).
Bytes writeAppointment(const Appointment& appointment);

/// Reads the record of the given item. Values of an exception that equal those of its series are left out of
/// it. Throws ProtocolError for any other record, and for one that lacks a field.
Appointment readAppointment(WireReader& reader, std::uint32_t oid);

}  // namespace desktop
