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

bool holds(const std::string& text, const std::string& uid) {
  return parseMime(text).id == uid;
}

class Maildir final : public PulledFiles {
 public:
  Maildir(const ItemKind& kind, std::u16string_view identity, fs::path root)
      : kind_(kind), identity_(identity), root_(std::move(root)) {
    try {
      for (const MailFolderName& folder : kMailFolders) open(folder);
    } catch (const fs::filesystem_error& error) {
      throw InputError(error.path1().string() + ": " + error.code().message());
    }
  }

  fs::path fileOf(const Item& item, std::uint32_t oid) override {
    const Message& message = std::get<Message>(item);
    const std::string base = itemUid(kind_, identity_, oid);
    const auto known = files_.find(base);
    const bool isKnown = known != files_.end();
    const fs::path folder = maildirOf(root_, message.folder);
    const bool isNew = isKnown ? known->second.parent_path().filename() == "new" : true;
    if (isNew && !message.isRead) return folder / "new" / base;
    MaildirName name{base, isKnown ? parseMaildirName(known->second).flags : ""};
    std::erase(name.flags, kSeenFlag);
    if (message.isRead) name.flags += kSeenFlag;
    if (message.folder == MailFolder::Drafts && !name.has(kDraftFlag)) name.flags += kDraftFlag;
    return folder / "cur" / spellMaildirName(name);
  }

  bool isOwn(const fs::path&, std::string_view text, std::string_view uid) const override {
    return holds(std::string(text), std::string(uid));
  }

  void keep(const fs::path& file) override {
    fs::path& place = files_[parseMaildirName(file).base];
    if (!place.empty() && place != file && holds(readTextFile(place), parseMaildirName(file).base)) {
      fs::remove(place);
    }
    place = file;
  }

 private:
  void open(const MailFolderName& folder) {
    const fs::path maildir = maildirOf(root_, folder.folder);
    for (const char* place : kPlaces) fs::create_directories(maildir / place);
    if (folder.folder != MailFolder::Inbox) writeTextFile(maildir / kSubfolderMark, "");
    for (const char* place : {"cur", "new"}) {
      for (const fs::directory_entry& file : fs::directory_iterator(maildir / place)) {
        files_[parseMaildirName(file.path()).base] = file.path();
      }
    }
  }

  const ItemKind& kind_;
  std::u16string identity_;
  fs::path root_;
  std::map<std::string, fs::path> files_;  ///< by the names' bases
};

}  // namespace

std::unique_ptr<PulledFiles> openMaildir(const ItemKind& kind, std::u16string_view deviceIdentity,
                                         const fs::path& folder) {
  return std::make_unique<Maildir>(kind, deviceIdentity, folder);
}

}  // namespace desktop
