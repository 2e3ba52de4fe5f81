#include "emulator/messaging/given_values.h"

#include <algorithm>

namespace emulator {

bool isReadable(const SPropValue& value) {
  switch (propertyType(value.ulPropTag)) {
    case PT_UNICODE:
      return value.Value.lpszW != nullptr;
    case PT_BINARY:
      return value.Value.bin.lpb != nullptr || value.Value.bin.cb == 0;
    default:
      return true;
  }
}

HRESULT takeValues(ULONG count, const SPropValue* values, SPropProblemArray** problems,
                   const std::function<bool(const SPropValue&)>& take) {
  if (problems != nullptr) *problems = nullptr;
  if (values == nullptr || count == 0 || count > kMostTags) return E_INVALIDARG;
  const std::span given(values, count);
  if (!std::ranges::all_of(given, isReadable)) return E_INVALIDARG;
  bool complete = true;
  for (const SPropValue& value : given) {
    // Programs leave a slot zeroed when they have nothing to say there.
    if (value.ulPropTag != 0 && !take(value)) complete = false;
  }
  return complete ? S_OK : MAPI_W_ERRORS_RETURNED;
}

}  // namespace emulator
