// Cards of address books (vCard, RFC 2426 and RFC 6350) to and from the desktop's contacts.
//
// What the device can't hold is never dropped silently: a part that is left out becomes a note, a card that can't
// be taken at all becomes a problem, and the rest of the file goes on.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "desktop/contact.h"
#include "desktop/file_item.h"
#include "desktop/vcard_version.h"

namespace desktop {

/// Reads cards of the versions 2.1, 3.0 and 4.0, also mixed. Line ends within a note or a street become CRLF, as
/// the device's editor has them; in the one-line texts they become blanks. Throws InputError when there is no card
/// in the text.
FileItems readVcards(std::string_view text, const std::string& fileName);

/// One contact as a whole file: UTF-8, CRLF, folded. Equal contacts give equal bytes.
std::string writeVcard(const Contact& contact, const std::string& uid, VcardVersion version);

}  // namespace desktop
