// The properties of a task.
#pragma once

#include "emulator/pim/property.h"

namespace emulator {

inline constexpr std::array kTaskProperties{
    text("Subject", 0x0020001F, 4095),
    text("Categories", 0x101D001F, 1023),
    date("StartDate", kFirstPlannedDay),
    date("DueDate", kFirstPlannedDay),
    date("DateCompleted", kFirstPlannedDay),
    number("Importance", 0x00600013, 1),
    flag("Complete", 0x1065000B),
    number("Sensitivity", 0x00210013),
    flag("TeamTask"),
    text("Body", 0x101F001F),
    flag("ReminderSet", 0x0028000B),
    text("ReminderSoundFile", 0x0029001F),
    date("ReminderTime", kFirstPlannedDay),
    number("ReminderOptions", 0x002A0013),
};

consteval std::size_t taskProperty(std::string_view name) {
  return placeOf(kTaskProperties, name);
}

}  // namespace emulator
