// A message's recipients: the rows of their table, and the lists that a program hands in.
#pragma once

#include "emulator/messaging/mail_message.h"
#include "emulator/messaging/mail_value.h"

namespace emulator {

/// A recipient and its place among the message's, which is its row's identifier.
struct RecipientRow {
  LONG place;
  MailRecipient recipient;
};

std::span<const ReadableProperty<RecipientRow>> recipientProperties();
std::vector<RecipientRow> recipientRows(const std::vector<MailRecipient>& recipients);

/// What ModifyRecipients does to a list: flags 0 replace it, MODRECIP_ADD appends, MODRECIP_MODIFY and
/// MODRECIP_REMOVE go by the entries' PR_ROWID. A failure changes nothing: E_INVALIDARG for an entry that can't
/// be read, has no address where it needs one, or is neither To, Cc nor Bcc; MAPI_E_NOT_FOUND for an identifier
/// that no row has.
HRESULT modifyRecipients(std::vector<MailRecipient>& recipients, ULONG flags, const ADRLIST* list);

}  // namespace emulator
