#include "pim/appointment.h"

#include "channel/host_context.h"
#include "pim/appointment_reader.h"
#include "pim/appointment_writer.h"
#include "pim/saved_item.h"
#include "platform/appointment.h"

namespace qorv {

CCEAppointments::CCEAppointments()
    : CQorvApiBase({olFolderCalendar, DataType::Appointment, &hostContext().appointmentLog}) {}

bool CCEAppointments::ReadItemRecord(IDispatch* item, DWORD oid) {
  auto& appointment = static_cast<IAppointment&>(*item);
  const DWORD start = beginRecord();
  writeAppointmentFields(application(), appointment, oid, *this, recurrence_);
  endRecord(start, oidOf(appointment));
  return true;
}

bool CCEAppointments::WriteItemRecord(IDispatch* item, const BYTE* record, DWORD& consumed,
                                      ItemReplyHeader& header) {
  AppointmentWriter writer(application(), *this, recurrence_, record, header);
  const bool whole = writer.write(static_cast<IAppointment&>(*item));
  consumed = writer.consumed();
  return whole;
}

}  // namespace qorv
