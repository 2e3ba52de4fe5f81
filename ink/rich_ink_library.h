// Loads the rich-ink control's library and gives it back.
#pragma once

#include "platform/system.h"

namespace qorv {

/// Where the platform is too old, or has no such library, nothing is loaded, and no window of the control can
/// be made.
class RichInkLibrary {
 public:
  RichInkLibrary();
  RichInkLibrary(const RichInkLibrary&) = delete;
  RichInkLibrary& operator=(const RichInkLibrary&) = delete;
  ~RichInkLibrary();

 private:
  HMODULE library_ = nullptr;
};

}  // namespace qorv
