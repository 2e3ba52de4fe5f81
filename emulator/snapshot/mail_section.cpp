// "mail": the messages of each folder, known by folder and identifier.
#include <unordered_set>

#include "emulator/snapshot/message_json.h"
#include "emulator/snapshot/section_handlers.h"
#include "emulator/snapshot/values.h"
#include "emulator/system/utf16.h"

namespace emulator {
namespace {

constexpr std::string_view kIdKey = "Id";

/// The folder of a key; the store's root is none.
const MailFolderInfo* folderOf(std::string_view key) {
  const std::u16string name = toUtf16(key);
  const auto found = std::ranges::find(kMailFolders, name, &MailFolderInfo::name);
  return found == kMailFolders.end() || found->folder == MailFolder::Subtree ? nullptr : &*found;
}

/// The identifier that an entry gives; nothing when it has none, or null.
std::optional<Oid> idOf(const JsonNode& entry) {
  const auto node = entry.member(kIdKey);
  if (!node || node->isNull()) return std::nullopt;
  return readMessageId(*node);
}

/// The message that an entry changes, or a new one.
MailMessage messageOf(Device& device, MailFolder folder, const JsonNode& entry) {
  Mailbox& mailbox = device.messaging.mailbox();
  const auto id = idOf(entry);
  if (!id) return mailbox.add(folder);
  if (auto message = mailbox.find(folder, *id)) return *message;
  const auto holder = device.store.kindOf(*id);
  if (holder && *holder != ObjectKind::Message) refuseHeld(requireMember(entry, kIdKey), *holder);
  return mailbox.add(folder, *id);
}

void replaceBody(Mailbox& mailbox, const MailMessage& message, const std::u16string& body) {
  mailbox.removeBody(message);
  if (body.empty()) return;
  MailMessage without = message;
  without.body.reset();
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(body.data());
  mailbox.contents().write(mailbox.bodyOf(without), 0, ByteView(bytes, body.size() * sizeof(char16_t)));
}

/// The addresses of a type, from the entry or else as they were.
void takeAddresses(std::vector<MailRecipient>& recipients, LONG type, const MessageEntry::Addresses& given,
                   const std::vector<MailRecipient>& before) {
  if (given) {
    for (const std::u16string& address : *given) recipients.push_back({type, address});
    return;
  }
  for (const MailRecipient& recipient : before) {
    if (recipient.type == type) recipients.push_back(recipient);
  }
}

void replaceRecipients(Mailbox& mailbox, const MailMessage& message, const MessageEntry& entry) {
  if (!entry.to && !entry.cc && !entry.bcc) return;
  const std::vector<MailRecipient> before = mailbox.recipients(message.row);
  std::vector<MailRecipient> recipients;
  takeAddresses(recipients, MAPI_TO, entry.to, before);
  takeAddresses(recipients, MAPI_CC, entry.cc, before);
  takeAddresses(recipients, MAPI_BCC, entry.bcc, before);
  mailbox.setRecipients(message, recipients);
}

void replaceAttachments(Mailbox& mailbox, const MailMessage& message, const MessageEntry& entry) {
  if (!entry.attachments) return;
  for (const MailAttachment& attachment : mailbox.attachments(message.row)) {
    mailbox.removeAttachment(attachment);
  }
  for (const auto& [name, data] : *entry.attachments) {
    const MailAttachment attachment = mailbox.addAttachment(message);
    mailbox.nameAttachment(attachment, name);
    mailbox.contents().write(mailbox.dataOf(attachment), 0, data);
  }
}

void loadMessage(Device& device, MailFolder folder, const JsonNode& node) {
  Mailbox& mailbox = device.messaging.mailbox();
  const MessageEntry entry = readMessageEntry(node, messageOf(device, folder, node));
  mailbox.update(entry.message);
  if (entry.body) replaceBody(mailbox, entry.message, *entry.body);
  replaceRecipients(mailbox, entry.message, entry);
  replaceAttachments(mailbox, entry.message, entry);
}

}  // namespace

void reserveMessages(Device& device, const JsonNode& node) {
  node.forEachMember([&](std::string_view, const JsonNode& messages) {
    std::unordered_set<Oid> seen;
    messages.forEachElement([&](const JsonNode& message) {
      const auto id = idOf(message);
      if (!id) return;
      // Another folder may have it as well.
      const bool isFirst = seen.insert(*id).second;
      if (!isFirst) requireMember(message, kIdKey).refuse("identifier of another entry as well");
      if (*id != 0) device.store.reserve(*id);
    });
  });
}

void loadMail(Device& device, const JsonNode& node) {
  node.forEachMember([&](std::string_view key, const JsonNode& messages) {
    const MailFolderInfo* const folder = folderOf(key);
    if (folder == nullptr) messages.refuse("unknown key");
    messages.forEachElement([&](const JsonNode& message) { loadMessage(device, folder->folder, message); });
  });
}

Json dumpMail(Device& device) {
  Mailbox& mailbox = device.messaging.mailbox();
  Json folders = Json::object();
  for (const MailFolderInfo& folder : kMailFolders) {
    if (folder.folder == MailFolder::Subtree) continue;
    Json list = Json::array();
    mailbox.forEach(folder.folder, "number", 0, mailbox.count(folder.folder),
                    [&](const MailMessage& message) { list.push_back(messageToJson(mailbox, message)); });
    folders[toUtf8(folder.name)] = std::move(list);
  }
  return folders;
}

}  // namespace emulator
