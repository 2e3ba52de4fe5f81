// The Maildir that pulled mail is kept in.
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include "desktop/pulled_files.h"

namespace desktop {

/// The folder is the Inbox's Maildir and has those of the other folders in it, made when they aren't there. A message
/// is known by its Message-ID, which is its UID, wherever mail programs have put its file and however they call it; when it
/// was read, or moved on the device, its file moves. Marks that mail
/// programs gave the file stay, except whether it was seen. Throws InputError when the folders can't be made or read.
std::unique_ptr<PulledFiles> openMaildir(const ItemKind& kind, std::u16string_view deviceIdentity,
                                         const std::filesystem::path& folder);

}  // namespace desktop
