// Recurrence patterns in the words of icalendar_rules.txt: "weekly MO,FR every 2 times 10".
#pragma once

#include <array>
#include <sstream>
#include <string>
#include <string_view>

#include "tests/desktop/icalendar_support.h"

namespace desktop {

inline LocalTime dayOfDigits(const std::string& digits) {
  return at(std::stoi(digits.substr(0, 4)), std::stoi(digits.substr(4, 2)), std::stoi(digits.substr(6, 2)));
}

inline std::uint32_t maskOf(const std::string& days) {
  constexpr std::array<std::string_view, 7> kNames = {"SU", "MO", "TU", "WE", "TH", "FR", "SA"};
  std::uint32_t mask = 0;
  for (std::size_t i = 0; i < kNames.size(); ++i) {
    if (days.find(kNames[i]) != std::string::npos) mask |= 1U << i;
  }
  return mask;
}

inline Recurrence patternOf(const std::string& text, const LocalTime& start) {
  std::istringstream words(text);
  const auto word = [&words] {
    std::string next;
    words >> next;
    return next;
  };
  const auto number = [&word] { return static_cast<std::uint32_t>(std::stoul(word())); };
  Recurrence pattern;
  pattern.start = start;
  const std::string type = word();
  if (type == "daily") pattern.type = RecurrenceType::Daily;
  if (type == "weekly") pattern.type = RecurrenceType::Weekly;
  if (type == "monthly") pattern.type = RecurrenceType::Monthly;
  if (type == "monthly-nth") pattern.type = RecurrenceType::MonthlyNth;
  if (type == "yearly") pattern.type = RecurrenceType::Yearly;
  if (type == "yearly-nth") pattern.type = RecurrenceType::YearlyNth;
  if (type.starts_with("yearly")) pattern.monthOfYear = number();
  if (type == "monthly" || type == "yearly") pattern.dayOfMonth = number();
  if (type.ends_with("-nth")) pattern.instance = number();
  if (type.ends_with("-nth") || type == "weekly") pattern.dayOfWeekMask = maskOf(word());
  for (std::string next = word(); !next.empty(); next = word()) {
    if (next == "every") pattern.interval = number();
    if (next == "times") pattern.end = RecurrenceEnd::AfterOccurrences, pattern.occurrences = number();
    if (next == "until") pattern.end = RecurrenceEnd::OnDate, pattern.endDate = dayOfDigits(word());
  }
  return pattern;
}

}  // namespace desktop
