// Makes or changes a message from a record.
#pragma once

#include "mail/pending_message.h"
#include "platform/messaging.h"

namespace qorv {

/// Sets what the record has and saves. What fails is passed over: the message exists whatever the calls
/// answer.
void fillMessage(IMessage& message, const PendingMessage& pending);

}  // namespace qorv
