// Which parameters each type of repetition rule has.
#pragma once

#include <array>
#include <string_view>

#include "desktop/appointment.h"

namespace desktop {

struct RecurrenceParameter {
  std::string_view name;  ///< as a person calls it
  std::uint32_t Recurrence::*member;
  unsigned flag;  ///< its bit in a shape's parameters
};

/// In the order in which they stand on the wire.
inline constexpr std::array kRecurrenceParameters{
    RecurrenceParameter{"weekdays", &Recurrence::dayOfWeekMask, 1},
    RecurrenceParameter{"day of month", &Recurrence::dayOfMonth, 2},
    RecurrenceParameter{"week of month", &Recurrence::instance, 4},
    RecurrenceParameter{"month", &Recurrence::monthOfYear, 8},
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
