// The device's items as the texts of calendar files.
#pragma once

#include <string>

#include "desktop/appointment.h"
#include "desktop/task.h"

namespace desktop {

/// Both throw DeviceRefusal when the item has no meaning in a calendar file.
std::string calendarText(const Appointment& appointment, const std::string& uid);
std::string calendarText(const Task& task, const std::string& uid);

}  // namespace desktop
