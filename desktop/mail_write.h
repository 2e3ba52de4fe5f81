// Writing one mail in the mail format.
#pragma once

#include <string>

#include "desktop/message.h"

namespace desktop {

/// Lines end in LF. The UID is its Message-ID. Times are those of this computer's clock.
std::string mailText(const Message& message, const std::string& uid);

}  // namespace desktop
