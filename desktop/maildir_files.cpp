#include "desktop/maildir_files.h"

#include <algorithm>
#include <array>
#include <map>

#include "desktop/input_error.h"
#include "desktop/item_uid.h"
#include "desktop/local_file.h"
#include "desktop/mail_folder.h"
#include "desktop/maildir_name.h"
#include "desktop/mime_library.h"

namespace desktop {

namespace {

namespace fs = std::filesystem;

constexpr std::array kPlaces{"cur", "new", "tmp"};
/// An empty file of that name tells mail programs that a folder is the subfolder of another one.
constexpr const char* kSubfolderMark = "maildirfolder";

fs::path maildirOf(const fs::path& root, MailFolder folder) {
  return root / nameOf(folder).maildir;
}

class Maildir final : public PulledFiles {
 public:
  Maildir(const ItemKind& kind, std::u16string_view identity, fs::path root)
      : kind_(kind), identity_(identity), root_(std::move(root)) {
    try {
      for (const MailFolderName& folder : kMailFolders) make(folder);
      for (const fs::directory_entry& entry : fs::directory_iterator(root_)) {
        if (entry.path().filename().string().starts_with('.')) find(entry.path());
      }
      find(root_);
    } catch (const fs::filesystem_error& error) {
      throw InputError(error.path1().string() + ": " + error.code().message());
    }
  }

  fs::path fileOf(const Item& item, std::uint32_t oid) override {
    const std::string uid = itemUid(kind_, identity_, oid);
    const fs::path file = placeOf(std::get<Message>(item), uid);
    uids_[file] = uid;
    return file;
  }

  bool isOwn(const fs::path&, std::string_view text, std::string_view uid) const override {
    return parseMime(text).id == uid;
  }

  fs::path current(const fs::path& file) const override {
    const auto known = files_.find(uids_.at(file));
    return known == files_.end() ? file : known->second;
  }

  void keep(const fs::path& file) override {
    fs::path& place = files_[uids_.at(file)];
    std::error_code error;
    if (!place.empty() && place != file) fs::remove(place, error);
    place = file;
  }

 private:
  void make(const MailFolderName& folder) const {
    const fs::path maildir = maildirOf(root_, folder.folder);
    for (const char* place : kPlaces) fs::create_directories(maildir / place);
    if (folder.folder != MailFolder::Inbox) writeTextFile(maildir / kSubfolderMark, "");
  }

  void find(const fs::path& maildir) {
    for (const char* place : {"cur", "new"}) {
      if (!fs::is_directory(maildir / place)) continue;
      for (const fs::directory_entry& file : fs::directory_iterator(maildir / place)) {
        const std::string uid = file.is_regular_file() ? uidOf(file.path()) : std::string();
        if (!uid.empty()) files_[uid] = file.path();
      }
    }
  }

  /// Files keep the names that they get here, unless a mail program gives them others: then the Message-ID tells.
  std::string uidOf(const fs::path& file) const {
    // Some programs write the file's size behind the base.
    const std::string base = parseMaildirName(file).base;
    const std::string name = base.substr(0, base.find(','));
    if (oidOfUid(kind_, identity_, name)) return name;
    try {
      return parseMime(readTextFile(file)).id;
    } catch (const InputError&) {
      return {};  // whatever it is, it isn't to be replaced
    }
  }

  /// A message that its user has put into a folder without a counterpart on the device stays there.
  fs::path placeOf(const Message& message, const std::string& uid) const {
    const auto known = files_.find(uid);
    if (known == files_.end()) return nameIn(maildirOf(root_, message.folder), true, {uid, {}}, message);
    MaildirName name = parseMaildirName(known->second);
    if (name.base.starts_with(uid)) name.base = uid;
    const fs::path place = known->second.parent_path();
    const auto folder = folderOfMaildirFile(known->second);
    const bool stays = !folder || nameOf(*folder).folder == nameOf(message.folder).folder;
    const fs::path maildir = stays ? place.parent_path() : maildirOf(root_, message.folder);
    return nameIn(maildir, place.filename() == "new", name, message);
  }

  static fs::path nameIn(const fs::path& maildir, bool isNew, MaildirName name, const Message& message) {
    if (isNew && !message.isRead) return maildir / "new" / name.base;
    std::erase(name.flags, kSeenFlag);
    if (message.isRead) name.flags += kSeenFlag;
    if (message.folder == MailFolder::Drafts && !name.has(kDraftFlag)) name.flags += kDraftFlag;
    return maildir / "cur" / spellMaildirName(name);
  }

  const ItemKind& kind_;
  std::u16string identity_;
  fs::path root_;
  std::map<std::string, fs::path> files_;  ///< by Message-IDs
  std::map<fs::path, std::string> uids_;   ///< of the messages that are being written
};

}  // namespace

std::unique_ptr<PulledFiles> openMaildir(const ItemKind& kind, std::u16string_view deviceIdentity,
                                         const fs::path& folder) {
  return std::make_unique<Maildir>(kind, deviceIdentity, folder);
}

}  // namespace desktop
