#include "apps/qorv_sync/item_types.h"

#include "desktop/input_error.h"

namespace qorv_sync {

const desktop::ItemKind& kindNamed(const std::string& name) {
  std::string names;
  for (const desktop::ItemKind* kind : desktop::itemKinds()) {
    if (name == kind->name) return *kind;
    names += (names.empty() ? "" : ", ") + std::string(kind->name);
  }
  throw desktop::InputError("'" + name + "' is no item type; the types are " + names);
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
