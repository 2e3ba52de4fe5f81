#include "apps/qorv_sync/commands.h"
#include "desktop/device_info.h"
#include "desktop/item_kind.h"
#include "desktop/item_reader.h"
#include "desktop/text.h"

namespace qorv_sync {

namespace {

void sayRow(Report& report, std::string name, const std::string& value) {
  constexpr std::size_t kNameWidth = 14;
  name.resize(std::max(kNameWidth, name.size() + 1), ' ');
  report.say(name + value);
}

void showInfo(Run& run) {
  desktop::Session& session = run.connect();
  const std::string identity = desktop::toUtf8(desktop::readIdentity(session));
  const bool hasNotes = desktop::supportsNotes(session);
  sayRow(run.report, "identity", identity.empty() ? "none" : identity);
  sayRow(run.report, "ink notes", hasNotes ? "supported" : "not supported by this platform");
  run.report.data() = {{"identity", identity}, {"ink_notes", hasNotes}};
  for (const desktop::ItemKind* kind : desktop::itemKinds()) {
    const std::optional<std::uint32_t> count = desktop::countItems(session, kind->type);
    sayRow(run.report, kind->name, count ? std::to_string(*count) : "not available");
    run.report.data()["counts"][kind->name] = count ? nlohmann::json(*count) : nlohmann::json();
  }
}

}  // namespace

Action defineInfo(CLI::App&) {
  return showInfo;
}

}  // namespace qorv_sync
