// A calendar entry as JSON, for scripts.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "desktop/appointment.h"

namespace desktop {

/// Times are `2005-03-14T09:00:00`, local; an all-day entry ends on its last day. Of an exception only what
/// is its own.
nlohmann::json toJson(const Appointment& appointment);

}  // namespace desktop
