// Turns an appointment into the fields of its record.
#pragma once

#include "channel/reply_writer.h"
#include "pim/recurrence_block.h"
#include "platform/appointment.h"
#include "platform/outlook.h"

namespace qorv {

class AppointmentReader {
 public:
  AppointmentReader(IPOutlookApp& application, IAppointment& appointment, DWORD oid, ReplyWriter& reply,
                    RecurrenceBlock& block)
      : application_(application), appointment_(appointment), oid_(oid), reply_(reply), block_(block) {}

  /// Appends all fields in their fixed order, then the exception records of a series.
  void read();

 private:
  using GetText = HRESULT (IAppointment::*)(BSTR*);
  using GetNumber = HRESULT (IAppointment::*)(LONG*);
  using GetFlag = HRESULT (IAppointment::*)(VARIANT_BOOL*);

  void writeStart();
  void writeEnd();
  void writeSensitivity();
  void writeNumber(DWORD tag, GetNumber get);
  void writeFlag(DWORD tag, GetFlag get);
  void writeText(DWORD tag, GetText get);
  void writeRecurrence();

  [[nodiscard]] bool flag(GetFlag get) const;
  [[nodiscard]] LONG number(GetNumber get) const;

  IPOutlookApp& application_;
  IAppointment& appointment_;
  DWORD oid_;
  ReplyWriter& reply_;
  RecurrenceBlock& block_;
};

}  // namespace qorv
