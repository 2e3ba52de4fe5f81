// Addresses between the MIME library's form and plain values.
#pragma once

#include <vector>

#include "desktop/mime_handles.h"
#include "desktop/mime_message.h"

namespace desktop {

using AddressHandle = MimeHandle<InternetAddress>;

/// Null is an empty list.
std::vector<MimeAddress> addressesIn(InternetAddressList* list);

AddressHandle makeAddress(const MimeAddress& address);

}  // namespace desktop
