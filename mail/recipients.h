// A message's recipients, in and out.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "channel/reply_writer.h"
#include "mail/pending_message.h"
#include "platform/messaging.h"

namespace qorv {

/// Appends the To, Cc and Bcc fields, each only when it has addresses. The message's first 255 recipients
/// count.
void writeRecipients(IMessage& message, ReplyWriter& reply);

/// The addresses of a recipient text. Only ";" separates: a comma belongs to an address, and so do blanks
/// behind it; blanks in front of it do not. Empty addresses are left out.
std::vector<std::u16string_view> splitRecipients(std::u16string_view text);

/// How many addresses memory is taken for: commas count as if they separated, so that there is always enough.
std::size_t mostRecipients(std::u16string_view text);

/// Adds the To, Cc and Bcc recipients of a record, in this order, with one call. Bcc counts only beside To.
/// S_OK when there are none; E_OUTOFMEMORY, and no recipients, when there is no room for the list.
HRESULT addRecipients(IMessage& message, const PendingMessage& pending);

}  // namespace qorv
