#include "apps/qorv_sync/options.h"

namespace qorv_sync {

namespace {

constexpr int kLongestTimeout = 24 * 60 * 60;

}  // namespace

void addOptions(CLI::App& app, Options& options) {
  CLI::Option* device =
      app.add_option("--device", options.device, "Where the device listens: HOST:PORT or unix:PATH");
  app.add_option("--exec", options.exec, "Command that serves the device on its standard input and output")
      ->excludes(device);
  app.add_flag("--json", options.json, "Print the account as JSON");
  app.add_flag("--verbose", options.verbose, "Tell of every request on standard error");
  app.add_option("--timeout", options.timeoutSeconds, "Seconds to wait for an answer")
      ->check(CLI::Range(1, kLongestTimeout))
      ->capture_default_str();
  app.fallthrough();
  app.require_subcommand(1);
}

void refuseEmptyValues(CLI::App& command) {
  const auto whyNot = [](const std::string& value) {
    return value.empty() ? std::string("must not be empty") : std::string();
  };
  for (CLI::Option* option : command.get_options()) {
    if (option->get_items_expected_max() > 0) option->check(whyNot);
  }
}

std::string explain(const CLI::App& app, const CLI::ParseError& error) {
  if (!app.get_subcommands().empty() || dynamic_cast<const CLI::RequiredError*>(&error) == nullptr) {
    return error.what();
  }
  for (const std::string& word : app.remaining()) {
    if (!word.starts_with('-')) return "'" + word + "' is no command";
  }
  return error.what();
}

}  // namespace qorv_sync
