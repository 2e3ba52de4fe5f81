// What files and the device write differently within texts: line ends, control characters, lengths.
#pragma once

#include <string>
#include <string_view>

namespace desktop {

/// Each line end, be it CR LF, CR or LF, in the one given form.
std::u16string replaceLineEnds(std::u16string_view text, std::u16string_view lineEnd);

/// Line ends of any kind become CRLF, as the device's editor has them.
std::u16string withDeviceLineEnds(std::u16string_view text);

/// Line ends of any kind, and tabs, become one blank each; blanks around the whole are dropped.
std::u16string asOneLine(std::u16string_view text);

/// Line ends become LF, and control characters, which a calendar file can't carry, are left out.
std::u16string withFileLineEnds(std::u16string_view text);

/// A comma-separated list without blanks around its parts and without empty ones.
std::u16string tidyList(std::u16string_view list);

/// The first `limit` units at most, never half a surrogate pair.
std::u16string_view cutTo(std::u16string_view text, std::size_t limit);

/// In lower case, as far as ASCII goes.
std::u16string foldCase(std::u16string text);

}  // namespace desktop
