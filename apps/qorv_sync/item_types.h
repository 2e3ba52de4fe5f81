// The item types by the names that the command line has for them.
#pragma once

#include <string>

#include "desktop/item_kind.h"

namespace qorv_sync {

/// Throws InputError for a name that is no type's.
const desktop::ItemKind& kindNamed(const std::string& name);

/// "appointments, contacts or tasks": all types, for a command's help.
std::string spellKinds();

}  // namespace qorv_sync
