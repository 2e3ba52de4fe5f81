#include "apps/qorv_sync/items.h"

#include "desktop/item_reader.h"

namespace qorv_sync {

void readItems(Run& run, desktop::Session& session, const desktop::ItemKind& kind,
               std::span<const std::uint32_t> oids, const ItemUse& use) {
  const desktop::ItemSink sink{
      [&](desktop::WireReader& record, std::uint32_t oid) { use(kind.read(record, oid), oid); },
      [&](std::uint32_t oid, desktop::ReadFailure why) {
        run.report.fail(std::string(kind.singular) + " " + std::to_string(oid) + ": " + desktop::spell(why));
      },
  };
  desktop::readItems(session, kind.type, oids, sink);
}

}  // namespace qorv_sync
