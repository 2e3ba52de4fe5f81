// Writes a device's items as standard files.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "desktop/item_kind.h"
#include "desktop/session.h"

namespace desktop {

struct PullOutcome {
  std::uint32_t oid = 0;
  std::filesystem::path file;      ///< empty when the item could not be read
  bool written = false;            ///< false also when the file held the same already
  std::string failure;             ///< empty when all went well
  std::vector<std::string> notes;  ///< what the item lacks, one sentence each
};

/// Where the files go, and in which of their formats' forms.
struct PullTarget {
  std::filesystem::path folder;
  FileStyle style;
};

using PullReport = std::function<void(const PullOutcome& outcome, std::size_t total)>;

/// Writes each item of the kind to a file of its own in the folder, `OID.ics` or the name of a note, and reports
/// each. A file of that name is replaced only when it is this device's same item, and nothing is missing of that;
/// otherwise it stays and the item fails. Throws DeviceRefusal when the device can't list its items, and at the end
/// when it keeps files that accompanied them.
void pullItems(Session& session, const ItemKind& kind, const std::u16string& deviceIdentity,
               const PullTarget& target, const PullReport& report);

}  // namespace desktop
