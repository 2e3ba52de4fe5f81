// A text of the device as part of a line on the host.
#pragma once

#include <string>
#include <string_view>

namespace emulator {

/// UTF-8; a line end is shown as \n.
std::string onOneLine(std::u16string_view text);

}  // namespace emulator
