// The vCard library's reading and writing of one card, in plain values: nothing else knows the library.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "desktop/vcard_property.h"
#include "desktop/vcard_version.h"

namespace desktop {

/// The properties of one card, in its order. The card begins with BEGIN:VCARD, ends with END:VCARD, and is
/// UTF-8 with one property a line. Throws ItemRefused when a value decodes to anything but UTF-8.
std::vector<VcardProperty> parseVcard(const std::string& card);

/// A whole card, lines ending in CRLF and folded. The version is no property.
std::string formatVcard(std::span<const VcardProperty> properties, VcardVersion version);

}  // namespace desktop
