// The registry counter of a change log: the sequence number of its newest change.
#pragma once

#include <string>

#include "platform/types.h"

namespace qorv {

/// The change recorder may be writing meanwhile. So the counter counts as read only when two reads this many
/// milliseconds apart agree, and the same time passes before anything is tried again.
inline constexpr DWORD kCounterSettleTime = 2000;

/// One hour of such waits, which is longer than any load of a device with changes takes: then what was read
/// last stands. Then the desktop may be told again of changes that it knows already; a session that never
/// ends would cost it the device.
inline constexpr int kMostCounterWaits = 3600 * 1000 / kCounterSettleTime;

/// One counter during one request. Its value's name is the log's own.
class ChangeCounter {
 public:
  explicit ChangeCounter(const std::u16string& logName) : logName_(logName) {}

  /// The counter's settled value; a missing one is 0.
  DWORD read();
  /// Sets it to 0 until it stays there.
  void reset();

 private:
  [[nodiscard]] DWORD readOnce() const;
  void writeZero() const;
  /// Lets the settle time pass. False, at once, when no wait is left.
  bool wait();

  const std::u16string& logName_;
  int waitsLeft_ = kMostCounterWaits;
};

}  // namespace qorv
