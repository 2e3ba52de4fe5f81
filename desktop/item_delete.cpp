#include "desktop/item_delete.h"

#include <unordered_set>

#include "desktop/item_reader.h"
#include "desktop/item_writer.h"

namespace desktop {

namespace {

using OidSet = std::unordered_set<std::uint32_t>;

OidSet listed(Session& session, ItemType type) {
  const std::vector<std::uint32_t> oids = listItems(session, type);
  return {oids.begin(), oids.end()};
}

/// Of mail the device says that it deleted whatever it was told to.
std::vector<std::uint32_t> deleteMail(Session& session, std::span<const std::uint32_t> oids) {
  const OidSet before = listed(session, ItemType::Mail);
  deleteItems(session, ItemType::Mail, oids);
  const OidSet after = listed(session, ItemType::Mail);
  std::vector<std::uint32_t> gone;
  for (const std::uint32_t oid : oids) {
    if (before.contains(oid) && !after.contains(oid)) gone.push_back(oid);
  }
  return gone;
}

}  // namespace

std::vector<std::uint32_t> deleteHeldItems(Session& session, const ItemKind& kind,
                                           std::span<const std::uint32_t> oids) {
  return kind.type == ItemType::Mail ? deleteMail(session, oids) : deleteItems(session, kind.type, oids);
}

}  // namespace desktop
