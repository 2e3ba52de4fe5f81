#include "pim/appointment_reader.h"

#include "pim/appointment.h"
#include "pim/date_conversion.h"
#include "pim/exceptions.h"
#include "pim/field_writer.h"
#include "pim/recurrence.h"
#include "platform/errors.h"
#include "service/com_ptr.h"

namespace qorv {

namespace {

namespace tag = appointment_tag;
using Fields = FieldWriter<IAppointment>;

void writeEnd(IPOutlookApp& application, IAppointment& appointment, const Fields& fields,
              ReplyWriter& reply) {
  DATE end;
  const bool known = SUCCEEDED(appointment.get_End(&end));
  if (fields.flag(&IAppointment::get_AllDayEvent)) end = end - kOneDay;
  reply.WriteTaggedSystemTime(tag::kEnd, known ? toSystemTime(application, end) : SYSTEMTIME{});
}

void writeRecurrence(IPOutlookApp& application, IAppointment& appointment, DWORD oid, ReplyWriter& reply,
                     RecurrenceBlock& block) {
  ComPtr<IRecurrencePattern> pattern;
  if (FAILED(appointment.GetRecurrencePattern(pattern.put())) || !pattern) return;
  fillItemBlock(application, *pattern, oid, kAppointmentRecurrenceProperty, block);
  const auto exceptions = readExceptions(application, *pattern);
  block.setNumber(RecurrenceBlock::kExceptionCount, static_cast<DWORD>(exceptions.size()));
  reply.WriteTaggedBlock98(tag::kRecurrence, block.bytes());
  for (const ExceptionRecord& exception : exceptions) writeExceptionRecord(reply, exception);
}

}  // namespace

void writeAppointmentFields(IPOutlookApp& application, IAppointment& appointment, DWORD oid,
                            ReplyWriter& reply, RecurrenceBlock& block) {
  Fields fields(application, appointment, reply);
  fields.writeDate(tag::kStart, &IAppointment::get_Start);
  writeEnd(application, appointment, fields, reply);
  fields.writeSensitivity(tag::kSensitivity);
  fields.writeNumber(tag::kBusyStatus, &IAppointment::get_BusyStatus);
  fields.writeNumber(tag::kReminderMinutes, &IAppointment::get_ReminderMinutesBeforeStart);
  fields.writeFlag(tag::kReminderSet, &IAppointment::get_ReminderSet);
  fields.writeFlag(tag::kAllDayEvent, &IAppointment::get_AllDayEvent);
  fields.writeText(tag::kSubject, &IAppointment::get_Subject);
  fields.writeText(tag::kLocation, &IAppointment::get_Location);
  fields.writeText(tag::kCategories, &IAppointment::get_Categories);
  fields.writeText(tag::kBody, &IAppointment::get_Body);
  if (fields.flag(&IAppointment::get_IsRecurring))
    writeRecurrence(application, appointment, oid, reply, block);
}

}  // namespace qorv
