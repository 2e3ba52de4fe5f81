#include "apps/qorv_sync/items.h"

namespace qorv_sync {

void readItems(Run& run, desktop::Session& session, const desktop::ItemKind& kind,
               std::span<const std::uint32_t> oids, desktop::FilesWanted files, const ItemUse& use) {
  const auto nameOf = [&](std::uint32_t oid) {
    return std::string(kind.singular) + " " + std::to_string(oid) + ": ";
  };
  const desktop::KindSink sink{
      [&](const desktop::Item& item, std::uint32_t oid, const std::vector<std::string>& notes) {
        for (const std::string& note : notes) run.report.remark(nameOf(oid) + note);
        use(item, oid);
      },
      [&](std::uint32_t oid, const std::string& why) { run.report.fail(nameOf(oid) + why); },
      [&](const std::string& what) { run.report.fail(std::string(kind.name) + ": " + what); },
  };
  desktop::readItems(session, kind, oids, files, sink);
}

}  // namespace qorv_sync
