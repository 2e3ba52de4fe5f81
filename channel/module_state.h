// The few things that live as long as the loaded module.
#pragma once

#include <array>
#include <memory>

#include "channel/outlook.h"
#include "channel/wire.h"

namespace qorv {

/// Which data types were listed in full since their last change list or commit. The flags live across
/// sessions.
class FullListingFlags {
 public:
  [[nodiscard]] bool isSet(DataType type) const { return flags_[index(type)]; }
  void set(DataType type) { flags_[index(type)] = true; }
  void clear(DataType type) { flags_[index(type)] = false; }

 private:
  static std::size_t index(DataType type) { return static_cast<std::size_t>(type) - 1; }

  std::array<bool, kDataTypes> flags_{};
};

struct ModuleState {
  HMODULE module = nullptr;           ///< stored at process attach
  std::unique_ptr<COutlook> session;  ///< set while a session runs, and after a failed log-on
  FullListingFlags fullListings;
};

ModuleState& moduleState();

}  // namespace qorv
