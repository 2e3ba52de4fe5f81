// The platform's file calls: open files with their sharing, positions and last errors.
#pragma once

#include <string_view>

#include "emulator/system/file_sharing.h"
#include "emulator/system/file_tree.h"
#include "emulator/system/handle_table.h"
#include "emulator/system/last_error.h"
#include "platform/files.h"

namespace emulator {

/// The calls behave as `platform/files.h` says. A call that fails leaves its reason as the last error; a call
/// that succeeds leaves the last error alone, but for createFile.
class FileSystem {
 public:
  FileSystem(FileTree& tree, HandleTable& handles, LastError& lastError)
      : tree_(tree), handles_(handles), lastError_(lastError) {}

  HANDLE createFile(std::u16string_view path, DWORD access, DWORD share, DWORD disposition, DWORD attributes);
  bool readFile(HANDLE file, void* buffer, DWORD count, DWORD* bytesRead);
  bool writeFile(HANDLE file, const void* buffer, DWORD count, DWORD* bytesWritten);
  DWORD setFilePointer(HANDLE file, LONG distance, LONG* high, DWORD method);
  bool deleteFile(std::u16string_view path);
  /// All ones when there is nothing at the path.
  DWORD fileAttributes(std::u16string_view path);

 private:
  HANDLE fail(DWORD error);
  HANDLE makeFile(const FilePlace& place, DWORD access, DWORD share, DWORD disposition, DWORD attributes);
  HANDLE openExisting(const FileNode& node, DWORD access, DWORD share, DWORD disposition, DWORD attributes);
  HANDLE handleFor(Oid file, DWORD access, DWORD share);

  FileTree& tree_;
  HandleTable& handles_;
  LastError& lastError_;
  FileSharing sharing_;
};

}  // namespace emulator
