// What of a mail's parts the device can hold: one plain text, and files.
#pragma once

#include <string>
#include <vector>

#include "desktop/attached_file.h"
#include "desktop/mime_message.h"

namespace desktop {

struct MailBody {
  std::string text;  ///< UTF-8, lines end in LF
  std::vector<AttachedFile> attachments;
  std::vector<std::string> notes;  ///< what was adapted, one sentence each
};

/// Of alternatives the plain text is taken, else what the HTML says; texts one after another become one. All
/// else, and texts that have a file's name, are attachments.
MailBody bodyOf(const MimePart& content);

}  // namespace desktop
