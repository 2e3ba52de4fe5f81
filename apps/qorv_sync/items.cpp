#include "apps/qorv_sync/items.h"

#include "desktop/kind_reader.h"

namespace qorv_sync {

void readItems(Run& run, desktop::Session& session, const desktop::ItemKind& kind,
               std::span<const std::uint32_t> oids, const ItemUse& use) {
  const desktop::KindSink sink{
      use,
      [&](std::uint32_t oid, desktop::ReadFailure why) {
        run.report.fail(std::string(kind.singular) + " " + std::to_string(oid) + ": " + desktop::spell(why));
      },
  };
  desktop::readItems(session, kind, oids, sink);
}

}  // namespace qorv_sync
