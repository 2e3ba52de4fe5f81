#include <algorithm>
#include <memory>
#include <set>

#include "apps/qorv_sync/commands.h"
#include "apps/qorv_sync/item_types.h"
#include "desktop/item_delete.h"

namespace qorv_sync {

namespace {

struct Arguments {
  std::string type;
  std::vector<std::uint32_t> oids;
};

void deleteItems(Run& run, const Arguments& arguments) {
  const desktop::ItemKind& kind = kindNamed(arguments.type);
  desktop::Session& session = run.connect();
  const std::set<std::uint32_t> wanted(arguments.oids.begin(), arguments.oids.end());
  const std::vector<std::uint32_t> oids(wanted.begin(), wanted.end());
  const std::vector<std::uint32_t> deleted = desktop::deleteHeldItems(session, kind, oids);
  for (const std::uint32_t oid : oids) {
    if (std::find(deleted.begin(), deleted.end(), oid) != deleted.end()) {
      run.report.say("deleted " + std::to_string(oid));
    } else {
      run.report.fail(arguments.type + " " + std::to_string(oid) + ": the device did not delete it");
    }
  }
  run.report.data()["deleted"] = deleted;
}

}  // namespace

Action defineDelete(CLI::App& command) {
  const auto arguments = std::make_shared<Arguments>();
  command.add_option("TYPE", arguments->type, spellKinds())->required();
  command.add_option("OID", arguments->oids, "The items' identifiers")->required();
  return [arguments](Run& run) { deleteItems(run, *arguments); };
}

}  // namespace qorv_sync
