#include "mail/mail.h"

#include "channel/host_context.h"
#include "mail/mail_record.h"
#include "mail/message_attachments.h"
#include "mail/message_reader.h"
#include "mail/message_writer.h"
#include "mail/properties.h"

namespace qorv {

namespace {

/// What a message's number stands for when calls want its identifier: nothing, in the usual size, when there
/// is no such message. The library refuses that.
SBinary identifierOf(MessageIndex& messages, DWORD oid) {
  EntryId* entryId = messages.find(oid);
  return {kEntryIdSize, entryId ? entryId->data() : nullptr};
}

}  // namespace

CCEMail2::CCEMail2() : CQorvApiBase({kNoDefaultFolder, DataType::Mail, &hostContext().mailLog}) {}

bool CCEMail2::DeleteItemByOid(DataType, DWORD oid) {
  MessageIndex& messages = mailbox_.messages();
  if (IMAPIFolder* folder = mailbox_.mainFolder()) {
    SBinary entry = identifierOf(messages, oid);
    ENTRYLIST entries{1, &entry};
    folder->DeleteMessages(&entries, 0, nullptr, 0);
  }
  messages.erase(oid);
  return true;
}

bool CCEMail2::DeleteItem() {
  DWORD position = 0;
  skipTypeByte(position);
  const DWORD oid = ReadDword(requestCursor(), position);
  const bool isWhole = !requestCut();
  if (isWhole) DeleteItemByOid(dataType(), oid);
  writeStatus(isWhole ? 1 : 0, isWhole ? kStatusNone : kStatusRefused);
  return isWhole;
}

bool CCEMail2::DeleteAllItems() {
  DWORD position = 0;
  skipTypeByte(position);
  while (const MessageRecord* record = mailbox_.messages().first()) DeleteItemByOid(dataType(), record->id);
  writeStatus(1, kStatusNone);
  return true;
}

bool CCEMail2::CountItems() {
  DWORD position = 0;
  skipTypeByte(position);
  const ULONG count = mailbox_.countMessages();
  writeStatus(mailbox_.isOpen() ? 1 : 0, mailbox_.isOpen() ? kStatusNone : kStatusRefused);
  WriteDword(count);
  return mailbox_.isOpen();
}

bool CCEMail2::GetAllItems() {
  setResponseLength(0);
  listHeader_.result = 0;
  writeListHeader();
  MessageIndex& messages = mailbox_.messages();
  for (const MessageRecord* record = messages.first(); record && WriteDword(record->id);
       record = messages.next()) {
    ++listHeader_.count;
  }
  if (!mailbox_.isOpen()) listHeader_.status = kStatusRefused;
  // Nobody shall take a part for the whole.
  listHeader_.result = mailbox_.isOpen() && !bufferFull() ? 1 : 0;
  copyListHeader(0);
  return listHeader_.result != 0;
}

bool CCEMail2::ReadItemRecord(IDispatch*, DWORD oid) {
  const DWORD start = beginRecord();
  EntryId* entryId = mailbox_.messages().find(oid);
  if (!entryId) return false;
  const auto opened = openEntry<IMessage>(*mailbox_.store(), {kEntryIdSize, entryId->data()}, 0);
  if (!opened.object) return false;
  MessageReader(*mailbox_.store(), mailbox_.folderIds(), *opened.object, *this).read();
  endRecord(start, oid);
  return true;
}

IMAPIFolder* CCEMail2::folderFor(DWORD flags) const {
  constexpr DWORD kNumberMask = 0xFF;
  if ((flags & folder_code::kDrafts) != 0) return mailbox_.drafts();
  return (flags & kNumberMask) == folder_code::kSentItems ? mailbox_.sentItems() : mailbox_.mainFolder();
}

ComPtr<IMessage> CCEMail2::obtainMessage(IMAPIFolder& folder, DWORD oid) {
  if (oid != 0) {
    return openEntry<IMessage>(folder, identifierOf(mailbox_.messages(), oid), MAPI_MODIFY).object;
  }
  ComPtr<IMessage> message;
  if (FAILED(folder.CreateMessage(nullptr, 0, message.put()))) message.reset();
  return message;
}

bool CCEMail2::WriteItemRecord(IDispatch*, const BYTE* record, DWORD& consumed, ItemReplyHeader& header) {
  DWORD position = 0;
  const PendingMessage pending = readPendingMessage(*this, record, position);
  consumed = position;
  header.status = kStatusNone;
  if (requestCut()) return false;
  IMAPIFolder* folder = folderFor(pending.flags);
  if (!folder) {
    header.status = kStatusRefused;
    return false;
  }
  const ComPtr<IMessage> message = obtainMessage(*folder, header.oid);
  if (!message) return false;
  fillMessage(*message, pending);
  {
    const PropertyValues values(*message, TagArray<1>{.tags = {PR_ENTRYID}});
    const SBinary* entryId = values.findBinary(PR_ENTRYID);
    if (entryId) header.oid = objectId(*entryId).value_or(header.oid);
  }
  if (pending.attachments) addAttachments(*message, pending.attachments.get());
  return true;
}

}  // namespace qorv
