// A task as a record on the wire, in both directions.
//
//   to the device    u32 number of fields, the fields (see task_fields.h), the recurrence block as the last one
//   from the device  record header, fields, recurrence block
#pragma once

#include <vector>

#include "desktop/task.h"
#include "desktop/wire.h"

namespace desktop {

Bytes writeTask(const Task& task);

/// The records that make the device's item this task, to be written one after another. The device takes a
/// reminder only from a record whose due date is not before it: a task whose own due date is, or that has
/// none, is sent with another due date first. The same turns off the reminder of an item that `isThere` when
/// the task has neither.
std::vector<Bytes> taskRecords(const Task& task, bool isThere);

/// Reads the record of the given item. The time of a reminder that is off is left out. Throws ProtocolError
/// for any other record, and for one that lacks a field.
Task readTask(WireReader& reader, std::uint32_t oid);

}  // namespace desktop
