#include "emulator/snapshot/message_json.h"

#include <array>
#include <cstring>

#include "emulator/snapshot/fields.h"
#include "emulator/snapshot/time_text.h"
#include "emulator/snapshot/values.h"

namespace emulator {
namespace {

using EntryField = Field<MessageEntry>;

std::u16string textOrEmpty(const JsonNode& node) {
  return node.isNull() ? std::u16string() : readText(node);
}

std::optional<Ticks> timeOrNone(const JsonNode& node) {
  if (node.isNull()) return std::nullopt;
  return readUtc(node);
}

std::vector<std::u16string> readAddresses(const JsonNode& node) {
  std::vector<std::u16string> addresses;
  if (!node.isNull()) {
    node.forEachElement([&](const JsonNode& address) { addresses.push_back(readText(address)); });
  }
  return addresses;
}

using NamedBytes = std::pair<std::u16string, Bytes>;

constexpr std::array kAttachmentFields{
    Field<NamedBytes>{"Name", [](NamedBytes& to, const JsonNode& node) { to.first = textOrEmpty(node); }},
    Field<NamedBytes>{"Data",
                      [](NamedBytes& to, const JsonNode& node) {
                        if (!node.isNull()) to.second = readBytes(node);
                      }},
};

std::vector<NamedBytes> readAttachments(const JsonNode& node) {
  std::vector<NamedBytes> attachments;
  if (node.isNull()) return attachments;
  node.forEachElement([&](const JsonNode& entry) {
    readFields<NamedBytes>(entry, kAttachmentFields, attachments.emplace_back());
  });
  return attachments;
}

constexpr std::array kEntryFields{
    EntryField{"Id", [](MessageEntry&, const JsonNode&) {}},  // names the message itself
    EntryField{"Sender",
               [](MessageEntry& to, const JsonNode& node) { to.message.sender = textOrEmpty(node); }},
    EntryField{"To", [](MessageEntry& to, const JsonNode& node) { to.to = readAddresses(node); }},
    EntryField{"Cc", [](MessageEntry& to, const JsonNode& node) { to.cc = readAddresses(node); }},
    EntryField{"Bcc", [](MessageEntry& to, const JsonNode& node) { to.bcc = readAddresses(node); }},
    EntryField{"Subject",
               [](MessageEntry& to, const JsonNode& node) { to.message.subject = textOrEmpty(node); }},
    EntryField{"Delivered",
               [](MessageEntry& to, const JsonNode& node) { to.message.delivered = timeOrNone(node); }},
    EntryField{"Read", [](MessageEntry& to,
                          const JsonNode& node) { to.message.isRead = !node.isNull() && node.flag(); }},
    EntryField{"Body", [](MessageEntry& to, const JsonNode& node) { to.body = textOrEmpty(node); }},
    EntryField{"Where",
               [](MessageEntry& to, const JsonNode& node) {
                 to.message.where = node.isNull() ? std::nullopt : std::optional(readText(node));
               }},
    EntryField{"Start", [](MessageEntry& to, const JsonNode& node) { to.message.start = timeOrNone(node); }},
    EntryField{"End", [](MessageEntry& to, const JsonNode& node) { to.message.end = timeOrNone(node); }},
    EntryField{"Attachments",
               [](MessageEntry& to, const JsonNode& node) { to.attachments = readAttachments(node); }},
};

Json timeToJson(const std::optional<Ticks>& time) {
  return time ? Json(utcText(*time)) : Json();
}

Json addressesToJson(const std::vector<MailRecipient>& recipients, LONG type) {
  Json list = Json::array();
  for (const MailRecipient& recipient : recipients) {
    if (recipient.type == type) list.push_back(textToJson(recipient.address));
  }
  return list;
}

/// What was written up to its first NUL.
std::u16string bodyText(Mailbox& mailbox, const MailMessage& message) {
  if (!message.body) return {};
  const Bytes bytes = mailbox.contents().readAll(*message.body);
  std::u16string text(bytes.size() / sizeof(char16_t), u'\0');
  if (!text.empty()) std::memcpy(text.data(), bytes.data(), text.size() * sizeof(char16_t));
  return text.substr(0, text.find(u'\0'));
}

Json attachmentsToJson(Mailbox& mailbox, const MailMessage& message) {
  Json list = Json::array();
  for (const MailAttachment& attachment : mailbox.attachments(message.row)) {
    const Bytes data = attachment.data ? mailbox.contents().readAll(*attachment.data) : Bytes();
    list.push_back(Json::object({{"Name", textToJson(attachment.name)}, {"Data", bytesToJson(data)}}));
  }
  return list;
}

}  // namespace

MessageEntry readMessageEntry(const JsonNode& node, const MailMessage& message) {
  MessageEntry entry;
  entry.message = message;
  readFields<MessageEntry>(node, kEntryFields, entry);
  return entry;
}

Json messageToJson(Mailbox& mailbox, const MailMessage& message) {
  const std::vector<MailRecipient> recipients = mailbox.recipients(message.row);
  return Json::object({{"Id", message.id},
                       {"Sender", textToJson(message.sender)},
                       {"To", addressesToJson(recipients, MAPI_TO)},
                       {"Cc", addressesToJson(recipients, MAPI_CC)},
                       {"Bcc", addressesToJson(recipients, MAPI_BCC)},
                       {"Subject", textToJson(message.subject)},
                       {"Delivered", timeToJson(message.delivered)},
                       {"Read", message.isRead},
                       {"Body", textToJson(bodyText(mailbox, message))},
                       {"Where", message.where ? textToJson(*message.where) : Json()},
                       {"Start", timeToJson(message.start)},
                       {"End", timeToJson(message.end)},
                       {"Attachments", attachmentsToJson(mailbox, message)}});
}

}  // namespace emulator
