// A message as the device stores it, its recipients and its attachments.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "emulator/messaging/mail_folder.h"
#include "emulator/store/object_store.h"
#include "emulator/system/file_time.h"

namespace emulator {

/// The number of a body's or an attachment's bytes; see MailContents.
using ContentNumber = std::int64_t;

struct MailMessage {
  std::int64_t row = 0;  ///< never used again after the message is gone
  MailFolder folder{};
  Oid id = 0;  ///< any number; known with its folder
  std::u16string sender;
  std::u16string subject;
  std::optional<Ticks> delivered;  ///< UTC, as the other times
  bool isRead = false;
  std::optional<Ticks> start;
  std::optional<Ticks> end;
  std::optional<std::u16string> where;  ///< the named property "PR_SPLUS_WHERE"
  std::optional<ContentNumber> body;    ///< UTF-16, as it was written
};

/// The store holds e-mail only: a recipient's address is of type "SMTP".
struct MailRecipient {
  LONG type = MAPI_TO;  ///< MAPI_TO, MAPI_CC or MAPI_BCC
  std::u16string address;
};

struct MailAttachment {
  std::int64_t message = 0;  ///< its row
  ULONG number = 0;          ///< within the message, from 0 on
  std::u16string name;
  std::optional<ContentNumber> data;
};

}  // namespace emulator
