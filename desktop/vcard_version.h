// The versions of cards that are written.
#pragma once

namespace desktop {

enum class VcardVersion { V30, V40 };

}  // namespace desktop
