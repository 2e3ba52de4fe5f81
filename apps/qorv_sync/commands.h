// The commands of qorv-sync, one row and one function each.
#pragma once

#include <CLI/CLI.hpp>
#include <array>

#include "apps/qorv_sync/run.h"

namespace qorv_sync {

/// Each adds its command's own arguments and gives what is to be done once they are read.
Action defineInfo(CLI::App& command);
Action defineList(CLI::App& command);
Action defineShow(CLI::App& command);
Action defineDump(CLI::App& command);
Action defineChanges(CLI::App& command);
Action definePush(CLI::App& command);
Action definePull(CLI::App& command);
Action defineDelete(CLI::App& command);
Action definePut(CLI::App& command);
Action defineGet(CLI::App& command);
Action defineTrace(CLI::App& command);

struct CommandRow {
  const char* name;
  const char* help;
  Action (*define)(CLI::App& command);
};

inline constexpr std::array kCommands{
    CommandRow{"info", "Show the device's identity, platform level and item counts", defineInfo},
    CommandRow{"list", "List the device's items of a type", defineList},
    CommandRow{"show", "Show one item in its standard format", defineShow},
    CommandRow{"dump", "Show one item's bytes as they travel", defineDump},
    CommandRow{"changes", "List what changed since a contract's last commit", defineChanges},
    CommandRow{"push", "Send standard files to the device", definePush},
    CommandRow{"pull", "Write the device's items as standard files", definePull},
    CommandRow{"delete", "Delete items on the device", defineDelete},
    CommandRow{"put", "Copy a file to the device", definePut},
    CommandRow{"get", "Copy a file from the device", defineGet},
    CommandRow{"trace", "Print the trace messages that arrive from agents", defineTrace},
};

}  // namespace qorv_sync
