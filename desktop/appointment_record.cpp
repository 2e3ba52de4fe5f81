#include "desktop/appointment_record.h"

#include "desktop/all_day_end.h"
#include "desktop/appointment_fields.h"
#include "desktop/device_error.h"
#include "desktop/exception_record.h"
#include "desktop/local_time.h"
#include "desktop/recurrence_block.h"

namespace desktop {

namespace {

constexpr std::string_view kSingular = "appointment";

/// The entry as it travels: an all-day one's end is sent in a form of its own.
Appointment inWireForm(const Appointment& appointment) {
  Appointment sent = appointment;
  sent.end = endToSend(appointment);
  return sent;
}

void readRecurrence(WireReader& reader, Appointment& appointment) {
  const RecurrenceBlock block = readRecurrenceBlock(reader);
  if (block.exceptionCount > reader.left() / kExceptionRecordSize) {
    throw ProtocolError("a reply has no room for the " + std::to_string(block.exceptionCount) +
                        " exceptions that it claims");
  }
  appointment.recurrence = block.rule;
  appointment.exceptions.clear();
  for (std::uint32_t i = 0; i < block.exceptionCount; ++i) {
    appointment.exceptions.push_back(readException(reader));
  }
}

template <typename Value>
void dropIfEqual(std::optional<Value>& own, const Value& inherited) {
  if (own == inherited) own.reset();
}

void dropInherited(Appointment& series) {
  for (AppointmentException& exception : series.exceptions) {
    dropIfEqual(exception.reminderSet, series.reminderSet);
    dropIfEqual(exception.reminderMinutes, series.reminderMinutes);
    dropIfEqual(exception.busyStatus, series.busyStatus);
    dropIfEqual(exception.subject, series.subject);
    dropIfEqual(exception.location, series.location);
    dropIfEqual(exception.body, series.body);
  }
}

/// The device sends an all-day entry's end less one day, and does so also with the end that stands for none.
void dropAllDayNoDate(Appointment& appointment) {
  if (!appointment.allDay || isNone(appointment.end)) return;
  if (isNone(noneIfNoDate(addDays(appointment.end, 1)))) appointment.end = {};
}

}  // namespace

Bytes clearingRecord() {
  WireWriter writer;
  writer.number(0);
  return writer.take();
}

Bytes writeAppointment(const Appointment& appointment) {
  const Appointment sent = inWireForm(appointment);
  WireWriter writer;
  writer.number(static_cast<std::uint32_t>(kAppointmentFields.size() + (appointment.recurrence ? 1 : 0)));
  for (const AppointmentField& field : kAppointmentFields) writeField(writer, field, sent);
  if (appointment.recurrence) {
    writer.number(kRecurrenceTag);
    writeRecurrenceBlock(writer, *appointment.recurrence,
                         static_cast<std::uint32_t>(appointment.exceptions.size()));
    for (const AppointmentException& exception : appointment.exceptions) {
      writeException(writer, exception);
    }
  }
  return writer.take();
}

Appointment readAppointment(WireReader& reader, std::uint32_t oid) {
  const auto readOther = [](WireReader& rest, std::uint32_t tag, Appointment& appointment) {
    if (tag != kRecurrenceTag) return false;
    readRecurrence(rest, appointment);
    return true;
  };
  auto appointment = readRecord<Appointment>(reader, kSingular, oid, kAppointmentFields, readOther);
  dropAllDayNoDate(appointment);
  dropInherited(appointment);
  return appointment;
}

}  // namespace desktop
