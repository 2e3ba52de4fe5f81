// The number that GetLastError gives: one for the device, whose agent runs on one thread.
#pragma once

#include "platform/errors.h"

namespace emulator {

class LastError {
 public:
  DWORD value() const { return value_; }
  void set(DWORD error) { value_ = error; }

  /// Keeps why a call fails and returns false.
  bool fail(DWORD error) {
    value_ = error;
    return false;
  }

 private:
  DWORD value_ = ERROR_SUCCESS;
};

}  // namespace emulator
