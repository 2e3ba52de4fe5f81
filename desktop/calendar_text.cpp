#include "desktop/calendar_text.h"

#include <stdexcept>
#include <string_view>

#include "desktop/device_error.h"
#include "desktop/icalendar.h"
#include "desktop/recurrence_fields.h"

namespace desktop {

namespace {

/// A device can hold numbers that make no rule. Throws DeviceRefusal for them.
void expectMeaning(const Recurrence& rule) {
  const auto refuse = [](std::string_view name, std::uint32_t value) {
    throw DeviceRefusal("its repetition has no meaning: " + std::string(name) + " " + std::to_string(value));
  };
  if (rule.interval == 0) refuse("interval", rule.interval);
  for (const RecurrenceParameter& parameter : kRecurrenceParameters) {
    const std::uint32_t value = rule.*parameter.member;
    if (uses(rule.type, parameter) && (value == 0 || value > parameter.most)) refuse(parameter.name, value);
  }
}

template <typename Value>
std::string textOf(const Value& item, const std::string& uid) {
  if (item.recurrence) expectMeaning(*item.recurrence);
  try {
    return writeCalendar(item, uid);
  } catch (const std::invalid_argument& error) {
    throw DeviceRefusal(error.what());
  }
}

}  // namespace

std::string calendarText(const Appointment& appointment, const std::string& uid) {
  return textOf(appointment, uid);
}

std::string calendarText(const Task& task, const std::string& uid) {
  return textOf(task, uid);
}

}  // namespace desktop
