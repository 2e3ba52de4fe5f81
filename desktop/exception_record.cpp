#include "desktop/exception_record.h"

#include <array>

#include "desktop/device_error.h"
#include "desktop/local_time.h"

namespace desktop {

namespace {

constexpr std::uint32_t kUnchanged = 0xFFFFFFFF;
constexpr std::uint32_t kReminderOn = 0x0000FFFF;

constexpr std::array kTexts{&AppointmentException::subject, &AppointmentException::location,
                            &AppointmentException::body};

std::uint32_t reminderWord(const std::optional<bool>& set) {
  if (!set) return kUnchanged;
  return *set ? kReminderOn : 0;
}

LocalTime knownTime(const LocalTime& time, const char* what) {
  if (!isValid(time)) throw ProtocolError(std::string("an exception has no valid ") + what);
  return time;
}

LocalTime timeOrNone(const LocalTime& time, const char* what) {
  const LocalTime held = noneIfNoDate(time);
  return isNone(held) ? held : knownTime(held, what);
}

}  // namespace

void writeException(WireWriter& writer, const AppointmentException& exception) {
  writer.time(exception.originalDate);
  writer.time(exception.start);
  writer.time(exception.end);
  writer.number(exception.deleted ? 1 : 0);
  writer.number(kUnchanged);
  writer.number(reminderWord(exception.reminderSet));
  writer.number(exception.reminderMinutes.value_or(kUnchanged));
  writer.number(exception.busyStatus.value_or(kUnchanged));
  for (const auto text : kTexts) writer.number((exception.*text).has_value() ? 1 : 0);
  for (const auto text : kTexts) {
    if (exception.*text) writer.text(*(exception.*text));
  }
}

AppointmentException readException(WireReader& reader) {
  AppointmentException exception;
  exception.originalDate = midnightOf(dayOf(knownTime(reader.time(), "original day")));
  const LocalTime start = reader.time();
  const LocalTime end = reader.time();
  exception.deleted = reader.number() != 0;
  reader.number();
  const std::uint32_t reminderSet = reader.number();
  const std::uint32_t reminderMinutes = reader.number();
  const std::uint32_t busyStatus = reader.number();
  std::array<bool, kTexts.size()> present;
  for (bool& follows : present) follows = reader.number() != 0;
  for (std::size_t i = 0; i < kTexts.size(); ++i) {
    if (present[i]) exception.*kTexts[i] = reader.text();
  }
  // A deleted occurrence has no values of its own.
  if (exception.deleted) return exception;
  exception.start = timeOrNone(start, "start");
  exception.end = timeOrNone(end, "end");
  exception.reminderSet = reminderSet != 0;
  if (reminderMinutes != kUnchanged) exception.reminderMinutes = reminderMinutes;
  if (busyStatus != kUnchanged) exception.busyStatus = busyStatus;
  return exception;
}

}  // namespace desktop
