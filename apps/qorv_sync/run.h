// One run of a command: its options, its account, and the session that it opens when it needs it.
#pragma once

#include <functional>
#include <optional>

#include "apps/qorv_sync/options.h"
#include "apps/qorv_sync/report.h"
#include "desktop/session.h"

namespace qorv_sync {

class Run {
 public:
  explicit Run(const Options& options) : report(options.json), options_(options) {}

  /// Opens the session; to be called once what can be checked without a device has been checked.
  desktop::Session& connect();

  /// Ends the session, if there is one.
  void end();

  Report report;

 private:
  void watch(const desktop::Exchange& exchange);

  const Options& options_;
  std::optional<desktop::Session> session_;
};

using Action = std::function<void(Run&)>;

/// Runs the action and gives the exit status; whatever goes wrong becomes one line on standard error.
ExitStatus perform(const Options& options, const Action& action);

}  // namespace qorv_sync
