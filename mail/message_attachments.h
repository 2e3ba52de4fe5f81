// A message's attachments, which travel as files in the device's temporary folder.
#pragma once

#include "channel/reply_writer.h"
#include "platform/messaging.h"

namespace qorv {

/// Stores the data of the message's first 255 attachments in temporary files, and appends their list as a
/// field when there is an attachment at all: path "\n" name "\n" for each. One whose data can't be read or
/// stored is left out of the list. The files are the desktop's to fetch and to remove.
void writeAttachments(IMessage& message, ReplyWriter& reply);

/// Gives the message the attachments of a list (attachment_list.h). A file is removed when all of it was
/// taken; an attachment whose file can't be read stays without data, and the next one goes on.
void addAttachments(IMessage& message, LPCWSTR list);

}  // namespace qorv
