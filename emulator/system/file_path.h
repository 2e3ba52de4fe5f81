// Full paths on the device, and the wildcards of a search.
#pragma once

#include <string_view>
#include <vector>

#include "platform/types.h"

namespace emulator {

/// A path taken apart. The root has neither folders nor a name. The parts point into the text.
struct FilePath {
  std::vector<std::u16string_view> folders;
  std::u16string_view name;
};

/// Takes a path apart. ERROR_SUCCESS, or why nothing can have it: ERROR_INVALID_NAME (empty, or a character
/// that no name has), ERROR_FILENAME_EXCED_RANGE, ERROR_PATH_NOT_FOUND (not from the root: there is no
/// current directory).
DWORD splitPath(std::u16string_view text, FilePath& path);

/// As splitPath, for a search: the name may hold wildcards.
DWORD splitPattern(std::u16string_view text, FilePath& path);

/// Whether a name matches, without regard to case: * is any text, ? one character, and *.* everything.
bool matchesWildcards(std::u16string_view name, std::u16string_view pattern);

}  // namespace emulator
