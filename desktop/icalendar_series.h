// Recurrence rules of calendar files as the device's patterns, or the reason why the device can't hold them.
#pragma once

#include <libical/ical.h>
#include <vector>

#include "desktop/appointment.h"

namespace desktop {

struct Series {
  Recurrence recurrence;
  /// Entries on whose days the clocks of the series' zone and of this computer are further apart or closer
  /// together than on the first.
  std::vector<AppointmentException> shifted;
};

/// `start` is the first entry's start with its zone, `first` that entry here. The pattern is expanded and
/// compared with the rule, so that a series is held exactly or not at all. Throws ItemRefused when the device
/// can't hold it.
Series readSeries(const icalrecurrencetype& rule, const icaltimetype& start, const Appointment& first);

}  // namespace desktop
