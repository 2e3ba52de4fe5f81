// The MIME library's reading and writing of one mail, in plain values: nothing else knows the library.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "desktop/mime_message.h"

namespace desktop {

/// Reads anything that has the form of headers and a text. What isn't encoded although it should be is UTF-8, else
/// Windows-1252. An embedded message is a part with the message's bytes.
MimeMessage parseMime(std::string_view text);

/// Lines end in LF, as mail folders have it. Texts of the message are UTF-8 and have lines that end in LF; all else
/// is written byte for byte. Equal messages give equal bytes.
std::string formatMime(const MimeMessage& message);

/// The addresses of a header's value, those in groups too; of an empty group its name.
std::vector<MimeAddress> parseAddresses(const std::string& text);

/// `Ann Lee <ann@lee.example>`, the name quoted where it must be, and not encoded.
std::string spellAddress(const MimeAddress& address);

}  // namespace desktop
