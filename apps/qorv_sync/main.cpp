// qorv-sync: carries contacts, calendars, tasks, notes and files between this computer and a device.

#include <iostream>

#include "apps/qorv_sync/commands.h"

int main(int argc, char** argv) {
  using namespace qorv_sync;
  CLI::App app("Carries contacts, calendars, tasks, notes and files between this computer and a device.",
               "qorv-sync");
  Options options;
  Action chosen;
  addOptions(app, options);
  refuseEmptyValues(app);
  for (const CommandRow& row : kCommands) {
    CLI::App* command = app.add_subcommand(row.name, row.help);
    command->callback([&chosen, action = row.define(*command)] { chosen = action; });
    refuseEmptyValues(*command);
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& wish) {
    return app.exit(wish);
  } catch (const CLI::ParseError& error) {
    std::cerr << "qorv-sync: " << explain(app, error) << '\n';
    return static_cast<int>(ExitStatus::BadInput);
  }
  return static_cast<int>(perform(options, chosen));
}
