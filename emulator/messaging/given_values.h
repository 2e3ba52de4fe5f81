// Arrays of property values that a program hands in, taken whole or not at all.
#pragma once

#include <functional>

#include "emulator/messaging/mail_value.h"

namespace emulator {

/// Whether a value can be looked at: no null text or bytes.
bool isReadable(const SPropValue& value);

/// What SetProps does. A value whose tag is 0 is skipped; one that `take` refuses makes the result
/// MAPI_W_ERRORS_RETURNED. E_INVALIDARG, and nothing is taken, for an array that can't be read. The problems are
/// not listed.
HRESULT takeValues(ULONG count, const SPropValue* values, SPropProblemArray** problems,
                   const std::function<bool(const SPropValue&)>& take);

}  // namespace emulator
