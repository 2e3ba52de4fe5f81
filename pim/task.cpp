#include "pim/task.h"

#include "channel/host_context.h"
#include "pim/field_writer.h"
#include "pim/recurrence.h"
#include "pim/saved_item.h"
#include "pim/task_writer.h"
#include "platform/errors.h"
#include "service/com_ptr.h"

namespace qorv {

namespace {

namespace tag = task_tag;

void writeRecurrence(IPOutlookApp& application, ITask& task, DWORD oid, ReplyWriter& reply,
                     RecurrenceBlock& block) {
  ComPtr<IRecurrencePattern> pattern;
  if (FAILED(task.GetRecurrencePattern(pattern.put())) || !pattern) return;
  fillItemBlock(application, *pattern, oid, kTaskRecurrenceProperty, block);
  reply.WriteTaggedBlock98(tag::kRecurrence, block.bytes());
}

}  // namespace

CCETask::CCETask() : CQorvApiBase({olFolderTasks, DataType::Task, &hostContext().taskLog}) {}

bool CCETask::ReadItemRecord(IDispatch* item, DWORD oid) {
  auto& task = static_cast<ITask&>(*item);
  const DWORD start = beginRecord();
  FieldWriter<ITask> fields(application(), task, *this);
  fields.writeDate(tag::kStartDate, &ITask::get_StartDate);
  fields.writeDate(tag::kDueDate, &ITask::get_DueDate);
  fields.writeSensitivity(tag::kSensitivity);
  fields.writeNumber(tag::kImportance, &ITask::get_Importance);
  fields.writeDate(tag::kReminderTime, &ITask::get_ReminderTime);
  fields.writeFlag(tag::kReminderSet, &ITask::get_ReminderSet);
  fields.writeFlag(tag::kComplete, &ITask::get_Complete);
  fields.writeText(tag::kSubject, &ITask::get_Subject);
  fields.writeText(tag::kCategories, &ITask::get_Categories);
  fields.writeText(tag::kBody, &ITask::get_Body);
  if (fields.flag(&ITask::get_IsRecurring)) writeRecurrence(application(), task, oid, *this, recurrence_);
  endRecord(start, oidOf(task));
  return true;
}

bool CCETask::WriteItemRecord(IDispatch* item, const BYTE* record, DWORD& consumed, ItemReplyHeader& header) {
  TaskWriter writer(application(), *this, recurrence_, record, static_cast<ITask&>(*item));
  const bool saved = writer.write(header);
  consumed = writer.consumed();
  return saved;
}

}  // namespace qorv
