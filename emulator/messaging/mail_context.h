// What every object of the messaging library works with.
#pragma once

#include <unordered_set>

#include "emulator/messaging/mail_buffers.h"
#include "emulator/messaging/mail_names.h"
#include "emulator/messaging/mailbox.h"
#include "emulator/pim/live_objects.h"

namespace emulator {

struct MailContext {
  Mailbox& mailbox;
  MailNames names;
  MailBuffers buffers;
  LiveObjects live;
  std::unordered_set<IUnknown*> handedOut;  ///< the live objects themselves
};

}  // namespace emulator
