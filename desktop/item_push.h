// Sends items to a device and checks what became of them.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "desktop/file_item.h"
#include "desktop/item_kind.h"
#include "desktop/session.h"

namespace desktop {

/// What became of one item.
struct PushOutcome {
  bool changed =
      false;  ///< one that the device had, and that the file is known by, was changed; else it was added
  bool unchanged = false;  ///< the device has it just so, and nothing was sent
  std::uint32_t oid = 0;   ///< the device's item; 0 when there is none
  std::string failure;  ///< why there is no item, or none that could be read back; empty when all went well
  std::vector<std::string> notes;  ///< what was adapted to the device
  std::vector<Difference> differences;
};

using PushReport = std::function<void(const FileItem& item, const PushOutcome& outcome)>;

/// Sends the items, kind by kind and in batches, reads each back, and reports each; those of one kind in the
/// given order. Those of a kind that the device can't list fail.
void pushItems(Session& session, std::span<const FileItem> items, const PushReport& report);

}  // namespace desktop
