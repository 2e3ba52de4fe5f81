// The device's messages as its own programs handle them: plain values, and a word to whoever records changes.
#pragma once

#include <functional>
#include <vector>

#include "emulator/messaging/mail_contents.h"
#include "emulator/messaging/mail_message.h"
#include "emulator/pim/pim_items.h"

namespace emulator {

/// Every change is effective at once. Failures of the device file are StoreErrors.
class Mailbox {
 public:
  explicit Mailbox(ObjectStore& store) : store_(store), contents_(store.connection()) {}

  /// Hears of every change after it was made, under the message's identifier. An identifier that stands in two
  /// folders is one item: it is added with the first message and deleted with the last.
  void setListener(PimItems::Listener listener) { listener_ = std::move(listener); }

  ULONG count(MailFolder folder);
  /// A folder's messages from a position on, at most `limit`, as they arrived or in another order of the SQL
  /// columns.
  void forEach(MailFolder folder, std::string_view order, std::size_t position, std::size_t limit,
               const std::function<void(const MailMessage&)>& visit);
  std::optional<MailMessage> find(MailFolder folder, Oid id);
  std::optional<MailMessage> load(std::int64_t row);

  /// A new, empty message: under an identifier that the folder does not have and no other kind of object
  /// holds, or under the next free one.
  MailMessage add(MailFolder folder, std::optional<Oid> id = std::nullopt);
  /// Stores everything but the body. False when the message is gone.
  bool update(const MailMessage& message);
  bool remove(MailFolder folder, Oid id);
  /// From every folder; whether there was one.
  bool removeEverywhere(Oid id);

  std::vector<MailRecipient> recipients(std::int64_t row);
  void setRecipients(const MailMessage& message, const std::vector<MailRecipient>& recipients);

  std::vector<MailAttachment> attachments(std::int64_t row);
  std::optional<MailAttachment> attachment(std::int64_t row, ULONG number);
  MailAttachment addAttachment(const MailMessage& message);
  void nameAttachment(const MailAttachment& attachment, std::u16string_view name);
  void removeAttachment(const MailAttachment& attachment);

  /// The content of a body or attachment; made, empty, when there was none.
  ContentNumber bodyOf(const MailMessage& message);
  ContentNumber dataOf(const MailAttachment& attachment);
  void removeBody(const MailMessage& message);
  MailContents& contents() { return contents_; }
  /// Bytes of texts, body and attachments.
  std::int64_t sizeOf(const MailMessage& message);

  /// Somebody wrote into a content of the message.
  void noteChange(std::int64_t row);

 private:
  bool isHeld(Oid id);
  void erase(const MailMessage& message);
  void notify(ItemChangeKind change, Oid id) const;

  ObjectStore& store_;
  MailContents contents_;
  PimItems::Listener listener_;
};

}  // namespace emulator
