#include "desktop/maildir_name.h"

#include <algorithm>

#include "desktop/mail_folder.h"

namespace desktop {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kInfo = ":2,";
constexpr char kTrashedFlag = 'T';
constexpr std::string_view kTrash = ".Trash";

bool isMaildir(const fs::path& folder) {
  return fs::is_directory(folder / "cur") && fs::is_directory(folder / "new");
}

fs::path maildirOf(const fs::path& file) {
  return fs::absolute(file).lexically_normal().parent_path().parent_path();
}

}  // namespace

MaildirName parseMaildirName(const fs::path& file) {
  const std::string name = file.filename().string();
  const std::size_t info = name.rfind(kInfo);
  if (info == std::string::npos) return {name, {}};
  return {name.substr(0, info), name.substr(info + kInfo.size())};
}

std::string spellMaildirName(const MaildirName& name) {
  std::string flags = name.flags;
  std::ranges::sort(flags);
  return name.base + std::string(kInfo) + flags;
}

bool isMaildirFile(const fs::path& file) {
  const fs::path place = file.parent_path().filename();
  const bool isHidden = file.filename().string().starts_with('.');
  return !isHidden && (place == "cur" || place == "new") && isMaildir(maildirOf(file));
}

bool isDiscarded(const fs::path& file) {
  return parseMaildirName(file).has(kTrashedFlag) || maildirOf(file).filename() == kTrash;
}

std::optional<MailFolder> folderOfMaildirFile(const fs::path& file) {
  const fs::path maildir = maildirOf(file);
  // Subfolders begin with a dot and lie in the Maildir that is the Inbox's.
  const std::string name = maildir.filename().string();
  if (!name.starts_with('.') || !isMaildir(maildir.parent_path())) return MailFolder::Inbox;
  return mailFolderOfMaildir(name);
}

}  // namespace desktop
