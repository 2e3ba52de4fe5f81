// What a device made of an entry, against what it was sent.
#pragma once

#include <string>
#include <vector>

#include "desktop/appointment.h"

namespace desktop {

/// All spelled for people, in one line each.
struct Difference {
  std::string property;  ///< `location`, `repetition: interval`, `exception 2005-03-21: start`
  std::string sent;
  std::string device;
};

/// Exceptions are matched by the day that they replace; what they don't say is their series' own.
std::vector<Difference> compareAppointments(const Appointment& sent, const Appointment& device);

/// `location: sent "Room 4", device has "Room"`
std::string spell(const Difference& difference);

}  // namespace desktop
