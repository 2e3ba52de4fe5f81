// Converts between wire times and the object model's dates, both local.
#pragma once

#include <optional>

#include "platform/outlook.h"

namespace qorv {

/// Nothing for a time that is no date; such a property is left as it was.
inline std::optional<DATE> toDate(IPOutlookApp& application, SYSTEMTIME time) {
  DATE date;
  if (application.SystemTimeToVariantTime(&time, &date) < 0) return std::nullopt;
  return date;
}

/// All zero for a date that can't be told as a time.
inline SYSTEMTIME toSystemTime(IPOutlookApp& application, DATE date) {
  SYSTEMTIME time{};
  if (application.VariantTimeToSystemTime(date, &time) < 0) return {};
  return time;
}

}  // namespace qorv
