// What a device made of a calendar entry, against what it was sent.
#pragma once

#include <vector>

#include "desktop/appointment.h"
#include "desktop/difference.h"

namespace desktop {

/// Exceptions are matched by the day that they replace; what they don't say is their series' own.
std::vector<Difference> compareAppointments(const Appointment& sent, const Appointment& device);

}  // namespace desktop
