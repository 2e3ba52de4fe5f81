// Writes a device's appointments as calendar files.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>

#include "desktop/session.h"

namespace desktop {

struct PullOutcome {
  std::uint32_t oid = 0;
  std::filesystem::path file;
  bool written = false;  ///< false also when the file held the same already
  std::string failure;   ///< empty when all went well
};

using PullReport = std::function<void(const PullOutcome& outcome, std::size_t total)>;

/// Writes each appointment to `OID.ics` in the folder, and reports each. A file of that name is replaced only
/// when it is this device's same appointment; otherwise it stays and the item fails.
void pullCalendar(Session& session, const std::filesystem::path& folder, const PullReport& report);

}  // namespace desktop
