#include "emulator/messaging/mailbox.h"

#include <string>

namespace emulator {
namespace {

constexpr std::string_view kColumns =
    "number, folder, id, sender, subject, delivered, is_read, start_date, end_date, place, body";

std::string selection(std::string_view rest) {
  return "SELECT " + std::string(kColumns) + " FROM message WHERE " + std::string(rest);
}

const std::string kByRow = selection("number = ?");
const std::string kById = selection("folder = ? AND id = ?");

MailMessage readMessage(const Cursor& row) {
  return {row.get<std::int64_t>(0),
          row.get<MailFolder>(1),
          row.get<Oid>(2),
          row.get<std::u16string>(3),
          row.get<std::u16string>(4),
          row.get<std::optional<Ticks>>(5),
          row.get<bool>(6),
          row.get<std::optional<Ticks>>(7),
          row.get<std::optional<Ticks>>(8),
          row.get<std::optional<std::u16string>>(9),
          row.get<std::optional<ContentNumber>>(10)};
}

std::optional<MailMessage> firstMessage(Cursor row) {
  if (!row.next()) return std::nullopt;
  return readMessage(row);
}

MailAttachment readAttachment(const Cursor& row) {
  return {row.get<std::int64_t>(0), row.get<ULONG>(1), row.get<std::u16string>(2),
          row.get<std::optional<ContentNumber>>(3)};
}

std::int64_t textBytes(const std::u16string& text) {
  return static_cast<std::int64_t>(text.size() * sizeof(char16_t));
}

}  // namespace

ULONG Mailbox::count(MailFolder folder) {
  Cursor row = store_.connection().query("SELECT COUNT(*) FROM message WHERE folder = ?", folder);
  return row.next() ? row.get<ULONG>(0) : 0;
}

void Mailbox::forEach(MailFolder folder, std::string_view order, std::size_t position, std::size_t limit,
                      const std::function<void(const MailMessage&)>& visit) {
  const std::string sql = selection("folder = ? ORDER BY " + std::string(order) + " LIMIT ? OFFSET ?");
  Cursor row = store_.connection().query(sql, folder, limit, position);
  while (row.next()) visit(readMessage(row));
}

std::optional<MailMessage> Mailbox::find(MailFolder folder, Oid id) {
  return firstMessage(store_.connection().query(kById, folder, id));
}

std::optional<MailMessage> Mailbox::load(std::int64_t row) {
  return firstMessage(store_.connection().query(kByRow, row));
}

MailMessage Mailbox::add(MailFolder folder, std::optional<Oid> id) {
  const bool isNew = !id || !isHeld(*id);
  MailMessage message;
  message.folder = folder;
  message.id = id ? *id : store_.allocate(ObjectKind::Message);
  // 0 can be a message's identifier but no object's.
  if (id && isNew && *id != 0) store_.claim(*id, ObjectKind::Message);
  {
    Cursor row = store_.connection().query(
        "INSERT INTO message (folder, id, sender, subject, is_read) VALUES (?, ?, '', '', 0)"
        " RETURNING number",
        folder, message.id);
    row.next();
    message.row = row.get<std::int64_t>(0);
  }
  notify(isNew ? ItemChangeKind::Added : ItemChangeKind::Changed, message.id);
  return message;
}

bool Mailbox::update(const MailMessage& message) {
  if (!load(message.row)) return false;
  store_.connection().run(
      "UPDATE message SET sender = ?, subject = ?, delivered = ?, is_read = ?, start_date = ?, end_date = ?,"
      " place = ? WHERE number = ?",
      message.sender, message.subject, message.delivered, message.isRead, message.start, message.end,
      message.where, message.row);
  notify(ItemChangeKind::Changed, message.id);
  return true;
}

bool Mailbox::remove(MailFolder folder, Oid id) {
  const auto message = find(folder, id);
  if (!message) return false;
  erase(*message);
  notify(isHeld(id) ? ItemChangeKind::Changed : ItemChangeKind::Deleted, id);
  return true;
}

bool Mailbox::removeEverywhere(Oid id) {
  if (!isHeld(id)) return false;
  for (const MailFolderInfo& folder : kMailFolders) {
    if (const auto message = find(folder.folder, id)) erase(*message);
  }
  notify(ItemChangeKind::Deleted, id);
  return true;
}

std::vector<MailRecipient> Mailbox::recipients(std::int64_t row) {
  std::vector<MailRecipient> recipients;
  Cursor found = store_.connection().query(
      "SELECT type, address FROM message_recipient WHERE message = ? ORDER BY position", row);
  while (found.next()) recipients.push_back({found.get<LONG>(0), found.get<std::u16string>(1)});
  return recipients;
}

void Mailbox::setRecipients(const MailMessage& message, const std::vector<MailRecipient>& recipients) {
  store_.connection().run("DELETE FROM message_recipient WHERE message = ?", message.row);
  for (std::size_t position = 0; position < recipients.size(); ++position) {
    store_.connection().run(
        "INSERT INTO message_recipient (message, position, type, address) VALUES (?, ?, ?, ?)", message.row,
        position, recipients[position].type, recipients[position].address);
  }
  notify(ItemChangeKind::Changed, message.id);
}

std::vector<MailAttachment> Mailbox::attachments(std::int64_t row) {
  std::vector<MailAttachment> attachments;
  Cursor found = store_.connection().query(
      "SELECT message, number, name, data FROM attachment WHERE message = ? ORDER BY number", row);
  while (found.next()) attachments.push_back(readAttachment(found));
  return attachments;
}

std::optional<MailAttachment> Mailbox::attachment(std::int64_t row, ULONG number) {
  Cursor found = store_.connection().query(
      "SELECT message, number, name, data FROM attachment WHERE message = ? AND number = ?", row, number);
  if (!found.next()) return std::nullopt;
  return readAttachment(found);
}

MailAttachment Mailbox::addAttachment(const MailMessage& message) {
  MailAttachment attachment{message.row, 0, {}, {}};
  {
    Cursor row = store_.connection().query(
        "INSERT INTO attachment (message, number, name)"
        " SELECT ?1, COALESCE(MAX(number) + 1, 0), '' FROM attachment WHERE message = ?1 RETURNING number",
        message.row);
    row.next();
    attachment.number = row.get<ULONG>(0);
  }
  notify(ItemChangeKind::Changed, message.id);
  return attachment;
}

void Mailbox::nameAttachment(const MailAttachment& attachment, std::u16string_view name) {
  store_.connection().run("UPDATE attachment SET name = ? WHERE message = ? AND number = ?", name,
                          attachment.message, attachment.number);
  noteChange(attachment.message);
}

void Mailbox::removeAttachment(const MailAttachment& attachment) {
  if (attachment.data) contents_.remove(*attachment.data);
  store_.connection().run("DELETE FROM attachment WHERE message = ? AND number = ?", attachment.message,
                          attachment.number);
  noteChange(attachment.message);
}

ContentNumber Mailbox::bodyOf(const MailMessage& message) {
  if (message.body) return *message.body;
  const ContentNumber content = contents_.make();
  store_.connection().run("UPDATE message SET body = ? WHERE number = ?", content, message.row);
  return content;
}

ContentNumber Mailbox::dataOf(const MailAttachment& attachment) {
  if (attachment.data) return *attachment.data;
  const ContentNumber content = contents_.make();
  store_.connection().run("UPDATE attachment SET data = ? WHERE message = ? AND number = ?", content,
                          attachment.message, attachment.number);
  return content;
}

void Mailbox::removeBody(const MailMessage& message) {
  if (!message.body) return;
  contents_.remove(*message.body);
  store_.connection().run("UPDATE message SET body = NULL WHERE number = ?", message.row);
  notify(ItemChangeKind::Changed, message.id);
}

std::int64_t Mailbox::sizeOf(const MailMessage& message) {
  std::int64_t size = textBytes(message.sender) + textBytes(message.subject);
  if (message.body) size += contents_.size(*message.body).value_or(0);
  for (const MailAttachment& attachment : attachments(message.row)) {
    if (attachment.data) size += contents_.size(*attachment.data).value_or(0);
  }
  return size;
}

void Mailbox::noteChange(std::int64_t row) {
  if (const auto message = load(row)) notify(ItemChangeKind::Changed, message->id);
}

bool Mailbox::isHeld(Oid id) {
  return store_.connection().query("SELECT 1 FROM message WHERE id = ?", id).next();
}

void Mailbox::erase(const MailMessage& message) {
  for (const MailAttachment& attachment : attachments(message.row)) {
    if (attachment.data) contents_.remove(*attachment.data);
  }
  if (message.body) contents_.remove(*message.body);
  store_.connection().run("DELETE FROM message WHERE number = ?", message.row);
  if (message.id != 0 && !isHeld(message.id)) store_.release(message.id);
}

void Mailbox::notify(ItemChangeKind change, Oid id) const {
  if (listener_) listener_({change, ObjectKind::Message, id});
}

}  // namespace emulator
