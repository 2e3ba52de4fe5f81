// The handler of tasks.
//
//   tag  field           encoding
//    1   subject         text
//    2   categories      text
//    3   start date      time
//    4   due date        time; on the way in the time of day is dropped
//    5   importance      u32
//    6   complete        u32, 1 or 0; on the way in anything but 0 is true
//    7   sensitivity     u32: anything but 0 is private
//    9   reminder set    u32, as tag 6; applied only together with a due date
//   10   reminder time   time; applied only together with a due date
//   11   body            text
//   19   recurrence      98-byte block, without exceptions
//
// A date that is not set travels as 4501-01-01.
#pragma once

#include "pim/recurrence_block.h"
#include "service/api_base.h"

namespace qorv {

class CCETask : public CQorvApiBase {
 public:
  CCETask();

  bool ReadItemRecord(IDispatch* item, DWORD oid) override;
  /// False when the save failed, or the record was cut short and therefore not saved.
  bool WriteItemRecord(IDispatch* item, const BYTE* record, DWORD& consumed,
                       ItemReplyHeader& header) override;

 private:
  RecurrenceBlock recurrence_;
};

/// The tags of task records.
namespace task_tag {
inline constexpr DWORD kSubject = 1;
inline constexpr DWORD kCategories = 2;
inline constexpr DWORD kStartDate = 3;
inline constexpr DWORD kDueDate = 4;
inline constexpr DWORD kImportance = 5;
inline constexpr DWORD kComplete = 6;
inline constexpr DWORD kSensitivity = 7;
inline constexpr DWORD kReminderSet = 9;
inline constexpr DWORD kReminderTime = 10;
inline constexpr DWORD kBody = 11;
inline constexpr DWORD kRecurrence = 19;
}  // namespace task_tag

}  // namespace qorv
