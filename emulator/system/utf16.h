// Between the device's UTF-16 and the UTF-8 of command lines, messages and snapshots.
#pragma once

#include <string>
#include <string_view>

namespace emulator {

/// A surrogate without its partner becomes U+FFFD.
std::string toUtf8(std::u16string_view text);

/// A byte that is no part of a well-formed character becomes U+FFFD.
std::u16string toUtf16(std::string_view text);

}  // namespace emulator
