#include <memory>
#include <nlohmann/json.hpp>

#include "apps/qorv_sync/commands.h"
#include "apps/qorv_sync/file_style_option.h"
#include "apps/qorv_sync/item_types.h"
#include "apps/qorv_sync/items.h"
#include "desktop/device_error.h"
#include "desktop/device_info.h"
#include "desktop/item_uid.h"

namespace qorv_sync {

namespace {

struct Arguments {
  std::string type;
  std::uint32_t oid = 0;
  desktop::FileStyle style;
};

void showItem(Run& run, const Arguments& arguments) {
  const desktop::ItemKind& kind = kindNamed(arguments.type);
  desktop::Session& session = run.connect();
  const std::u16string identity = desktop::readIdentity(session);
  const auto show = [&](const desktop::Item& item, std::uint32_t oid) {
    run.report.data()[kind.singular] = kind.toJson(item);
    try {
      const std::string text = kind.fileText(item, desktop::itemUid(kind, identity, oid), arguments.style);
      run.report.print(text);
      run.report.data()[kind.format.name] = text;
    } catch (const desktop::DeviceRefusal& refusal) {
      run.report.fail(std::string(kind.singular) + " " + std::to_string(oid) + ": " + refusal.what());
    }
  };
  readItems(run, session, kind, std::span(&arguments.oid, 1), desktop::FilesWanted::Yes, show);
}

}  // namespace

Action defineShow(CLI::App& command) {
  const auto arguments = std::make_shared<Arguments>();
  command.add_option("TYPE", arguments->type, spellKinds())->required();
  command.add_option("OID", arguments->oid, "The item's identifier")->required();
  addStyleOption(command, arguments->style);
  return [arguments](Run& run) { showItem(run, *arguments); };
}

}  // namespace qorv_sync
