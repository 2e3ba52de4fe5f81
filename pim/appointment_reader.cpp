#include "pim/appointment_reader.h"

#include "pim/appointment.h"
#include "pim/date_conversion.h"
#include "pim/end_kind.h"
#include "pim/exceptions.h"
#include "pim/recurrence.h"
#include "platform/errors.h"
#include "service/com_ptr.h"
#include "service/owned_text.h"

namespace qorv {

namespace tag = appointment_tag;

bool AppointmentReader::flag(GetFlag get) const {
  VARIANT_BOOL value = VARIANT_FALSE;
  return SUCCEEDED((appointment_.*get)(&value)) && value == VARIANT_TRUE;
}

LONG AppointmentReader::number(GetNumber get) const {
  LONG value = 0;
  return SUCCEEDED((appointment_.*get)(&value)) ? value : 0;
}

void AppointmentReader::writeStart() {
  DATE start;
  const bool known = SUCCEEDED(appointment_.get_Start(&start));
  reply_.WriteTaggedSystemTime(tag::kStart, known ? toSystemTime(application_, start) : SYSTEMTIME{});
}

void AppointmentReader::writeEnd() {
  DATE end;
  const bool known = SUCCEEDED(appointment_.get_End(&end));
  if (flag(&IAppointment::get_AllDayEvent)) end = end - kOneDay;
  reply_.WriteTaggedSystemTime(tag::kEnd, known ? toSystemTime(application_, end) : SYSTEMTIME{});
}

void AppointmentReader::writeSensitivity() {
  const bool isPrivate = number(&IAppointment::get_Sensitivity) == olPrivate;
  reply_.WriteTaggedDword(tag::kSensitivity, isPrivate ? 1 : 0);
}

void AppointmentReader::writeNumber(DWORD fieldTag, GetNumber get) {
  reply_.WriteTaggedDword(fieldTag, static_cast<DWORD>(number(get)));
}

void AppointmentReader::writeFlag(DWORD fieldTag, GetFlag get) {
  reply_.WriteTaggedDword(fieldTag, flag(get) ? 1 : 0);
}

void AppointmentReader::writeText(DWORD fieldTag, GetText get) {
  OwnedText text(application_);
  (appointment_.*get)(text.put());
  reply_.WriteTaggedString(fieldTag, text.get());
}

void AppointmentReader::writeRecurrence() {
  ComPtr<IRecurrencePattern> pattern;
  if (FAILED(appointment_.GetRecurrencePattern(pattern.put())) || !pattern) return;
  fillBlock(application_, *pattern, block_);
  if (block_.endKind() != EndKind::Never) {
    correctEndKind(application_, oid_, kAppointmentRecurrenceProperty, block_);
  }
  const auto exceptions = readExceptions(application_, *pattern);
  block_.setNumber(RecurrenceBlock::kExceptionCount, static_cast<DWORD>(exceptions.size()));
  reply_.WriteTaggedBlock98(tag::kRecurrence, block_.bytes());
  for (const ExceptionRecord& exception : exceptions) writeExceptionRecord(reply_, exception);
}

void AppointmentReader::read() {
  writeStart();
  writeEnd();
  writeSensitivity();
  writeNumber(tag::kBusyStatus, &IAppointment::get_BusyStatus);
  writeNumber(tag::kReminderMinutes, &IAppointment::get_ReminderMinutesBeforeStart);
  writeFlag(tag::kReminderSet, &IAppointment::get_ReminderSet);
  writeFlag(tag::kAllDayEvent, &IAppointment::get_AllDayEvent);
  writeText(tag::kSubject, &IAppointment::get_Subject);
  writeText(tag::kLocation, &IAppointment::get_Location);
  writeText(tag::kCategories, &IAppointment::get_Categories);
  writeText(tag::kBody, &IAppointment::get_Body);
  if (flag(&IAppointment::get_IsRecurring)) writeRecurrence();
}

}  // namespace qorv
