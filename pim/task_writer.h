// Applies a task record to a task and saves it.
#pragma once

#include "channel/wire.h"
#include "pim/field_reader.h"
#include "pim/recurrence_block.h"
#include "platform/task.h"

namespace qorv {

class TaskWriter {
 public:
  TaskWriter(IPOutlookApp& application, RequestReader& request, RecurrenceBlock& block, const BYTE* record,
             ITask& task)
      : application_(application), fields_(application, request, record), block_(block), task_(task) {}

  /// True when the task was saved; the header then has its OID. One attempt, of which the device's user is told
  /// nothing; a record that was cut short is not saved.
  bool write(ItemReplyHeader& header);

  /// The bytes of the record that were read.
  [[nodiscard]] DWORD consumed() const { return fields_.consumed(); }

 private:
  struct Field;
  static const Field kFields[];

  template <HRESULT (ITask::*Put)(BSTR)>
  void putText();
  void putStartDate();
  void putDueDate();
  void putImportance();
  void putComplete();
  void putSensitivity();
  void keepReminderSet();
  void keepReminderTime();
  void keepBody();
  void keepRecurrence();

  bool applyFields();
  void applyRecurrence();
  void applyReminder();

  IPOutlookApp& application_;
  FieldReader fields_;
  RecurrenceBlock& block_;
  ITask& task_;

  DATE dueDate_ = kNoDate;
  DATE reminderTime_ = kNoDate;
  bool reminderSet_ = false;
  bool recurring_ = false;
  RequestText body_;
};

}  // namespace qorv
