// How a line of the log ends.
#pragma once

#include <cstddef>
#include <span>

namespace qorv {

/// A line with its end.
inline constexpr std::size_t kLogLineSize = 1024;

/// Puts carriage return, line feed and a NUL behind the first `length` bytes, each as long as there is room
/// behind it for those that follow: a line that fills the buffer has no end at all. The length with the line
/// end, without the NUL.
std::size_t endLogLine(std::span<char, kLogLineSize> line, std::size_t length);

}  // namespace qorv
