// Folders and files of items, as they are given for sending and as they are written.
#pragma once

#include <filesystem>
#include <span>
#include <string_view>

#include "desktop/file_item.h"
#include "desktop/item_kind.h"

namespace desktop {

/// Reads files, and of folders and their folders those files whose names tell a format, in the order of their
/// names; text files only where notes are kept. Throws InputError for the first one that can't be read or is nothing of its format.
FileItems readItemFiles(std::span<const std::filesystem::path> paths);

/// Whether the text of a file has this UID, spelled as the desktop writes it, and no other one.
bool namesOnly(std::string_view text, std::string_view uid);

/// The kind's folder in the given one, made when it isn't there. Throws InputError when it can't be.
std::filesystem::path makeItemFolder(const std::filesystem::path& folder, const ItemKind& kind);

}  // namespace desktop
