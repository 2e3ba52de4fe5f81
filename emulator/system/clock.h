// The device's clock: the host's plus every sleep of the device.
#pragma once

#include <functional>
#include <map>

#include "emulator/store/settings.h"
#include "emulator/system/file_time.h"

namespace emulator {

/// The host's clock, in UTC.
Ticks hostTime();

class Clock {
 public:
  /// Gives UTC. Tests give one of their own.
  using Source = std::function<Ticks()>;
  /// In real time a sleep waits; otherwise it moves the clock on and returns at once.
  enum class Pace { Skipping, RealTime };

  Clock(Settings& settings, Source source, Pace pace);

  /// UTC.
  Ticks now() const { return source_() + offset_; }
  void sleep(DWORD milliseconds);
  /// Does something when so much of the device's time has passed: at once for 0, else at the end of the sleep
  /// that reaches it.
  void after(DWORD milliseconds, std::function<void()> action);
  /// Milliseconds since the device was opened; wraps.
  DWORD tickCount() const;

  /// Takes the sleeps that the device file holds: after a rollback.
  void reload();

 private:
  Ticks savedOffset() const;
  void runDue();

  Settings& settings_;
  Source source_;
  Pace pace_;
  Ticks offset_;
  Ticks opened_;
  std::multimap<Ticks, std::function<void()>> planned_;  ///< by the moment when it is due
};

}  // namespace emulator
