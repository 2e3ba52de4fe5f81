// The signals that ask a program to stop, as a descriptor that can be waited for.
#pragma once

#include <csignal>

#include "emulator/session/descriptor.h"

namespace emulator {

/// While it lives, the first SIGTERM or SIGINT makes the descriptor readable; the next one ends the program
/// at once. A desktop that goes away is an error of its stream, not a signal. One at a time.
class StopSignals {
 public:
  StopSignals();
  ~StopSignals();
  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;

  int descriptor() const { return readable_.get(); }

 private:
  Descriptor readable_;
  Descriptor writable_;
  struct sigaction oldTerm_ {};
  struct sigaction oldInt_ {};
  struct sigaction oldPipe_ {};
};

}  // namespace emulator
