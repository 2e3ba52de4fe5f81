// The platform's searches for files: FindFirstFileW and its companions.
#pragma once

#include <string_view>

#include "emulator/system/file_tree.h"
#include "emulator/system/handle_table.h"
#include "emulator/system/last_error.h"
#include "platform/files.h"

namespace emulator {

/// Files and folders are found in the order of their identifiers, which is the order in which they were made.
/// A search goes on where it was when files come or go between its calls. There are no "." and ".." entries.
class FileSearch {
 public:
  FileSearch(FileTree& tree, HandleTable& handles, LastError& lastError)
      : tree_(tree), handles_(handles), lastError_(lastError) {}

  /// *data is filled on success only. A missing folder is ERROR_PATH_NOT_FOUND, a search without a match
  /// ERROR_NO_MORE_FILES.
  HANDLE findFirst(std::u16string_view pattern, WIN32_FIND_DATAW* data);
  bool findNext(HANDLE search, WIN32_FIND_DATAW* data);
  bool close(HANDLE search);

 private:
  FileTree& tree_;
  HandleTable& handles_;
  LastError& lastError_;
};

}  // namespace emulator
