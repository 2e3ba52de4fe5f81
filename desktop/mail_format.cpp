// The formats of files that mails are kept in: one a file, mailboxes, and the files of a Maildir.
#include "desktop/file_format.h"
#include "desktop/item_refused.h"
#include "desktop/mail_read.h"
#include "desktop/maildir_name.h"
#include "desktop/mbox.h"

namespace desktop {

namespace {

FileItem itemOf(MailText mail, const std::string& fileName) {
  return {fileName, std::move(mail.uid), std::move(mail.message), std::move(mail.notes)};
}

void readInto(FileItems& result, std::string_view text, const std::string& fileName,
              const std::string& where) {
  try {
    result.items.push_back(itemOf(readMail(text), fileName));
  } catch (const ItemRefused& refusal) {
    result.problems.push_back({where, refusal.what()});
  }
}

FileItems readMailFile(std::string_view text, const std::string& fileName) {
  FileItems result;
  readInto(result, text, fileName, fileName);
  return result;
}

FileItems readMbox(std::string_view text, const std::string& fileName) {
  FileItems result;
  const std::vector<MboxEntry> entries = entriesOfMbox(text);
  for (const MboxEntry& entry : entries) {
    readInto(result, entry.text, fileName, fileName + ":" + std::to_string(entry.line));
  }
  if (entries.empty() && !text.empty())
    result.problems.push_back({fileName, "not a mailbox: no line begins with \"From \""});
  return result;
}

FileItems readMaildirFile(std::string_view text, const std::string& fileName) {
  if (isDiscarded(fileName)) return {};
  FileItems result = readMailFile(text, fileName);
  for (FileItem& item : result.items) {
    Message& message = std::get<Message>(item.item);
    const auto folder = folderOfMaildirFile(fileName);
    if (!folder) item.notes.emplace_back("the device has no such folder: it goes to the Inbox");
    message.folder = folder.value_or(MailFolder::Inbox);
    message.isRead = parseMaildirName(fileName).has(kSeenFlag);
  }
  return result;
}

}  // namespace

const FileFormat kMailFormat{.name = "mail", .extension = ".eml", .read = readMailFile};
const FileFormat kMboxFormat{.name = "mbox", .extension = ".mbox", .beginning = "From ", .read = readMbox};
const FileFormat kMaildirFormat{.name = "maildir", .isPlaced = isMaildirFile, .read = readMaildirFile};

}  // namespace desktop
