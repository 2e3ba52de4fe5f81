#include "apps/qorv_sync/item_types.h"

#include "desktop/input_error.h"

namespace qorv_sync {

desktop::ItemType typeNamed(const std::string& name) {
  std::string names;
  for (const ItemTypeName& entry : kItemTypes) {
    if (name == entry.name) return entry.type;
    names += (names.empty() ? "" : ", ") + std::string(entry.name);
  }
  throw desktop::InputError("'" + name + "' is no item type; the types are " + names);
}

const desktop::ItemKind& kindNamed(const std::string& name) {
  if (const desktop::ItemKind* kind = desktop::kindOf(typeNamed(name))) return *kind;
  throw desktop::InputError(name + ": not supported by this version");
}

std::string spellKinds() {
  std::string names;
  const auto kinds = desktop::itemKinds();
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    if (i > 0) names += i + 1 == kinds.size() ? " or " : ", ";
    names += kinds[i]->name;
  }
  return names;
}

}  // namespace qorv_sync
