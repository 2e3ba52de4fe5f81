// Converts between wire times and the object model's dates, both local.
#pragma once

#include <optional>

#include "platform/errors.h"
#include "platform/outlook.h"

namespace qorv {

/// Nothing for a time that is no date; such a property is left as it was.
inline std::optional<DATE> toDate(IPOutlookApp& application, SYSTEMTIME time) {
  DATE date;
  if (FAILED(application.SystemTimeToVariantTime(&time, &date))) return std::nullopt;
  return date;
}

/// All zero for a date that can't be told as a time.
inline SYSTEMTIME toSystemTime(IPOutlookApp& application, DATE date) {
  SYSTEMTIME time{};
  if (FAILED(application.VariantTimeToSystemTime(date, &time))) return {};
  return time;
}

}  // namespace qorv
