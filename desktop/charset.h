// Texts in the character sets that old cards and mails are written in.
#pragma once

#include <string>
#include <string_view>

namespace desktop {

/// Throws ItemRefused for an unknown character set, and for bytes that are none of its texts.
std::string convertToUtf8(std::string_view text, const std::string& charset);

}  // namespace desktop
