// The fields of a task's record.
#pragma once

#include <array>

#include "desktop/record_field.h"
#include "desktop/task.h"

namespace desktop {

using TaskField = RecordField<Task>;

inline constexpr std::uint32_t kDueTag = 4;
inline constexpr std::uint32_t kReminderTag = 9;

/// In the order in which they are sent.
inline constexpr std::array kTaskFields{
    TaskField{1, "subject", &Task::subject},
    TaskField{2, "categories", &Task::categories},
    TaskField{3, "start", &Task::start},
    TaskField{kDueTag, "due date", &Task::due},
    TaskField{5, "importance", &Task::importance},
    TaskField{6, "complete", &Task::complete},
    TaskField{7, "private", &Task::isPrivate},
    TaskField{kReminderTag, "reminder", &Task::reminderSet},
    TaskField{10, "reminder time", &Task::reminderTime},
    TaskField{11, "body", &Task::body},
};

}  // namespace desktop
