// Between the device's UTF-16 texts and its ANSI code page, 1252.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace emulator {

/// A character that the code page lacks becomes '?', one for each half of a surrogate pair.
std::vector<std::uint8_t> toAnsi(std::u16string_view text);

/// The five bytes without a character keep their value, as on the platform.
std::u16string fromAnsi(std::span<const std::uint8_t> bytes);

}  // namespace emulator
