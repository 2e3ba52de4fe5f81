#include "desktop/mail_folder.h"

#include <algorithm>

namespace desktop {

namespace {

struct Alias {
  std::string_view maildir;
  MailFolder folder;
};

constexpr std::array kAliases{
    Alias{".INBOX", MailFolder::Inbox},
    Alias{".Sent Items", MailFolder::SentItems},
    Alias{".Sent Messages", MailFolder::SentItems},
};

}  // namespace

const MailFolderName& nameOf(MailFolder folder) {
  const auto* const found =
      std::ranges::find_if(kMailFolders, [&](const auto& known) { return known.folder == folder; });
  return found == kMailFolders.end() ? kMailFolders.front() : *found;
}

std::optional<MailFolder> mailFolderNamed(std::string_view name) {
  for (const MailFolderName& known : kMailFolders) {
    if (name == known.name) return known.folder;
  }
  return std::nullopt;
}

std::optional<MailFolder> mailFolderOfMaildir(std::string_view subfolder) {
  for (const MailFolderName& known : kMailFolders) {
    if (subfolder == known.maildir) return known.folder;
  }
  for (const Alias& alias : kAliases) {
    if (subfolder == alias.maildir) return alias.folder;
  }
  return std::nullopt;
}

}  // namespace desktop
