#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>

#include "apps/qorv_sync/commands.h"
#include "apps/qorv_sync/item_types.h"
#include "desktop/contracts.h"
#include "desktop/device_error.h"
#include "desktop/text.h"

namespace qorv_sync {

namespace {

struct Arguments {
  std::string type;
  std::string contract;
  bool commit = false;
  bool forget = false;
};

void sayChanges(Report& report, const std::vector<desktop::Change>& changes) {
  if (!changes.empty()) report.say("       OID  CHANGE");
  for (const desktop::Change& change : changes) {
    char oid[16];
    std::snprintf(oid, sizeof oid, "%10u  ", change.oid);
    report.say(oid + desktop::spell(change.kind));
  }
  report.say(std::to_string(changes.size()) + (changes.size() == 1 ? " change" : " changes"));
}

nlohmann::json toJson(const std::vector<desktop::Change>& changes) {
  nlohmann::json json = nlohmann::json::array();
  for (const desktop::Change& change : changes) {
    json.push_back({{"oid", change.oid},
                    {"change", desktop::spell(change.kind)},
                    {"kind", static_cast<int>(change.kind)}});
  }
  return json;
}

void forget(Report& report, desktop::Session& session, desktop::ItemType type, const std::u16string& name) {
  const bool known = desktop::hasContract(session, type, name);
  desktop::deleteContract(session, type, name);
  report.data()["forgotten"] = known;
  if (known) {
    report.say("forgot the contract " + desktop::quoted(name));
  } else {
    report.fail("the device has no contract " + desktop::quoted(name));
  }
}

void list(Report& report, desktop::Session& session, desktop::ItemType type, const std::u16string& name) {
  const bool known = desktop::hasContract(session, type, name);
  report.data()["known"] = known;
  const std::vector<desktop::Change> changes = desktop::listChanges(session, type, name);
  if (!known) {
    report.remark("the device has no contract " + desktop::quoted(name) +
                  " yet: these are all changes that it has on record");
  }
  report.data()["changes"] = toJson(changes);
  sayChanges(report, changes);
}

void listNotes(Report& report, desktop::Session& session, const std::u16string& name) {
  const auto changes = desktop::listNoteChanges(session, name);
  report.data()["known"] = changes.has_value();
  if (!changes) {
    report.remark(
        "the device can't tell which notes changed: they were never committed, or it can't open what it "
        "knows");
  }
  const auto found = changes.value_or(std::vector<desktop::Change>());
  report.data()["changes"] = toJson(found);
  sayChanges(report, found);
}

void commit(Report& report, desktop::Session& session, desktop::ItemType type, const std::u16string& name) {
  report.progress("committing; the device makes sure that nothing changes meanwhile");
  desktop::commitChanges(session, type, name);
  report.data()["committed"] = true;
  report.say("committed to the contract " + desktop::quoted(name));
}

void showChanges(Run& run, const Arguments& arguments) {
  const desktop::ItemType type = kindNamed(arguments.type).type;
  const std::u16string name = desktop::toUtf16(arguments.contract);
  desktop::Session& session = run.connect();
  run.report.data() = {{"type", arguments.type}, {"contract", arguments.contract}};
  if (arguments.forget) return forget(run.report, session, type, name);
  run.report.data()["committed"] = false;
  if (type == desktop::ItemType::Note) {
    listNotes(run.report, session, name);
  } else {
    list(run.report, session, type, name);
  }
  if (arguments.commit) commit(run.report, session, type, name);
}

}  // namespace

Action defineChanges(CLI::App& command) {
  const auto arguments = std::make_shared<Arguments>();
  command.add_option("TYPE", arguments->type, spellKinds())->required();
  command
      .add_option("CONTRACT", arguments->contract,
                  "The name under which the device remembers what you know; one for each type")
      ->required();
  CLI::Option* commit =
      command.add_flag("--commit", arguments->commit,
                       "Make the listed changes old news to the contract, which is made when it isn't there");
  command.add_flag("--forget", arguments->forget, "Delete the contract, list nothing")->excludes(commit);
  return [arguments](Run& run) { showChanges(run, *arguments); };
}

}  // namespace qorv_sync
