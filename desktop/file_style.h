// What a person can choose about the form of written files.
#pragma once

#include "desktop/vcard_version.h"

namespace desktop {

struct FileStyle {
  /// Nearly every program reads 3.0; 4.0 has standard properties for what 3.0 has only customary ones.
  VcardVersion vcard = VcardVersion::V30;
};

}  // namespace desktop
