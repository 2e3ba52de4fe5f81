// A mail as a record on the wire, in both directions.
//
//   to the device    u32 number of fields, u32 unused, u32 flags, the fields (see message_fields.h)
//   from the device  record header, those of the fields that the message has, the flags among them
#pragma once

#include <vector>

#include "desktop/message.h"
#include "desktop/wire.h"

namespace desktop {

/// The record that makes the device's item the given mail. What the device adds to a message that `isThere`, instead
/// of replacing it, stays out then: recipients and attachments. The attachments' files must be where their paths say.
std::vector<Bytes> messageRecords(const Message& message, bool isThere);

/// Reads the record of the given item; of the attachments it has the paths and names. Throws ProtocolError for any
/// other record.
Message readMessage(WireReader& reader, std::uint32_t oid);

/// The attachments that a record names, as far as it goes; it may be cut short, or lack fields that its header counts.
std::vector<AttachedFile> readAttachments(WireReader record);

/// A record that adds a message that has nothing but the files of these paths.
Bytes carrierRecord(const std::vector<std::u16string>& paths);

}  // namespace desktop
