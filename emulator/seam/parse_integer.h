// Numbers at the beginning of a text, as the platform's C library reads them.
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/types.h"

namespace emulator {

struct ParsedInteger {
  LONG value = 0;
  std::size_t length = 0;  ///< white space, sign, prefix and digits; 0 when there is no digit
};

/// White space, a sign and digits. Base 0 takes the prefixes 0x and 0, base 16 takes 0x. What does not fit
/// becomes the nearest number that does.
ParsedInteger parseInteger(std::u16string_view text, int base);

}  // namespace emulator
