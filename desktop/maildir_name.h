// Places and names of the files of a Maildir.
//
//   FOLDER/new/BASE             came in, no program has shown it yet
//   FOLDER/cur/BASE:2,FLAGS     flags are letters in alphabetical order: D draft, S seen, T trashed, ...
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "desktop/message.h"

namespace desktop {

struct MaildirName {
  std::string base;
  std::string flags;

  bool has(char flag) const { return flags.find(flag) != std::string::npos; }
};

inline constexpr char kDraftFlag = 'D';
inline constexpr char kSeenFlag = 'S';

MaildirName parseMaildirName(const std::filesystem::path& file);

/// With those flags only, in their order.
std::string spellMaildirName(const MaildirName& name);

/// Whether the file lies where a Maildir has its messages.
bool isMaildirFile(const std::filesystem::path& file);

/// Whether its owner is about to be rid of it.
bool isDiscarded(const std::filesystem::path& file);

/// The device's folder for such a file; nothing for a Maildir folder that has no counterpart there.
std::optional<MailFolder> folderOfMaildirFile(const std::filesystem::path& file);

}  // namespace desktop
