// The properties of an appointment. Its duration is what lies between Start and End.
#pragma once

#include "emulator/pim/property.h"

namespace emulator {

/// A year of 365 days.
inline constexpr std::int32_t kMostReminderMinutes = 525600;

inline constexpr std::array kAppointmentProperties{
    text("Subject", 0x0020001F, 4096),
    text("Location", 0x0041001F, 1023),
    text("Categories", 0x101D001F, 1023),
    moment("Start", kFirstPlannedDay),
    moment("End", kFirstPlannedDay),
    flag("AllDayEvent", 0x0044000B),
    number("BusyStatus", 0x00450013, 2),
    number("Sensitivity", 0x00210013),
    text("Body", 0x101F001F),
    number("MeetingStatus"),
    flag("ReminderSet", 0x0028000B),
    text("ReminderSoundFile", 0x0029001F),
    number("ReminderMinutesBeforeStart", 0x00460013, 15, kMostReminderMinutes),
    number("ReminderOptions", 0x002A0013),
};

consteval std::size_t appointmentProperty(std::string_view name) {
  return placeOf(kAppointmentProperties, name);
}

inline constexpr std::size_t kStart = appointmentProperty("Start");
inline constexpr std::size_t kEnd = appointmentProperty("End");
inline constexpr std::size_t kAllDayEvent = appointmentProperty("AllDayEvent");

}  // namespace emulator
