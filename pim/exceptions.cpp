#include "pim/exceptions.h"

#include "pim/date_conversion.h"
#include "platform/appointment.h"
#include "platform/errors.h"
#include "service/com_ptr.h"
#include "service/owned_text.h"

namespace qorv {

namespace {

using GetDate = HRESULT (IAppointment::*)(DATE*);
using PutDate = HRESULT (IAppointment::*)(DATE);
using GetText = HRESULT (IAppointment::*)(BSTR*);

/// The texts that an occurrence can have of its own.
struct TextProperty {
  ExceptionText ExceptionRecord::*member;
  GetText get;
  HRESULT (IAppointment::*put)(BSTR);
};

constexpr TextProperty kTexts[] = {
    {&ExceptionRecord::subject, &IAppointment::get_Subject, &IAppointment::put_Subject},
    {&ExceptionRecord::location, &IAppointment::get_Location, &IAppointment::put_Location},
    {&ExceptionRecord::body, &IAppointment::get_Body, &IAppointment::put_Body},
};

SYSTEMTIME timeOf(IPOutlookApp& application, IAppointment& occurrence, GetDate get) {
  DATE date;
  return SUCCEEDED((occurrence.*get)(&date)) ? toSystemTime(application, date) : SYSTEMTIME{};
}

ExceptionText textOf(IPOutlookApp& application, IAppointment& occurrence, GetText get) {
  OwnedText text(application);
  (occurrence.*get)(text.put());
  return {static_cast<bool>(text), text.get()};
}

SYSTEMTIME originalDateOf(IPOutlookApp& application, IException& exception) {
  DATE date;
  return SUCCEEDED(exception.get_OriginalDate(&date)) ? toSystemTime(application, date) : SYSTEMTIME{};
}

void readOccurrence(IPOutlookApp& application, IAppointment& occurrence, ExceptionRecord& record) {
  record.start = timeOf(application, occurrence, &IAppointment::get_Start);
  record.end = timeOf(application, occurrence, &IAppointment::get_End);
  LONG busyStatus = 0;
  if (SUCCEEDED(occurrence.get_BusyStatus(&busyStatus))) record.busyStatus = static_cast<DWORD>(busyStatus);
  LONG minutes = 0;
  if (SUCCEEDED(occurrence.get_ReminderMinutesBeforeStart(&minutes))) {
    record.reminderMinutes = static_cast<DWORD>(minutes);
  }
  VARIANT_BOOL reminderSet = VARIANT_FALSE;
  if (SUCCEEDED(occurrence.get_ReminderSet(&reminderSet)))
    record.reminderSet = static_cast<DWORD>(LONG{reminderSet});
  for (const TextProperty& property : kTexts)
    record.*property.member = textOf(application, occurrence, property.get);
}

ExceptionRecord readException(IPOutlookApp& application, IException& exception) {
  ExceptionRecord record;
  record.originalDate = originalDateOf(application, exception);
  ComPtr<IAppointment> occurrence;
  exception.get_AppointmentItem(occurrence.put());
  // A deleted occurrence is an exception without an appointment.
  record.deleted = occurrence ? 0 : 1;
  if (occurrence) readOccurrence(application, *occurrence, record);
  return record;
}

bool isSameDay(const SYSTEMTIME& left, const SYSTEMTIME& right) {
  return left.wYear == right.wYear && left.wMonth == right.wMonth && left.wDay == right.wDay;
}

int countOf(IExceptions& exceptions) {
  int count = 0;
  return SUCCEEDED(exceptions.get_Count(&count)) ? count : 0;
}

/// An occurrence that was moved is no longer found by its day, only here.
ComPtr<IAppointment> findException(IPOutlookApp& application, IExceptions& exceptions,
                                   const SYSTEMTIME& originalDate) {
  const int count = countOf(exceptions);
  for (int i = 1; i <= count; ++i) {
    ComPtr<IException> exception;
    if (FAILED(exceptions.Item(i, exception.put())) || !exception) continue;
    if (!isSameDay(originalDateOf(application, *exception), originalDate)) continue;
    ComPtr<IAppointment> occurrence;
    if (FAILED(exception->get_AppointmentItem(occurrence.put()))) return {};
    return occurrence;
  }
  return {};
}

ComPtr<IAppointment> findOccurrence(IPOutlookApp& application, IRecurrencePattern& pattern,
                                    IExceptions* exceptions, const SYSTEMTIME& originalDate) {
  ComPtr<IAppointment> occurrence;
  const auto date = toDate(application, originalDate);
  if (date && SUCCEEDED(pattern.GetOccurrence(*date, occurrence.put())) && occurrence) return occurrence;
  if (!exceptions) return {};
  return findException(application, *exceptions, originalDate);
}

void putTime(IPOutlookApp& application, IAppointment& occurrence, const SYSTEMTIME& time, PutDate put) {
  if (const auto date = toDate(application, time)) (occurrence.*put)(*date);
}

void changeOccurrence(IPOutlookApp& application, IAppointment& occurrence, const ExceptionRecord& record) {
  putTime(application, occurrence, record.start, &IAppointment::put_Start);
  putTime(application, occurrence, record.end, &IAppointment::put_End);
  if (record.reminderSet != kLeaveUnchanged)
    occurrence.put_ReminderSet(static_cast<VARIANT_BOOL>(record.reminderSet));
  if (record.reminderMinutes != kLeaveUnchanged) {
    occurrence.put_ReminderMinutesBeforeStart(static_cast<LONG>(record.reminderMinutes));
  }
  if (record.busyStatus != kLeaveUnchanged) occurrence.put_BusyStatus(static_cast<LONG>(record.busyStatus));
  for (const TextProperty& property : kTexts) {
    if (!(record.*property.member).present) continue;
    std::u16string text = (record.*property.member).text;
    (occurrence.*property.put)(text.data());
  }
  occurrence.Save();
}

}  // namespace

std::vector<ExceptionRecord> readExceptions(IPOutlookApp& application, IRecurrencePattern& pattern) {
  std::vector<ExceptionRecord> records;
  ComPtr<IExceptions> exceptions;
  if (FAILED(pattern.get_Exceptions(exceptions.put())) || !exceptions) return records;
  const int count = countOf(*exceptions);
  for (int i = 1; i <= count; ++i) {
    ComPtr<IException> exception;
    if (FAILED(exceptions->Item(i, exception.put())) || !exception) continue;
    records.push_back(readException(application, *exception));
  }
  return records;
}

void applyExceptions(IPOutlookApp& application, IRecurrencePattern& pattern,
                     const std::vector<ExceptionRecord>& records) {
  ComPtr<IExceptions> exceptions;
  pattern.get_Exceptions(exceptions.put());
  for (const ExceptionRecord& record : records) {
    const auto occurrence = findOccurrence(application, pattern, exceptions.get(), record.originalDate);
    if (!occurrence) continue;
    if (record.deleted != 0) {
      occurrence->Delete();
    } else {
      changeOccurrence(application, *occurrence, record);
    }
  }
}

}  // namespace qorv
