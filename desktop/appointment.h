// One calendar entry as the desktop holds it: plain values between the wire record and a calendar file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "desktop/local_time.h"

namespace desktop {

/// The device's own numbers; 4 is unused there.
enum class RecurrenceType : std::uint8_t {
  Daily = 0,
  Weekly = 1,
  Monthly = 2,
  MonthlyNth = 3,
  Yearly = 5,
  YearlyNth = 6,
};

/// The device's own numbers.
enum class RecurrenceEnd : std::uint8_t { OnDate = 1, AfterOccurrences = 2, Never = 3 };

/// A repetition rule as the device can hold it. Parameters that the type doesn't use are 0.
struct Recurrence {
  RecurrenceType type = RecurrenceType::Weekly;
  LocalTime start;  ///< first day of the series; the time of day is 0
  RecurrenceEnd end = RecurrenceEnd::Never;
  LocalTime endDate;                ///< last day, for OnDate; the time of day is 0
  std::uint32_t occurrences = 0;    ///< for AfterOccurrences, at most 999
  std::uint32_t interval = 1;       ///< in days, weeks, months or years; at most 999
  std::uint32_t dayOfWeekMask = 0;  ///< Sunday 1, Monday 2, Tuesday 4 ... Saturday 64
  std::uint32_t dayOfMonth = 0;     ///< 1 to 31; a month with fewer days has its occurrence on its last day
  std::uint32_t instance = 0;       ///< which one in the month, 1 to 4; 5 is the last
  std::uint32_t monthOfYear = 0;    ///< 1 to 12

  friend bool operator==(const Recurrence&, const Recurrence&) = default;
};

/// One occurrence of a series that was deleted or differs from its series.
/// Texts that are absent, and values that are absent, are the series' own.
struct AppointmentException {
  LocalTime originalDate;  ///< only the date counts
  bool deleted = false;
  LocalTime start;
  LocalTime end;  ///< of an all-day series the midnight after the last day, unlike the series' own end
  std::optional<bool> reminderSet;
  std::optional<std::uint32_t> reminderMinutes;
  std::optional<std::uint32_t> busyStatus;
  std::optional<std::u16string> subject;
  std::optional<std::u16string> location;
  std::optional<std::u16string> body;

  friend bool operator==(const AppointmentException&, const AppointmentException&) = default;
};

/// A calendar entry. Texts are UTF-16.
struct Appointment {
  std::uint32_t oid = 0;  ///< the device's identifier; 0 before it has one
  std::u16string subject;
  std::u16string location;
  std::u16string categories;  ///< comma-separated
  std::u16string body;
  LocalTime start;
  LocalTime
      end;  ///< for an all-day entry the last day itself, at midnight (the wire's form), not the day after
  bool allDay = false;
  bool isPrivate = false;
  std::uint32_t busyStatus = 2;  ///< 0 free, 1 tentative, 2 busy, 3 out of office
  bool reminderSet = false;
  std::uint32_t reminderMinutes = 15;
  std::optional<Recurrence> recurrence;
  std::vector<AppointmentException> exceptions;  ///< only with a recurrence

  friend bool operator==(const Appointment&, const Appointment&) = default;
};

}  // namespace desktop
