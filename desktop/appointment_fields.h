// The fields of a calendar entry's record.
#pragma once

#include <array>

#include "desktop/appointment.h"
#include "desktop/record_field.h"

namespace desktop {

using AppointmentField = RecordField<Appointment>;

/// The device stores the low half of some flags as it gets it, and takes all ones for true.
inline constexpr std::uint32_t kDeviceTrue = 0xFFFF;

/// In the order in which they are sent. Putting the start moves the end along, so the end comes after it.
inline constexpr std::array kAppointmentFields{
    AppointmentField{4, "all day", &Appointment::allDay, kDeviceTrue},
    AppointmentField{16, "start", &Appointment::start},
    AppointmentField{18, "end", &Appointment::end},
    AppointmentField{5, "private", &Appointment::isPrivate},
    AppointmentField{6, "busy status", &Appointment::busyStatus},
    AppointmentField{8, "reminder minutes", &Appointment::reminderMinutes},
    AppointmentField{7, "reminder", &Appointment::reminderSet, kDeviceTrue},
    AppointmentField{1, "subject", &Appointment::subject},
    AppointmentField{2, "location", &Appointment::location},
    AppointmentField{3, "categories", &Appointment::categories},
    AppointmentField{9, "body", &Appointment::body},
};

}  // namespace desktop
