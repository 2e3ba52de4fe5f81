#include "desktop/message_record.h"

#include <algorithm>

#include "desktop/attachment_list.h"
#include "desktop/device_error.h"
#include "desktop/local_time.h"
#include "desktop/mail_folder.h"
#include "desktop/message_fields.h"

namespace desktop {

namespace {

constexpr std::string_view kSingular = "message";
constexpr std::uint32_t kUnused = 0;

void takeFlags(std::uint32_t flags, Message& message) {
  const std::uint32_t code = flags & ~kMessageIsRead;
  const auto* const known = std::ranges::find_if(kMailFolders, [&](const MailFolderName& folder) {
    return static_cast<std::uint32_t>(folder.folder) == code;
  });
  message.folder = known == kMailFolders.end() ? MailFolder::None : known->folder;
  message.isRead = (flags & kMessageIsRead) != 0;
}

bool readOther(WireReader& reader, std::uint32_t tag, Message& message) {
  if (tag == kMessageFlagsTag) {
    takeFlags(reader.number(), message);
  } else if (tag == kAttachmentsTag) {
    message.attachments = readAttachmentList(reader.text());
  } else {
    return false;
  }
  return true;
}

bool isEmpty(const MessageField& field, const Message& message) {
  return std::visit(Overloaded{
                        [&](MessageField::Text text) { return (message.*text).empty(); },
                        [&](MessageField::Time time) { return isNone(message.*time); },
                        [](auto) { return false; },
                    },
                    field.member);
}

bool isRecipients(const MessageField& field) {
  return field.tag == kToTag || field.tag == kCcTag || field.tag == kBccTag;
}

bool isSent(const MessageField& field, const Message& message, bool isThere) {
  // A time that is none has no spelling; the device keeps what it has.
  const bool isTime = std::holds_alternative<MessageField::Time>(field.member);
  if (isThere) return !isRecipients(field) && !(isTime && isEmpty(field, message));
  // The device takes the Bcc only beside a To, be it an empty one.
  const bool opensBcc = field.tag == kToTag && !message.bcc.empty();
  return opensBcc || !isEmpty(field, message);
}

void writeAttachmentField(WireWriter& writer, const std::vector<AttachedFile>& files) {
  writer.number(kAttachmentsTag);
  writer.text(writeAttachmentList(files));
}

void writeHeader(WireWriter& writer, std::size_t fields, const Message& message) {
  writer.number(static_cast<std::uint32_t>(fields));
  writer.number(kUnused);
  writer.number(static_cast<std::uint32_t>(message.folder) | (message.isRead ? kMessageIsRead : 0));
}

}  // namespace

std::vector<Bytes> messageRecords(const Message& message, bool isThere) {
  std::vector<const MessageField*> fields;
  for (const MessageField& field : takenMessageFields()) {
    if (isSent(field, message, isThere)) fields.push_back(&field);
  }
  const bool hasFiles = !isThere && !message.attachments.empty();
  WireWriter writer;
  writeHeader(writer, fields.size() + (hasFiles ? 1 : 0), message);
  for (const MessageField* field : fields) writeField(writer, *field, message);
  if (hasFiles) writeAttachmentField(writer, message.attachments);
  return {writer.take()};
}

Message readMessage(WireReader& reader, std::uint32_t oid) {
  auto read = readSparseRecord<Message>(reader, kSingular, oid, kMessageFields, readOther);
  return std::move(read.value);
}

std::vector<AttachedFile> readAttachments(WireReader record) {
  Message message;
  try {
    record.raw(kRecordHeaderSize);
    while (message.attachments.empty()) {
      const std::uint32_t tag = record.number();
      const auto* const field = std::find_if(kMessageFields.begin(), kMessageFields.end(),
                                             [&](const MessageField& known) { return known.tag == tag; });
      if (field != kMessageFields.end()) {
        readField(record, *field, kSingular, message);
      } else if (!readOther(record, tag, message)) {
        break;
      }
    }
  } catch (const ProtocolError&) {
    // It ends here.
  }
  return std::move(message.attachments);
}

Bytes carrierRecord(const std::vector<std::u16string>& paths) {
  Message carrier;
  carrier.folder = MailFolder::Drafts;
  carrier.isRead = true;
  for (const std::u16string& path : paths) carrier.attachments.push_back({u"x", {}, path});
  return messageRecords(carrier, false).front();
}

}  // namespace desktop
