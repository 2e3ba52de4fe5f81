// The temporary folder and names for temporary files.
#pragma once

#include <string>
#include <string_view>

#include "emulator/system/clock.h"
#include "emulator/system/file_tree.h"
#include "emulator/system/last_error.h"
#include "emulator/system/registry.h"

namespace emulator {

class TempFiles {
 public:
  TempFiles(FileTree& tree, Registry& registry, const Clock& clock, LastError& lastError)
      : tree_(tree), registry_(registry), clock_(clock), lastError_(lastError) {}

  /// GetTempPathW: the registry's "TempPath" under HKEY_LOCAL_MACHINE\SYSTEM\FileSys, else \temp\. The length
  /// without NUL, 0 with ERROR_PATH_NOT_FOUND when that folder does not exist; when `capacity` has no room
  /// for text and NUL, the room that is needed, and `path` is not touched.
  DWORD tempPath(DWORD capacity, WCHAR* path);

  /// GetTempFileNameW: folder, first three characters of the prefix, number in hexadecimal, ".TMP". With
  /// `unique` 0 the number is a free one that begins with the time, and the file is made. The number, 0 on
  /// failure; `name` has room for MAX_PATH characters and is written on success only.
  UINT tempFileName(std::u16string_view folder, std::u16string_view prefix, UINT unique, WCHAR* name);

 private:
  std::u16string configuredPath();
  UINT makeNumbered(std::u16string_view stem, std::u16string& path);

  FileTree& tree_;
  Registry& registry_;
  const Clock& clock_;
  LastError& lastError_;
};

}  // namespace emulator
