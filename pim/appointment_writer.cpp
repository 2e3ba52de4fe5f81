#include "pim/appointment_writer.h"

#include <cmath>

#include "pim/appointment.h"
#include "pim/exceptions.h"
#include "pim/recurrence.h"
#include "pim/saved_item.h"
#include "platform/errors.h"
#include "platform/windows.h"
#include "service/item_access.h"

namespace qorv {

namespace tag = appointment_tag;

template <HRESULT (IAppointment::*Put)(BSTR)>
void AppointmentWriter::putText() {
  const RequestText text = fields_.text();
  (appointment_->*Put)(text.get());
}

/// The value's low 16 bits go in as they are, although the device itself sends 1 for true: desktops send
/// 0xFFFF.
template <HRESULT (IAppointment::*Put)(VARIANT_BOOL)>
void AppointmentWriter::putFlag() {
  (appointment_->*Put)(static_cast<VARIANT_BOOL>(fields_.number()));
}

template <HRESULT (IAppointment::*Put)(LONG)>
void AppointmentWriter::putNumber() {
  (appointment_->*Put)(static_cast<LONG>(fields_.number()));
}

template <HRESULT (IAppointment::*Put)(DATE)>
void AppointmentWriter::putTime() {
  if (const auto date = fields_.date()) (appointment_->*Put)(*date);
}

void AppointmentWriter::putSensitivity() {
  const bool isPrivate = fields_.number() == 1;
  appointment_->put_Sensitivity(isPrivate ? olPrivate : olNormal);
}

void AppointmentWriter::putReminderMinutes() {
  const DWORD step = retries_ >= kRetriesBeforeLaterStep ? kLaterReductionStep : kFirstReductionStep;
  const DWORD minutes = fields_.number() - retries_ * step;
  appointment_->put_ReminderMinutesBeforeStart(static_cast<LONG>(minutes));
}

void AppointmentWriter::keepBody() {
  body_ = fields_.text();
  putShortBody(*appointment_, body_);
}

void AppointmentWriter::keepRecurrence() {
  if (!fields_.block(block_)) return;
  recurring_ = true;
  exceptions_.clear();
  const DWORD count = block_.number(RecurrenceBlock::kExceptionCount);
  for (DWORD i = 0; i < count && !fields_.cut(); ++i) {
    exceptions_.push_back(readExceptionRecord(fields_));
  }
}

struct AppointmentWriter::Field {
  DWORD tag;
  void (AppointmentWriter::*read)();
};

const AppointmentWriter::Field AppointmentWriter::kFields[] = {
    {tag::kSubject, &AppointmentWriter::putText<&IAppointment::put_Subject>},
    {tag::kLocation, &AppointmentWriter::putText<&IAppointment::put_Location>},
    {tag::kCategories, &AppointmentWriter::putText<&IAppointment::put_Categories>},
    {tag::kAllDayEvent, &AppointmentWriter::putFlag<&IAppointment::put_AllDayEvent>},
    {tag::kSensitivity, &AppointmentWriter::putSensitivity},
    {tag::kBusyStatus, &AppointmentWriter::putNumber<&IAppointment::put_BusyStatus>},
    {tag::kReminderSet, &AppointmentWriter::putFlag<&IAppointment::put_ReminderSet>},
    {tag::kReminderMinutes, &AppointmentWriter::putReminderMinutes},
    {tag::kBody, &AppointmentWriter::keepBody},
    {tag::kStart, &AppointmentWriter::putTime<&IAppointment::put_Start>},
    {tag::kEnd, &AppointmentWriter::putTime<&IAppointment::put_End>},
    {tag::kRecurrence, &AppointmentWriter::keepRecurrence},
};

/// Applies every field to the item in hand. False when the record ends too early.
bool AppointmentWriter::applyFields() {
  body_ = {};
  recurring_ = false;
  exceptions_.clear();
  return fields_.walk([this](DWORD fieldTag) {
    if (const Field* field = findField(kFields, fieldTag)) (this->*field->read)();
  });
}

void AppointmentWriter::applyRecurrence() {
  if (!recurring_) {
    appointment_->ClearRecurrencePattern();
    return;
  }
  VARIANT_BOOL allDay = VARIANT_FALSE;
  appointment_->get_AllDayEvent(&allDay);
  if (allDay != VARIANT_FALSE) {
    DATE start;
    DATE end;
    // The start is asked for and not needed: the sequence of calls has always been so.
    appointment_->get_Start(&start);
    // The desktop sends back the end that it got, which is a day short.
    if (SUCCEEDED(appointment_->get_End(&end))) appointment_->put_End(end + kOneDay);
    appointment_->Save();
  }
  // A new item must exist before it can have a pattern.
  if (header_.oid == 0) appointment_->Save();
  if (FAILED(appointment_->GetRecurrencePattern(pattern_.put())) || !pattern_) return;
  applyBlock(application_, *pattern_, block_);
}

HRESULT AppointmentWriter::applyAndSave() {
  applyRecurrence();
  return appointment_->Save();
}

/// A fresh object of the item for another try. False when there is none.
bool AppointmentWriter::obtainAgain() {
  pattern_.reset();
  obtained_.reset();
  ObtainedItem again = header_.oid != 0 ? findItem(application_, DataType::Appointment, header_.oid)
                                        : createItem(application_, DataType::Appointment);
  obtained_ = std::move(again.item);
  appointment_ = static_cast<IAppointment*>(obtained_.get());
  return again.obtained;
}

/// The end that the desktop sends for an all-day item is its last day. Only items that span more than a day are
/// extended: the save itself has given the others their one day. So an item of two days can't be told from one of one
/// day, and a series of several days, which got a day before its pattern was set, gets another; desktops know that.
void AppointmentWriter::extendAllDayItem() {
  VARIANT_BOOL allDay = VARIANT_FALSE;
  appointment_->get_AllDayEvent(&allDay);
  if (allDay == VARIANT_FALSE) return;
  DATE start;
  DATE end;
  if (FAILED(appointment_->get_Start(&start)) || FAILED(appointment_->get_End(&end))) return;
  if (std::trunc(end) - std::trunc(start) <= kOneDay) return;
  appointment_->put_End(end + kOneDay);
  appointment_->Save();
}

void AppointmentWriter::finish() {
  extendAllDayItem();
  if (!exceptions_.empty() && pattern_) applyExceptions(application_, *pattern_, exceptions_);
  finishSaved(application_, *appointment_, body_, header_);
}

bool AppointmentWriter::write(IAppointment& appointment) {
  appointment_ = &appointment;
  if (!applyFields()) return false;
  HRESULT saved = applyAndSave();
  while (saved == E_INVALIDREMINDERTIME && retries_ < kMaxRetries && obtainAgain()) {
    ++retries_;
    applyFields();
    saved = applyAndSave();
  }
  if (SUCCEEDED(saved)) {
    finish();
  } else {
    // The failure is the device user's to see; the desktop sees only that no OID came back.
    MessageBoxW(nullptr, u"Save FAILED", u"INFO", MB_SETFOREGROUND);
  }
  return true;
}

}  // namespace qorv
