#include <memory>

#include "apps/qorv_sync/commands.h"
#include "desktop/calendar_files.h"
#include "desktop/calendar_pull.h"

namespace qorv_sync {

namespace {

void pull(Run& run, const std::filesystem::path& folder) {
  const std::filesystem::path calendar = desktop::makeCalendarFolder(folder);
  desktop::Session& session = run.connect();
  nlohmann::json& data = run.report.data();
  data = {{"written", nlohmann::json::array()}, {"unchanged", nlohmann::json::array()}};
  std::size_t done = 0;
  desktop::pullCalendar(session, calendar, [&](const desktop::PullOutcome& outcome, std::size_t total) {
    if (!outcome.failure.empty()) {
      run.report.fail("appointment " + std::to_string(outcome.oid) + ": " + outcome.failure);
    } else {
      data[outcome.written ? "written" : "unchanged"].push_back(outcome.file.string());
    }
    if (outcome.written) run.report.say(outcome.file.string());
    run.report.progress("reading " + std::to_string(++done) + " of " + std::to_string(total));
  });
  run.report.say(std::to_string(data["written"].size()) + " written, " +
                 std::to_string(data["unchanged"].size()) + " unchanged");
}

}  // namespace

Action definePull(CLI::App& command) {
  const auto folder = std::make_shared<std::filesystem::path>();
  command.add_option("DIR", *folder, "Where to write; appointments go into its folder 'calendar'")
      ->required();
  return [folder](Run& run) { pull(run, *folder); };
}

}  // namespace qorv_sync
