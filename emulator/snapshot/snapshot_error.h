// What is wrong with a snapshot, in one line.
#pragma once

#include <stdexcept>
#include <string>

namespace emulator {

class SnapshotError : public std::runtime_error {
 public:
  /// `where` is the path of the value in the snapshot: `appointments[3].Recurrence.Interval`; empty for the
  /// whole.
  SnapshotError(const std::string& where, const std::string& reason)
      : std::runtime_error(where.empty() ? reason : where + ": " + reason) {}
};

}  // namespace emulator
