#include <memory>
#include <nlohmann/json.hpp>

#include "apps/qorv_sync/commands.h"
#include "desktop/item_files.h"
#include "desktop/item_push.h"
#include "desktop/text.h"

namespace qorv_sync {

namespace {

using Paths = std::vector<std::filesystem::path>;

struct Tally {
  std::size_t added = 0;
  std::size_t changed = 0;
  std::size_t unchanged = 0;
  std::size_t failed = 0;
  std::size_t different = 0;
};

void count(Tally& tally, const desktop::PushOutcome& outcome) {
  if (outcome.oid == 0) {
    ++tally.failed;
  } else {
    ++(outcome.unchanged ? tally.unchanged : outcome.changed ? tally.changed : tally.added);
  }
  if (!outcome.differences.empty()) ++tally.different;
}

const char* actionOf(const desktop::PushOutcome& outcome) {
  if (outcome.oid == 0) return "failed";
  if (outcome.unchanged) return "unchanged";
  return outcome.changed ? "changed" : "added";
}

nlohmann::json describe(const desktop::FileItem& item, const desktop::PushOutcome& outcome) {
  const desktop::ItemKind& kind = desktop::kindOf(item.item);
  nlohmann::json json{{"file", item.file},      {"type", kind.name},
                      {"uid", item.uid},        {"subject", desktop::toUtf8(kind.title(item.item))},
                      {"oid", outcome.oid},     {"action", actionOf(outcome)},
                      {"notes", outcome.notes}, {"differences", nlohmann::json::array()}};
  for (const desktop::Difference& difference : outcome.differences) {
    json["differences"].push_back(
        {{"property", difference.property}, {"sent", difference.sent}, {"device", difference.device}});
  }
  return json;
}

void tell(Report& report, const desktop::FileItem& item, const desktop::PushOutcome& outcome) {
  const std::string name =
      item.file + ": " + desktop::quoted(desktop::kindOf(item.item).title(item.item)) + ": ";
  if (outcome.oid != 0) {
    const bool isAdded = !outcome.changed && !outcome.unchanged;
    report.say(name + actionOf(outcome) + (isAdded ? " as " : " ") + std::to_string(outcome.oid));
  }
  for (const std::string& note : outcome.notes) report.say(name + "note: " + note);
  if (!outcome.failure.empty()) report.fail(name + outcome.failure);
  for (const desktop::Difference& difference : outcome.differences) {
    report.fail(name + desktop::spell(difference));
  }
  report.data()["items"].push_back(describe(item, outcome));
}

void sayTally(Report& report, const Tally& tally, std::size_t skipped) {
  std::string line = std::to_string(tally.added) + " added, " + std::to_string(tally.changed) + " changed";
  const auto add = [&](std::size_t number, const char* what) {
    if (number > 0) line += ", " + std::to_string(number) + what;
  };
  add(tally.unchanged, " unchanged");
  add(tally.failed, " failed");
  add(skipped, " skipped");
  add(tally.different, " not held as sent");
  report.say(line);
}

void push(Run& run, const Paths& paths) {
  const desktop::FileItems files = desktop::readItemFiles(paths);
  desktop::Session& session = run.connect();
  run.report.data()["items"] = nlohmann::json::array();
  for (const desktop::FileProblem& problem : files.problems) {
    run.report.fail(problem.where + ": " + problem.what);
  }
  Tally tally;
  std::size_t done = 0;
  desktop::pushItems(session, files.items,
                     [&](const desktop::FileItem& item, const desktop::PushOutcome& outcome) {
                       count(tally, outcome);
                       tell(run.report, item, outcome);
                       run.report.progress("sending " + std::to_string(++done) + " of " +
                                           std::to_string(files.items.size()));
                     });
  sayTally(run.report, tally, files.problems.size());
}

}  // namespace

Action definePush(CLI::App& command) {
  const auto paths = std::make_shared<Paths>();
  command.add_option("PATH", *paths, "Standard files, or folders with such files in them")->required();
  return [paths](Run& run) { push(run, *paths); };
}

}  // namespace qorv_sync
