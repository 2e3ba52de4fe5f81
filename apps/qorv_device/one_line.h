// An error as the one line that a person gets.
#pragma once

#include <string>
#include <string_view>

namespace qorv_device {

/// What a person typed may hold line breaks and other control characters; each is shown as a question mark.
inline std::string oneLine(std::string_view text) {
  std::string line(text);
  for (char& c : line) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 0x20 || code == 0x7F) c = '?';
  }
  return line;
}

}  // namespace qorv_device
