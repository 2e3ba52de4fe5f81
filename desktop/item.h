// An item of any type as the desktop holds it.
#pragma once

#include <variant>

#include "desktop/appointment.h"
#include "desktop/contact.h"
#include "desktop/note.h"
#include "desktop/task.h"

namespace desktop {

using Item = std::variant<Appointment, Task, Contact, Note>;

}  // namespace desktop
