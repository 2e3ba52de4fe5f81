// Applies an appointment record to an appointment and saves it.
#pragma once

#include <vector>

#include "channel/wire.h"
#include "pim/exception_record.h"
#include "pim/field_reader.h"
#include "pim/recurrence_block.h"
#include "platform/appointment.h"
#include "platform/outlook.h"
#include "platform/recurrence.h"
#include "service/com_ptr.h"

namespace qorv {

/// A save that the object model refuses for its reminder is tried again with a shorter lead time, the whole
/// record applied anew to a fresh object of the item: 5 and 10 minutes less, then 180, 240, 300 ... minutes
/// less.
inline constexpr DWORD kFirstReductionStep = 5;
inline constexpr DWORD kLaterReductionStep = 60;
inline constexpr DWORD kRetriesBeforeLaterStep = 3;
/// The device takes lead times up to a year; after this many reductions nothing is left to reduce.
inline constexpr DWORD kMaxReminderMinutes = 525600;
inline constexpr DWORD kMaxRetries = kMaxReminderMinutes / kLaterReductionStep + kRetriesBeforeLaterStep;

class AppointmentWriter {
 public:
  AppointmentWriter(IPOutlookApp& application, RequestReader& request, RecurrenceBlock& block,
                    const BYTE* record, ItemReplyHeader& header)
      : application_(application), fields_(application, request, record), block_(block), header_(header) {}

  /// False when the record was cut short; the item is not saved then. The header gets the saved item's OID.
  bool write(IAppointment& appointment);

  /// The bytes of the record that were read.
  [[nodiscard]] DWORD consumed() const { return fields_.consumed(); }

 private:
  struct Field;
  static const Field kFields[];

  template <HRESULT (IAppointment::*Put)(BSTR)>
  void putText();
  template <HRESULT (IAppointment::*Put)(VARIANT_BOOL)>
  void putFlag();
  template <HRESULT (IAppointment::*Put)(LONG)>
  void putNumber();
  template <HRESULT (IAppointment::*Put)(DATE)>
  void putTime();
  void putSensitivity();
  void putReminderMinutes();
  void keepBody();
  void keepRecurrence();

  bool applyFields();
  void applyRecurrence();
  HRESULT applyAndSave();
  bool obtainAgain();
  void extendAllDayItem();
  void finish();

  IPOutlookApp& application_;
  FieldReader fields_;
  RecurrenceBlock& block_;
  ItemReplyHeader& header_;

  IAppointment* appointment_ = nullptr;  ///< the item in hand: the caller's, or after a retry our own
  ComPtr<IDispatch> obtained_;
  DWORD retries_ = 0;
  RequestText body_;
  bool recurring_ = false;
  std::vector<ExceptionRecord> exceptions_;
  ComPtr<IRecurrencePattern> pattern_;
};

}  // namespace qorv
