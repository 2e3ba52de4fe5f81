// Reads appointments for the commands that show them.
#pragma once

#include <functional>
#include <span>

#include "apps/qorv_sync/run.h"
#include "desktop/appointment.h"

namespace qorv_sync {

/// Hands over each appointment that can be read; the others are failures of the run.
void readAppointments(Run& run, desktop::Session& session, std::span<const std::uint32_t> oids,
                      const std::function<void(desktop::Appointment)>& use);

}  // namespace qorv_sync
