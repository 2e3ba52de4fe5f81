// What is known about mail.
#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

#include "desktop/item_kind.h"
#include "desktop/item_text.h"
#include "desktop/local_time.h"
#include "desktop/mail_folder.h"
#include "desktop/mail_read.h"
#include "desktop/mail_write.h"
#include "desktop/maildir_files.h"
#include "desktop/message_fields.h"
#include "desktop/message_record.h"
#include "desktop/record_json.h"
#include "desktop/text.h"

namespace desktop {

namespace {

constexpr std::array kColumns{"DATE", "FOLDER", "FROM", "SUBJECT"};
constexpr auto kLayouts = messageLayouts();

/// More attachments than these the device holds and doesn't give.
constexpr std::size_t kMostListed = 255;

const Message& messageIn(const Item& item) {
  return std::get<Message>(item);
}

Item read(WireReader& record, std::uint32_t oid) {
  return readMessage(record, oid);
}

std::vector<Bytes> write(const Item& item, bool isThere) {
  return messageRecords(messageIn(item), isThere);
}

std::string spell(const AttachedFile& file) {
  return desktop::quoted(file.name) + " of " + std::to_string(file.data.size()) + " bytes";
}

void compareAttachments(Differences& out, const std::vector<AttachedFile>& sent,
                        const std::vector<AttachedFile>& device) {
  if (device.size() == kMostListed && sent.size() > device.size()) {
    out.push_back(
        {"attachments", std::to_string(sent.size()), "gives the first " + std::to_string(kMostListed)});
    return;
  }
  for (std::size_t i = 0; i < std::max(sent.size(), device.size()); ++i) {
    const std::string name = "attachment " + std::to_string(i + 1);
    if (i >= device.size()) {
      out.push_back({name, spell(sent[i]), "none"});
    } else if (i >= sent.size()) {
      out.push_back({name, "none", spell(device[i])});
    } else if (sent[i].name != device[i].name || sent[i].data.size() != device[i].data.size()) {
      out.push_back({name, spell(sent[i]), spell(device[i])});
    } else if (sent[i].data != device[i].data) {
      out.push_back({name, spell(sent[i]), "as many bytes, others"});
    }
  }
}

/// Both as a file has them: what that can't tell apart is no difference.
std::vector<Difference> compare(const Item& sent, const Item& device) {
  const Message held = readMail(mailText(messageIn(device), "")).message;
  const Message& file = messageIn(sent);
  Differences out;
  compareFields(out, takenMessageFields(), file, held);
  compareValue(out, "read", file.isRead, held.isRead);
  if (file.folder != held.folder)
    out.push_back({"folder", nameOf(file.folder).name, nameOf(held.folder).name});
  compareAttachments(out, file.attachments, held.attachments);
  return out;
}

std::string fileText(const Item& item, const std::string& uid, const FileStyle&) {
  return mailText(messageIn(item), uid);
}

std::u16string title(const Item& item) {
  return messageIn(item).subject;
}

std::vector<std::string> cells(const Item& item) {
  const Message& message = messageIn(item);
  const std::string folder = nameOf(message.folder).name;
  return {spellTime(message.delivered), folder + (message.isRead ? "" : ", unread"),
          toUtf8(asOneLine(message.sender)), toUtf8(asOneLine(message.subject))};
}

nlohmann::json toJson(const Item& item) {
  const Message& message = messageIn(item);
  nlohmann::json json{{"oid", message.oid}};
  addFields(json, kMessageFields, message);
  json["folder"] = nameOf(message.folder).name;
  json["read"] = message.isRead;
  json["attachments"] = nlohmann::json::array();
  for (const AttachedFile& file : message.attachments) json["attachments"].push_back(toUtf8(file.name));
  return json;
}

std::vector<AttachedFile>& filesOf(Item& item) {
  return std::get<Message>(item).attachments;
}

constexpr AccompanyingFiles kFiles{.of = filesOf, .inPart = readAttachments};

}  // namespace

const ItemKind kMailKind{
    .type = ItemType::Mail,
    .name = "mail",
    .singular = "message",
    .plural = "messages",
    .folder = "mail",
    .format = kMailFormat,
    .columns = kColumns,
    .layouts = kLayouts,
    .files = &kFiles,
    .sparesEqual = true,
    .read = read,
    .write = write,
    .compare = compare,
    .fileText = fileText,
    .title = title,
    .cells = cells,
    .toJson = toJson,
    .openFiles = openMaildir,
};

}  // namespace desktop
