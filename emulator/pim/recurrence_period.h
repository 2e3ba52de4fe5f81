// The periods of a rule: the days, weeks, months or years in which its occurrences fall.
#pragma once

#include <cstdint>

#include "emulator/pim/recurrence_rule.h"

namespace emulator {

/// Period 0 is the day, week, month or year of the rule's start; each further one lies `interval` units on.
/// Days are 64 bits wide here, so that a long interval runs past the calendar instead of wrapping.
class RecurrencePeriods {
 public:
  explicit RecurrencePeriods(const RecurrenceRule& rule);

  /// The last period that begins on or before the day; negative before the rule's start.
  [[nodiscard]] std::int64_t indexAt(Day day) const;
  /// The first day of a period; weeks start on Sunday.
  [[nodiscard]] std::int64_t startOf(std::int64_t index) const;
  /// The last day of a period itself, without the gap that a longer interval leaves behind it.
  [[nodiscard]] std::int64_t endOf(std::int64_t index) const;
  /// How many periods surely lie within so many days, at least 1.
  [[nodiscard]] std::int64_t countWithin(std::int64_t days) const;
  /// The number of occurrences of every period; a rule's start may cut period 0 short.
  [[nodiscard]] std::int32_t occurrencesEach() const { return occurrencesEach_; }

 private:
  enum class Unit { Days, Weeks, Months, Years };

  [[nodiscard]] std::int64_t unitAt(std::int64_t day) const;
  [[nodiscard]] std::int64_t startOfUnit(std::int64_t unit) const;
  static Unit unitOf(RecurrenceType type);

  Unit unit_;
  std::int64_t interval_;
  std::int64_t firstUnit_;
  std::int32_t occurrencesEach_;
};

}  // namespace emulator
