// Addresses as the device lists them and as mails do.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "desktop/mime_message.h"

namespace desktop {

/// The entries of a list with ";" between them, as mails have addresses. An entry that is none stays, as a text.
std::vector<MimeAddress> addressesOfList(std::u16string_view list);

/// The addresses alone, with ";" between them: the device keeps no names of people, and what stands in an address's
/// place it takes for the address. Left out are addresses with a ";", which would be others then, and a sender's hint
/// that there are recipients whom he doesn't name.
std::u16string listOfAddresses(const std::vector<MimeAddress>& addresses);

}  // namespace desktop
