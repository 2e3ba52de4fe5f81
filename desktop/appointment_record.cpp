#include "desktop/appointment_record.h"

#include <bitset>

#include "desktop/all_day_end.h"
#include "desktop/appointment_fields.h"
#include "desktop/device_error.h"
#include "desktop/exception_record.h"
#include "desktop/local_time.h"
#include "desktop/overloaded.h"
#include "desktop/recurrence_block.h"

namespace desktop {

namespace {

void writeField(WireWriter& writer, const AppointmentField& field, const Appointment& appointment) {
  writer.number(field.tag);
  std::visit(Overloaded{
                 [&](TextMember text) { writer.text(appointment.*text); },
                 [&](NumberMember number) { writer.number(appointment.*number); },
                 [&](FlagMember flag) { writer.number(appointment.*flag ? field.setFlag : 0); },
                 [&](TimeMember time) {
                   const bool isEnd = time == &Appointment::end;
                   writer.time(isEnd ? endToSend(appointment) : appointment.*time);
                 },
             },
             field.member);
}

LocalTime readTime(WireReader& reader, std::string_view name) {
  const LocalTime time = noneIfNoDate(reader.time());
  if (!isNone(time) && !isValid(time))
    throw ProtocolError("an appointment has no valid " + std::string(name));
  return time;
}

void readField(WireReader& reader, const AppointmentField& field, Appointment& appointment) {
  std::visit(Overloaded{
                 [&](TextMember text) { appointment.*text = reader.text(); },
                 [&](NumberMember number) { appointment.*number = reader.number(); },
                 [&](FlagMember flag) { appointment.*flag = reader.number() != 0; },
                 [&](TimeMember time) { appointment.*time = readTime(reader, field.name); },
             },
             field.member);
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

/// Which of the fields a record had, by their place in the table.
using Seen = std::bitset<kAppointmentFields.size()>;

void readTagged(WireReader& reader, Appointment& appointment, Seen& seen) {
  const std::uint32_t tag = reader.number();
  if (tag == kRecurrenceTag) return readRecurrence(reader, appointment);
  for (std::size_t i = 0; i < kAppointmentFields.size(); ++i) {
    if (kAppointmentFields[i].tag != tag) continue;
    seen.set(i);
    return readField(reader, kAppointmentFields[i], appointment);
  }
  throw ProtocolError("an appointment has no field " + std::to_string(tag));
}

void expectAll(const Seen& seen, std::uint32_t oid) {
  for (std::size_t i = 0; i < kAppointmentFields.size(); ++i) {
    if (seen[i]) continue;
    throw ProtocolError("appointment " + std::to_string(oid) + " came without its " +
                        std::string(kAppointmentFields[i].name));
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

void expectHeader(WireReader& reader, std::uint32_t oid) {
  const std::uint8_t result = reader.byte();
  reader.byte();
  const std::uint32_t sent = reader.number();
  if (result != 1 || sent != oid) {
    throw ProtocolError("appointment " + std::to_string(oid) +
                        " was asked for, the device sends a record of " + std::to_string(sent) +
                        " with result " + std::to_string(result));
  }
}

}  // namespace

Bytes clearingRecord() {
  WireWriter writer;
  writer.number(0);
  return writer.take();
}

Bytes writeAppointment(const Appointment& appointment) {
  WireWriter writer;
  writer.number(static_cast<std::uint32_t>(kAppointmentFields.size() + (appointment.recurrence ? 1 : 0)));
  for (const AppointmentField& field : kAppointmentFields) writeField(writer, field, appointment);
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
  expectHeader(reader, oid);
  Appointment appointment;
  appointment.oid = oid;
  Seen seen;
  for (int fields = reader.byte(); fields > 0; --fields) readTagged(reader, appointment, seen);
  expectAll(seen, oid);
  dropAllDayNoDate(appointment);
  dropInherited(appointment);
  return appointment;
}

}  // namespace desktop
