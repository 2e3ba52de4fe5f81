// A message in a snapshot.
#pragma once

#include "emulator/messaging/mailbox.h"
#include "emulator/snapshot/json_node.h"

namespace emulator {

/// An entry of a folder, as it was read: what it does not say is absent.
struct MessageEntry {
  using Addresses = std::optional<std::vector<std::u16string>>;

  MailMessage message;  ///< with the values that the entry gives in place of those it was read over
  std::optional<std::u16string> body;
  Addresses to;
  Addresses cc;
  Addresses bcc;
  std::optional<std::vector<std::pair<std::u16string, Bytes>>> attachments;  ///< name and data
};

/// Reads an entry over the values of the message that its identifier names. Throws SnapshotError.
MessageEntry readMessageEntry(const JsonNode& node, const MailMessage& message);

/// Every property; null for what the message does not have.
Json messageToJson(Mailbox& mailbox, const MailMessage& message);

}  // namespace emulator
