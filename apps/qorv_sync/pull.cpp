#include <map>
#include <memory>
#include <nlohmann/json.hpp>

#include "apps/qorv_sync/commands.h"
#include "apps/qorv_sync/file_style_option.h"
#include "desktop/device_error.h"
#include "desktop/device_info.h"
#include "desktop/item_files.h"
#include "desktop/item_pull.h"

namespace qorv_sync {

namespace {

void pullKind(Run& run, desktop::Session& session, const desktop::ItemKind& kind,
              const std::u16string& identity, const desktop::PullTarget& target) {
  nlohmann::json& data = run.report.data();
  std::size_t done = 0;
  const auto tell = [&](const desktop::PullOutcome& outcome, std::size_t total) {
    if (!outcome.failure.empty()) {
      run.report.fail(std::string(kind.singular) + " " + std::to_string(outcome.oid) + ": " +
                      outcome.failure);
    } else {
      data[outcome.written ? "written" : "unchanged"].push_back(outcome.file.string());
    }
    for (const std::string& note : outcome.notes) {
      run.report.remark(std::string(kind.singular) + " " + std::to_string(outcome.oid) + ": " + note);
    }
    if (outcome.written) run.report.say(outcome.file.string());
    run.report.progress(std::string("reading ") + kind.name + ", " + std::to_string(++done) + " of " +
                        std::to_string(total));
  };
  try {
    desktop::pullItems(session, kind, identity, target, tell);
  } catch (const desktop::DeviceRefusal& refusal) {
    run.report.fail(std::string(kind.name) + ": " + refusal.what());
  }
}

void pull(Run& run, const desktop::PullTarget& target) {
  std::map<const desktop::ItemKind*, desktop::PullTarget> targets;
  for (const desktop::ItemKind* kind : desktop::itemKinds()) {
    targets[kind] = {desktop::makeItemFolder(target.folder, *kind), target.style};
  }
  desktop::Session& session = run.connect();
  nlohmann::json& data = run.report.data();
  data = {{"written", nlohmann::json::array()}, {"unchanged", nlohmann::json::array()}};
  const std::u16string identity = desktop::readIdentity(session);
  for (const desktop::ItemKind* kind : desktop::itemKinds()) {
    pullKind(run, session, *kind, identity, targets[kind]);
  }
  run.report.say(std::to_string(data["written"].size()) + " written, " +
                 std::to_string(data["unchanged"].size()) + " unchanged");
}

/// "appointments go into its folder 'calendar'"
std::string spellFolders() {
  std::string text;
  for (const desktop::ItemKind* kind : desktop::itemKinds()) {
    text +=
        (text.empty() ? "" : ", ") + std::string(kind->name) + " go into its folder '" + kind->folder + "'";
  }
  return text;
}

}  // namespace

Action definePull(CLI::App& command) {
  const auto target = std::make_shared<desktop::PullTarget>();
  command.add_option("DIR", target->folder, "Where to write; " + spellFolders())->required();
  addStyleOption(command, target->style);
  return [target](Run& run) { pull(run, *target); };
}

}  // namespace qorv_sync
