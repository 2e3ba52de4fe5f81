#include "apps/qorv_sync/item_types.h"

#include "desktop/input_error.h"

namespace qorv_sync {

desktop::ItemType supportedType(const std::string& name) {
  std::string names;
  for (const ItemTypeName& entry : kItemTypes) {
    names += (names.empty() ? "" : ", ") + std::string(entry.name);
    if (name != entry.name) continue;
    if (entry.isSupported) return entry.type;
    throw desktop::InputError(name + ": not supported by this version");
  }
  throw desktop::InputError("'" + name + "' is no item type; the types are " + names);
}

}  // namespace qorv_sync
