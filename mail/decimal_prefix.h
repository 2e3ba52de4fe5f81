// Reads a number from the beginning of a text.
#pragma once

#include "platform/text.h"

namespace qorv {

/// White space, a sign and decimal digits. Returns the first character behind them; without a digit that is
/// `text` itself and `number` is 0.
inline LPCWSTR ParseDecimalPrefix(LPCWSTR text, LONG& number) {
  constexpr int kDecimal = 10;
  WCHAR* end = nullptr;
  number = wcstol(text, &end, kDecimal);
  return end ? end : text;
}

}  // namespace qorv
