// qorv-device: a Pocket PC in one file.

#include <array>
#include <iostream>

#include "apps/qorv_device/create_command.h"
#include "apps/qorv_device/dump_command.h"
#include "apps/qorv_device/load_command.h"
#include "apps/qorv_device/one_line.h"
#include "apps/qorv_device/serve_command.h"

using namespace qorv_device;

constexpr std::array kCommands{
    CommandRow{"create", "Make a device", defineCreate},
    CommandRow{"load", "Merge a snapshot into a device, as its user would change it", defineLoad},
    CommandRow{"dump", "Write a device as a snapshot, on standard output", defineDump},
    CommandRow{"serve", "Run the agent on a device and serve desktops", defineServe},
};

int main(int argc, char** argv) {
  CLI::App app("An emulated Pocket PC in one file.", "qorv-device");
  app.require_subcommand(1);
  Action chosen;
  for (const CommandRow& row : kCommands) {
    CLI::App* command = app.add_subcommand(row.name, row.help);
    command->callback([&chosen, action = row.define(*command)] { chosen = action; });
  }
  try {
    app.parse(argc, argv);
    return chosen();
  } catch (const CLI::Success& wish) {
    return app.exit(wish);
  } catch (const std::exception& error) {
    std::cerr << oneLine(error.what()) << '\n';
    return kUnusable;
  }
}
