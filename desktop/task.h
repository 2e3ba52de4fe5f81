// One task as the desktop holds it: plain values between the wire record and a calendar file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "desktop/appointment.h"

namespace desktop {

/// Texts are UTF-16; times that are not there are LocalTime{}.
struct Task {
  std::uint32_t oid = 0;  ///< the device's identifier; 0 before it has one
  std::u16string subject;
  std::u16string categories;  ///< comma-separated
  std::u16string body;
  LocalTime start;
  LocalTime due;                 ///< the device drops its time of day
  std::uint32_t importance = 1;  ///< 0 low, 1 normal, 2 high
  bool complete = false;
  bool isPrivate = false;
  bool reminderSet = false;
  LocalTime reminderTime;  ///< none without a reminder
  std::optional<Recurrence> recurrence;

  friend bool operator==(const Task&, const Task&) = default;
};

}  // namespace desktop
