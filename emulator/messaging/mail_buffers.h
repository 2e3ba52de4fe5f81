// The buffers that the messaging library hands out: property values and row sets, each in one block with
// everything that it points to.
#pragma once

#include <vector>

#include "emulator/messaging/mail_value.h"
#include "emulator/pim/platform_memory.h"

namespace emulator {

/// The values of a row, or of one GetProps, under the tags that were asked for.
struct AnsweredValue {
  PropertyTag asked;
  MailValue value;
};
using AnsweredRow = std::vector<AnsweredValue>;

/// MAPIFreeBuffer frees what the first two make, FreeProws what the third makes, and neither the other's.
class MailBuffers {
 public:
  explicit MailBuffers(PlatformMemory& memory) : memory_(memory) {}

  /// Null when there is no room; so also below.
  SPropValue* values(const AnsweredRow& row);
  SPropTagArray* tags(const std::vector<PropertyTag>& tags);
  SRowSet* rows(const std::vector<AnsweredRow>& rows);

  /// False when it is no such buffer. Null is one.
  bool freeBuffer(void* buffer);
  bool freeRows(SRowSet* rows);

 private:
  PlatformMemory& memory_;
};

}  // namespace emulator
