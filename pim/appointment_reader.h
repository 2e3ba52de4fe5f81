// Turns an appointment into the fields of its record.
#pragma once

#include "channel/reply_writer.h"
#include "pim/recurrence_block.h"
#include "platform/appointment.h"
#include "platform/outlook.h"

namespace qorv {

/// Appends all fields in their fixed order, then the exception records of a series. The block is the handler's.
void writeAppointmentFields(IPOutlookApp& application, IAppointment& appointment, DWORD oid,
                            ReplyWriter& reply, RecurrenceBlock& block);

}  // namespace qorv
