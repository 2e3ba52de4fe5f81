// Which parameters each type of repetition rule has.
#pragma once

#include <array>
#include <string_view>

#include "desktop/appointment.h"

namespace desktop {

struct RecurrenceParameter {
  std::string_view name;  ///< as a person calls it
  std::uint32_t Recurrence::*member;
  unsigned flag;       ///< its bit in a shape's parameters
  std::uint32_t most;  ///< the least is 1 for each of them
};

/// In the order in which they stand on the wire.
inline constexpr std::array kRecurrenceParameters{
    RecurrenceParameter{"weekdays", &Recurrence::dayOfWeekMask, 1, 127},
    RecurrenceParameter{"day of month", &Recurrence::dayOfMonth, 2, 31},
    RecurrenceParameter{"week of month", &Recurrence::instance, 4, 5},
    RecurrenceParameter{"month", &Recurrence::monthOfYear, 8, 12},
};

struct RecurrenceShape {
  RecurrenceType type;
  std::string_view name;
  unsigned parameters;
};

inline constexpr std::array kRecurrenceShapes{
    RecurrenceShape{RecurrenceType::Daily, "daily", 0},
    RecurrenceShape{RecurrenceType::Weekly, "weekly", 1},
    RecurrenceShape{RecurrenceType::Monthly, "monthly", 2},
    RecurrenceShape{RecurrenceType::MonthlyNth, "monthly", 1 | 4},
    RecurrenceShape{RecurrenceType::Yearly, "yearly", 2 | 8},
    RecurrenceShape{RecurrenceType::YearlyNth, "yearly", 1 | 4 | 8},
};

constexpr const RecurrenceShape& shapeOf(RecurrenceType type) {
  for (const RecurrenceShape& shape : kRecurrenceShapes) {
    if (shape.type == type) return shape;
  }
  return kRecurrenceShapes.front();
}

constexpr bool uses(RecurrenceType type, const RecurrenceParameter& parameter) {
  return (shapeOf(type).parameters & parameter.flag) != 0;
}

}  // namespace desktop
