// A line of a card: where its value begins, and what its parameters say of its encoding.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace desktop {

/// The place of the colon before the value; npos without one. A colon in a quoted parameter is no such colon.
std::size_t valueColon(std::string_view line);

/// "begin:VCard " gives "BEGIN"; upper case, without group and parameters.
std::string lineName(std::string_view line);

/// Whether it is `name:VCARD`, in letters of any case.
bool marksCard(std::string_view line, std::string_view name);

bool isQuotedPrintable(std::string_view line);
bool isBase64(std::string_view line);

/// What is wrong with a whole line; empty when nothing is. The line number is the reader's to add.
std::string faultOfLine(std::string_view line);

/// The line in UTF-8, without its CHARSET, when the value is in another character set as it stands. Encoded
/// values are the parser's to convert. Throws ItemRefused for an unknown character set, and for bytes that are
/// none of its texts.
std::string lineInUtf8(std::string line);

/// A name's parts can be lists from 3.0 on, parted by commas; the device has one text for each part. The line with
/// blanks for those commas, when it is a name's; a parser would no longer tell them from escaped ones.
std::string withoutLists(std::string line);

}  // namespace desktop
