// Whether the agent's thread has initialised COM, and how.
#pragma once

#include "platform/errors.h"

namespace emulator {

class ComApartment {
 public:
  /// CoInitializeEx: S_OK, S_FALSE when initialised before, RPC_E_CHANGED_MODE when initialised otherwise.
  HRESULT enter(DWORD mode) {
    if (entries_ > 0 && mode != mode_) return RPC_E_CHANGED_MODE;
    mode_ = mode;
    return entries_++ == 0 ? S_OK : S_FALSE;
  }

  /// CoUninitialize: takes one initialisation back.
  void leave() {
    if (entries_ > 0) --entries_;
  }

 private:
  DWORD mode_ = 0;
  unsigned entries_ = 0;
};

}  // namespace emulator
