// Stores bodies that are too long for the object model's body property.
#pragma once

#include "platform/outlook.h"

namespace qorv {

/// A body of this many characters or more is not put but written into the item's body stream after the save.
inline constexpr std::size_t kLongBodyLength = 4096;

/// Writes the text as ANSI text into the stream of the saved item. Does nothing for no text or one that is
/// shorter than kLongBodyLength. True when it did nothing or succeeded.
bool WriteLongBody(IPOutlookApp& application, LPCWSTR text, LONG oid);

}  // namespace qorv
