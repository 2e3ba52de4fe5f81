// Reaches a device that listens on an address.
#pragma once

#include <memory>
#include <string>

#include "desktop/socket_stream.h"

namespace desktop {

/// `HOST:PORT` or `unix:PATH`. Throws InputError for an address of another form, NoDevice when nobody answers
/// there.
std::unique_ptr<Stream> connectTo(const std::string& address, Seconds timeout);

}  // namespace desktop
