// The handler of appointments.
//
//   tag  field         encoding
//    1   subject       text
//    2   location      text
//    3   categories    text
//    4   all day       u32: the device sends 1 for true; the low 16 bits of what it gets are put as they are
//    5   sensitivity   u32: 1 is private, anything else normal
//    6   busy status   u32
//    7   reminder set  u32, as tag 4
//    8   reminder      u32, minutes before the start
//    9   body          text
//   16   start         time
//   18   end           time; the device sends an all-day item's end less one day
//   19   recurrence    98-byte block, then the exception records, untagged
//
// A record for the device begins with a u32 field count; a record from it with the record header.
#pragma once

#include "pim/recurrence_block.h"
#include "service/api_base.h"

namespace qorv {

class CCEAppointments : public CQorvApiBase {
 public:
  CCEAppointments();

  bool ReadItemRecord(IDispatch* item, DWORD oid) override;
  /// True for every record that came whole, also when the save failed: the device's user is told then, and
  /// the header keeps its OID.
  bool WriteItemRecord(IDispatch* item, const BYTE* record, DWORD& consumed,
                       ItemReplyHeader& header) override;

 private:
  RecurrenceBlock recurrence_;
};

/// The tags of appointment records.
namespace appointment_tag {
inline constexpr DWORD kSubject = 1;
inline constexpr DWORD kLocation = 2;
inline constexpr DWORD kCategories = 3;
inline constexpr DWORD kAllDayEvent = 4;
inline constexpr DWORD kSensitivity = 5;
inline constexpr DWORD kBusyStatus = 6;
inline constexpr DWORD kReminderSet = 7;
inline constexpr DWORD kReminderMinutes = 8;
inline constexpr DWORD kBody = 9;
inline constexpr DWORD kStart = 16;
inline constexpr DWORD kEnd = 18;
inline constexpr DWORD kRecurrence = 19;
}  // namespace appointment_tag

/// The object model's end of an all-day item lies one day after the day that users call its last.
inline constexpr double kOneDay = 1.0;

}  // namespace qorv
