#include "desktop/kind_reader.h"

#include "desktop/device_info.h"

namespace desktop {

void readItems(Session& session, const ItemKind& kind, std::span<const std::uint32_t> oids,
               const KindSink& sink) {
  if (kind.type == ItemType::Note && !oids.empty() && !supportsNotes(session)) {
    // Such a device lists its notes but sends no records of them.
    for (const std::uint32_t oid : oids) sink.failure(oid, ReadFailure::NotSupported);
    return;
  }
  const ItemSink records{
      [&](WireReader& record, std::uint32_t oid) {
        Item item = kind.read(record, oid);
        if (kind.isMissing != nullptr && kind.isMissing(item)) {
          sink.failure(oid, ReadFailure::NotFound);
        } else {
          sink.item(std::move(item), oid);
        }
      },
      sink.failure,
  };
  readItems(session, kind.type, oids, records);
}

}  // namespace desktop
