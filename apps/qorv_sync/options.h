// What every command of qorv-sync can be told.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace qorv_sync {

struct Options {
  std::string device;  ///< an address; empty when a command is given
  std::string exec;    ///< a command that serves a device; empty when an address is given
  bool json = false;
  bool verbose = false;
  int timeoutSeconds = 30;
};

/// Adds the options, in front of a command or after it; exactly one command must be given.
void addOptions(CLI::App& app, Options& options);

}  // namespace qorv_sync
