// The fields of a calendar entry: their numbers on the wire, their names for people, and where the value is
// held.
#pragma once

#include <array>
#include <string_view>
#include <variant>

#include "desktop/appointment.h"

namespace desktop {

using TextMember = std::u16string Appointment::*;
using NumberMember = std::uint32_t Appointment::*;
using FlagMember = bool Appointment::*;
using TimeMember = LocalTime Appointment::*;

struct AppointmentField {
  std::uint32_t tag;
  std::string_view name;
  /// The member's type says how the value travels: as text, u32 or time; a flag as u32.
  std::variant<TextMember, NumberMember, FlagMember, TimeMember> member;
  /// What a flag that is set is sent as. The device sends 1 for each of them.
  std::uint32_t setFlag = 1;
};

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

/// The recurrence block, which the exception records follow.
inline constexpr std::uint32_t kRecurrenceTag = 19;

}  // namespace desktop
