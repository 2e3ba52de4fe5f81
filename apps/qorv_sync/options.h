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

/// Refuses empty values: an argument that is there but empty is mostly a script's variable that was never set.
void refuseEmptyValues(CLI::App& command);

/// What is wrong with the command line, in one line.
std::string explain(const CLI::App& app, const CLI::ParseError& error);

}  // namespace qorv_sync
