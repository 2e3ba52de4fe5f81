#include "desktop/task_record.h"

#include "desktop/local_time.h"
#include "desktop/recurrence_block.h"
#include "desktop/task_fields.h"

namespace desktop {

namespace {

constexpr std::string_view kSingular = "task";

/// Of a task that repeats; the device has no exceptions of it.
constexpr std::uint32_t kNoExceptions = 0;

/// The task as it travels: a date that is not there has a spelling of its own.
Task inWireForm(const Task& task) {
  Task sent = task;
  for (LocalTime Task::*time : {&Task::start, &Task::due, &Task::reminderTime}) {
    if (isNone(sent.*time)) sent.*time = kNoDateTime;
  }
  return sent;
}

bool isTakenWithItsReminder(const Task& task, bool isThere) {
  if (isNone(task.due)) return !task.reminderSet && !isThere;
  return !task.reminderSet || task.reminderTime <= task.due;
}

/// A due date with which the device takes the task's reminder, or takes it away.
LocalTime standInDue(const Task& task) {
  constexpr LocalTime kAnyDay{2000, 1, 1};
  return isNone(task.reminderTime) ? kAnyDay : addDays(midnightOf(dayOf(task.reminderTime)), 1);
}

/// The due date alone. The reminder is named with it, as a due date without one turns it off.
Bytes dueRecord(const Task& task) {
  WireWriter writer;
  writer.number(2);
  writer.number(kDueTag);
  writer.time(inWireForm(task).due);
  writer.number(kReminderTag);
  writer.number(task.reminderSet ? 1 : 0);
  return writer.take();
}

}  // namespace

Bytes writeTask(const Task& task) {
  const Task sent = inWireForm(task);
  WireWriter writer;
  writer.number(static_cast<std::uint32_t>(kTaskFields.size() + (task.recurrence ? 1 : 0)));
  for (const TaskField& field : kTaskFields) writeField(writer, field, sent);
  if (task.recurrence) {
    writer.number(kRecurrenceTag);
    writeRecurrenceBlock(writer, *task.recurrence, kNoExceptions);
  }
  return writer.take();
}

std::vector<Bytes> taskRecords(const Task& task, bool isThere) {
  if (isTakenWithItsReminder(task, isThere)) return {writeTask(task)};
  Task standIn = task;
  standIn.due = standInDue(task);
  return {writeTask(standIn), dueRecord(task)};
}

Task readTask(WireReader& reader, std::uint32_t oid) {
  const auto readOther = [](WireReader& rest, std::uint32_t tag, Task& task) {
    if (tag != kRecurrenceTag) return false;
    task.recurrence = readRecurrenceBlock(rest).rule;
    return true;
  };
  Task task = readRecord<Task>(reader, kSingular, oid, kTaskFields, readOther);
  if (!task.reminderSet) task.reminderTime = {};
  return task;
}

}  // namespace desktop
