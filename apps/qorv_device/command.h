// What the subcommands of qorv-device have in common.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <stdexcept>

namespace qorv_device {

/// The program's exit statuses; 1 is the agent's own failure in `serve`.
inline constexpr int kSuccess = 0;
inline constexpr int kUnusable = 2;  ///< the command line, the device or the snapshot

/// What ends a command with kUnusable: one line that says what and where.
class Unusable : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Does the command's work, once the command line is read, and gives the exit status.
using Action = std::function<int()>;

struct CommandRow {
  const char* name;
  const char* help;
  /// Adds the command's own arguments and gives what is to be done once they are read.
  Action (*define)(CLI::App& command);
};

}  // namespace qorv_device
