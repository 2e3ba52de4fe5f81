// What a device says about itself.
#pragma once

#include <string>

#include "desktop/session.h"

namespace desktop {

/// The machine identifier; empty when the device was never given one.
std::u16string readIdentity(Session& session);

/// Whether the platform is recent enough for ink notes.
bool supportsNotes(Session& session);

}  // namespace desktop
