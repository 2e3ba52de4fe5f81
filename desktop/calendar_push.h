// Sends calendar entries to a device and checks what became of them.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "desktop/appointment_difference.h"
#include "desktop/calendar_files.h"
#include "desktop/session.h"

namespace desktop {

/// What became of one entry.
struct PushOutcome {
  bool changed =
      false;  ///< an item that the device had, and that the entry's UID names, was changed; else it was added
  std::uint32_t oid = 0;  ///< the device's item; 0 when there is none
  std::string failure;    ///< why there is no item, or none that could be read back; empty when all went well
  std::vector<std::string> notes;  ///< what was adapted to the device
  std::vector<Difference> differences;
};

using PushReport = std::function<void(const CalendarItem& item, const PushOutcome& outcome)>;

/// Sends the entries in batches, reads each item back, and reports each entry in the given order.
void pushCalendar(Session& session, std::span<const CalendarItem> items, const PushReport& report);

}  // namespace desktop
