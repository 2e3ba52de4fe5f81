// The device's UTF-16 texts as UTF-8, for files and for people to read.
#pragma once

#include <string>
#include <string_view>

namespace desktop {

/// Half a surrogate pair becomes U+FFFD.
std::string toUtf8(std::u16string_view text);

/// Throws InputError when the bytes are no UTF-8.
std::u16string toUtf16(std::string_view text);

/// What follows the mark that some programs put in front of UTF-8.
std::string_view withoutByteOrderMark(std::string_view text);

/// For one line of a report: control characters become spaces, so that a text can't run a terminal.
std::string onOneLine(std::string_view utf8);

/// In quotes, with line ends and other control characters spelled out.
std::string quoted(std::u16string_view text);

}  // namespace desktop
