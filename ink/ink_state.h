// The few things about notes that live as long as the loaded module.
#pragma once

#include "platform/property_database.h"

namespace qorv {

struct InkState {
  DWORD nameCounter = 1;   ///< the next number for a note without a name, or whose name is taken; only grows
  CEOID noteDatabase = 0;  ///< the note database, once it was made or found
};

InkState& inkState();

}  // namespace qorv
