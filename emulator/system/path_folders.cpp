#include "emulator/system/path_folders.h"

#include "emulator/system/file_path.h"
#include "platform/errors.h"
#include "platform/files.h"

namespace emulator {
namespace {

std::string describe(DWORD error) {
  if (error == ERROR_FILENAME_EXCED_RANGE) {
    return "a path has at most " + std::to_string(MAX_PATH - 1) + " characters";
  }
  if (error == ERROR_PATH_NOT_FOUND) return "a path begins with a backslash";
  return "not a path that a file can have";
}

}  // namespace

std::optional<std::string> makeFoldersTo(FileTree& files, std::u16string_view path) {
  FilePath parts;
  if (const DWORD error = splitPath(path, parts); error != ERROR_SUCCESS) return describe(error);
  if (parts.name.empty()) return "the root is always there";
  const std::u16string_view folder = path.substr(0, path.rfind(u'\\'));
  if (!folder.empty() && files.makeFolders(folder) != ERROR_SUCCESS) return "leads through a file";
  return std::nullopt;
}

std::optional<std::string> makeModuleFolder(FileTree& files, std::u16string_view path) {
  if (const auto reason = makeFoldersTo(files, path)) return reason;
  const auto existing = files.locate(path).node;
  if (existing && existing->isFolder()) return "is a folder";
  return std::nullopt;
}

}  // namespace emulator
