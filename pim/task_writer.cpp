#include "pim/task_writer.h"

#include "pim/recurrence.h"
#include "pim/saved_item.h"
#include "pim/task.h"
#include "platform/errors.h"
#include "service/com_ptr.h"

namespace qorv {

namespace tag = task_tag;

namespace {
constexpr VARIANT_BOOL toVariantBool(bool value) {
  return value ? VARIANT_TRUE : VARIANT_FALSE;
}
}  // namespace

template <HRESULT (ITask::*Put)(BSTR)>
void TaskWriter::putText() {
  const RequestText text = fields_.text();
  (task_.*Put)(text.get());
}

void TaskWriter::putStartDate() {
  if (const auto date = fields_.date()) task_.put_StartDate(*date);
}

void TaskWriter::putDueDate() {
  const auto date = fields_.date(TimeMode::DateOnly);
  if (!date) return;
  dueDate_ = *date;
  task_.put_DueDate(dueDate_);
}

void TaskWriter::putImportance() {
  task_.put_Importance(static_cast<LONG>(fields_.number()));
}

void TaskWriter::putComplete() {
  task_.put_Complete(toVariantBool(fields_.number() != 0));
}

/// Any value but 0 is private, unlike an appointment's, of which only 1 is: desktops send tasks either way.
void TaskWriter::putSensitivity() {
  task_.put_Sensitivity(fields_.number() != 0 ? olPrivate : olNormal);
}

void TaskWriter::keepReminderSet() {
  reminderSet_ = fields_.number() != 0;
}

void TaskWriter::keepReminderTime() {
  if (const auto date = fields_.date()) reminderTime_ = *date;
}

void TaskWriter::keepBody() {
  body_ = fields_.text();
  putShortBody(task_, body_);
}

void TaskWriter::keepRecurrence() {
  recurring_ = fields_.block(block_);
}

struct TaskWriter::Field {
  DWORD tag;
  void (TaskWriter::*read)();
};

const TaskWriter::Field TaskWriter::kFields[] = {
    {tag::kSubject, &TaskWriter::putText<&ITask::put_Subject>},
    {tag::kCategories, &TaskWriter::putText<&ITask::put_Categories>},
    {tag::kStartDate, &TaskWriter::putStartDate},
    {tag::kDueDate, &TaskWriter::putDueDate},
    {tag::kImportance, &TaskWriter::putImportance},
    {tag::kComplete, &TaskWriter::putComplete},
    {tag::kSensitivity, &TaskWriter::putSensitivity},
    {tag::kReminderSet, &TaskWriter::keepReminderSet},
    {tag::kReminderTime, &TaskWriter::keepReminderTime},
    {tag::kBody, &TaskWriter::keepBody},
    {tag::kRecurrence, &TaskWriter::keepRecurrence},
};

bool TaskWriter::applyFields() {
  return fields_.walk([this](DWORD fieldTag) {
    if (const Field* field = findField(kFields, fieldTag)) (this->*field->read)();
  });
}

/// A record without a block leaves a recurrence that is there.
void TaskWriter::applyRecurrence() {
  if (!recurring_) return;
  ComPtr<IRecurrencePattern> pattern;
  if (FAILED(task_.GetRecurrencePattern(pattern.put())) || !pattern) return;
  applyBlock(application_, *pattern, block_);
}

/// The device reminds only of what is due, and not after that: without a due date in the record neither reminder
/// property is touched, and a time later than the due date is left out, though the reminder itself is set.
void TaskWriter::applyReminder() {
  if (dueDate_ == kNoDate) return;
  task_.put_ReminderSet(toVariantBool(reminderSet_));
  if (reminderSet_ && reminderTime_ != kNoDate && reminderTime_ <= dueDate_)
    task_.put_ReminderTime(reminderTime_);
}

bool TaskWriter::write(ItemReplyHeader& header) {
  if (!applyFields()) return false;
  applyRecurrence();
  applyReminder();
  if (FAILED(task_.Save())) return false;
  finishSaved(application_, task_, body_, header);
  return true;
}

}  // namespace qorv
