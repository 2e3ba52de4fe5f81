// The folders that lead to a path: made where they are missing, and in words why they can't be.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "emulator/system/file_tree.h"

namespace emulator {

/// Nothing when something can be at the path now. Else why not; some of the folders may have been made.
std::optional<std::string> makeFoldersTo(FileTree& files, std::u16string_view path);

/// As makeFoldersTo, for the full path of the agent's library: no folder may be there.
std::optional<std::string> makeModuleFolder(FileTree& files, std::u16string_view path);

}  // namespace emulator
