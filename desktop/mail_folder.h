// The device's mail folders by the names that people and mail programs have for them.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "desktop/message.h"

namespace desktop {

struct MailFolderName {
  MailFolder folder;
  const char* name;     ///< as the device shows it
  const char* maildir;  ///< its subfolder in the Maildir, which is itself the Inbox's
};

inline constexpr std::array kMailFolders{
    MailFolderName{MailFolder::Inbox, "Inbox", ""},
    MailFolderName{MailFolder::SentItems, "Sent Items", ".Sent"},
    MailFolderName{MailFolder::Drafts, "Drafts", ".Drafts"},
    MailFolderName{MailFolder::Outbox, "Outbox", ".Outbox"},
};

/// What lies in none of the folders is kept with the Inbox.
const MailFolderName& nameOf(MailFolder folder);

/// Nothing for a name that is none of theirs.
std::optional<MailFolder> mailFolderNamed(std::string_view name);

/// The folder of that subfolder, by the names that mail programs have for it too.
std::optional<MailFolder> mailFolderOfMaildir(std::string_view subfolder);

}  // namespace desktop
