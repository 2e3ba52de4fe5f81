// Reading one mail of the mail format.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "desktop/message.h"

namespace desktop {

/// Headers of files that mail programs have no standard for: where the device has the message, and the meeting
/// that it is about.
inline constexpr const char* kFolderHeader = "X-Qorv-Folder";
inline constexpr const char* kPlaceHeader = "X-Qorv-Place";
inline constexpr const char* kStartHeader = "X-Qorv-Start";
inline constexpr const char* kEndHeader = "X-Qorv-End";

/// Mailboxes say in it what was read ("RO") and what wasn't ("O").
inline constexpr const char* kStatusHeader = "Status";

struct MailText {
  std::string uid;  ///< its Message-ID; empty when it has none
  Message message;
  std::vector<std::string> notes;  ///< what was left out or adapted, one sentence each
};

/// Times are those of this computer's clock. Throws ItemRefused when the text has none of a mail's headers.
MailText readMail(std::string_view text);

}  // namespace desktop
