// A file that travels beside an item, as attachments do.
#pragma once

#include <string>

#include "desktop/wire.h"

namespace desktop {

struct AttachedFile {
  std::u16string name;  ///< what people call it
  Bytes data;
  /// Where the device has the data for the time being; empty when it has them nowhere.
  std::u16string path;
};

}  // namespace desktop
