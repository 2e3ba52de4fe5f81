// A mail record as the desktop sent it, before it becomes a message.
#pragma once

#include "channel/request_reader.h"
#include "platform/time.h"

namespace qorv {

struct PendingMessage {
  DWORD flags = 0;  ///< folder code and read flag
  // Texts that the record doesn't have are empty.
  RequestText sender;
  RequestText to;
  RequestText cc;
  RequestText bcc;
  RequestText subject;
  RequestText body;
  RequestText attachments;
  SYSTEMTIME delivered{};  ///< local; no date when the record has none
};

/// Reads the record at the cursor and moves the position behind it. The request counts as cut short when the
/// record ends too early.
PendingMessage readPendingMessage(RequestReader& request, const BYTE* cursor, DWORD& position);

}  // namespace qorv
