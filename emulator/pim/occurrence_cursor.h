// Walks the occurrences of a rule forwards from any day, with libical's expansion.
#pragma once

#include <memory>
#include <optional>

#include "emulator/pim/recurrence_period.h"

struct icalrecur_iterator_impl;

namespace emulator {

/// Looks at the pattern alone: the rule's end is the caller's affair. A seek costs the same for a near and a
/// far day.
class OccurrenceCursor {
 public:
  /// Stands before the first occurrence on or after `from`. The rule must outlive the cursor.
  OccurrenceCursor(const RecurrenceRule& rule, Day from);

  /// The next occurrence; none past the platform's last day, and none ever when the rule is not well-formed.
  std::optional<Day> next();

 private:
  struct IteratorFree {
    void operator()(icalrecur_iterator_impl* iterator) const;
  };

  bool startRun(std::int64_t period);
  std::optional<std::int64_t> step();

  const RecurrenceRule& rule_;
  RecurrencePeriods periods_;
  std::int64_t from_;
  std::unique_ptr<icalrecur_iterator_impl, IteratorFree> iterator_;
  std::int64_t shift_ = 0;       ///< days from libical's dates to ours
  std::int64_t nextPeriod_ = 0;  ///< where the run after this one begins
  std::int64_t runEnd_ = 0;      ///< the last day of this run
  std::int32_t steps_ = 0;
};

}  // namespace emulator
