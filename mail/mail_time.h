// Converts between a message's times, which are UTC, and the record's, which are local to the device.
#pragma once

#include <optional>

#include "platform/time.h"

namespace qorv {

/// A time that is no date gives zeros.
SYSTEMTIME toRecordTime(FILETIME time);

/// Nothing for a time that is no date.
std::optional<FILETIME> toMessageTime(const SYSTEMTIME& time);

}  // namespace qorv
