#include "desktop/all_day_end.h"

#include <algorithm>

#include "desktop/local_time.h"

namespace desktop {

namespace {

constexpr int kLengthThatCannotBeHeld = 2;

}  // namespace

int allDayLength(const Appointment& appointment) {
  const auto days = dayOf(appointment.end) - dayOf(appointment.start);
  return std::max(1, static_cast<int>(days.count()) + 1);
}

bool canStayAllDay(const Appointment& appointment) {
  return allDayLength(appointment) != kLengthThatCannotBeHeld;
}

Appointment fromMidnightToMidnight(const Appointment& allDay) {
  Appointment timed = allDay;
  timed.allDay = false;
  timed.end = addDays(allDay.end, 1);
  return timed;
}

LocalTime endToSend(const Appointment& appointment) {
  const bool lengthened =
      appointment.allDay && appointment.recurrence && allDayLength(appointment) > kLengthThatCannotBeHeld;
  return lengthened ? addDays(appointment.end, -1) : appointment.end;
}

}  // namespace desktop
