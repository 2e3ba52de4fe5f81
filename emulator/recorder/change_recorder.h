// Writes down what becomes of items, whoever changes them, where the agent looks for changes.
#pragma once

#include <map>

#include "emulator/pim/pim_items.h"
#include "emulator/recorder/change_log.h"
#include "emulator/system/configuration.h"

namespace emulator {

/// The logs and counters are those of the installation that the device's module path names; a kind of item
/// without a log is not recorded. What happens to one item within one request is one change: what was added and
/// changed was added. What was added and deleted was deleted, so that no number is left without its record.
class ChangeRecorder {
 public:
  ChangeRecorder(DatabaseStore& databases, Registry& registry, const Configuration& configuration)
      : databases_(databases), registry_(registry), configuration_(configuration) {}

  /// Throws StoreError.
  void record(const ItemChange& change);
  /// What comes now belongs to another request.
  void endRequest();

 private:
  ChangeLog& log(std::u16string_view name);

  DatabaseStore& databases_;
  Registry& registry_;
  const Configuration& configuration_;
  std::map<std::pair<ObjectKind, Oid>, LoggedChange> request_;  ///< what the logs say since the request began
  std::map<std::u16string_view, ChangeLog> logs_;               ///< that the request has written to
};

}  // namespace emulator
