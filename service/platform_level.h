// Tells whether the platform is new enough for ink notes.
#pragma once

namespace qorv {

/// True from version 4 on, and on version 3.0 from build 11171; false when the version can't be read.
/// Version 3.1 and the like never had the control, whatever their build.
bool platformHasInk();

}  // namespace qorv
