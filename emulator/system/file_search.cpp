#include "emulator/system/file_search.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "emulator/system/file_path.h"
#include "platform/errors.h"

namespace emulator {
namespace {

class OpenSearch : public KernelObject {
 public:
  OpenSearch(Oid folder, std::u16string_view pattern)
      : folder_(folder),
        pattern_(pattern),
        hasWildcards_(pattern.find_first_of(u"*?") != std::u16string_view::npos) {}

  std::optional<FileNode> next(FileTree& tree) { return hasWildcards_ ? nextMatch(tree) : onlyMatch(tree); }

 private:
  std::optional<FileNode> nextMatch(FileTree& tree) {
    while (auto node = tree.nextChild(folder_, last_)) {
      last_ = node->oid;
      if (matchesWildcards(node->name, pattern_)) return node;
    }
    return std::nullopt;
  }

  /// A name is looked up, however many files the folder has.
  std::optional<FileNode> onlyMatch(FileTree& tree) {
    if (std::exchange(isDone_, true)) return std::nullopt;
    return tree.child(folder_, pattern_);
  }

  Oid folder_;
  std::u16string pattern_;
  bool hasWildcards_;
  bool isDone_ = false;
  Oid last_ = 0;
};

WIN32_FIND_DATAW describe(const FileNode& node) {
  WIN32_FIND_DATAW data{};
  data.dwFileAttributes = node.attributes;
  data.ftCreationTime = data.ftLastAccessTime = data.ftLastWriteTime = fileTimeOf(node.written);
  data.nFileSizeHigh = static_cast<DWORD>(node.size >> 32);
  data.nFileSizeLow = static_cast<DWORD>(node.size);
  data.dwOID = node.oid;
  // A path is shorter than MAX_PATH, so the name and its NUL fit.
  std::ranges::copy(node.name, data.cFileName);
  return data;
}

}  // namespace

HANDLE FileSearch::findFirst(std::u16string_view pattern, WIN32_FIND_DATAW* data) {
  const auto fail = [this](DWORD error) {
    lastError_.set(error);
    return INVALID_HANDLE_VALUE;
  };
  FilePath path;
  if (const DWORD error = splitPattern(pattern, path); error != ERROR_SUCCESS) return fail(error);
  const std::size_t folderLength = pattern.size() - path.name.size() - 1;
  const FilePlace folder = tree_.locate(folderLength == 0 ? u"\\" : pattern.substr(0, folderLength));
  if (!folder.node || !folder.node->isFolder()) return fail(ERROR_PATH_NOT_FOUND);
  auto search = std::make_unique<OpenSearch>(folder.node->oid, path.name);
  const auto found = search->next(tree_);
  if (!found) return fail(ERROR_NO_MORE_FILES);
  *data = describe(*found);
  return handles_.add<HANDLE>(std::move(search));
}

bool FileSearch::findNext(HANDLE search, WIN32_FIND_DATAW* data) {
  auto* open = handles_.find<OpenSearch>(search);
  if (open == nullptr) return lastError_.fail(ERROR_INVALID_HANDLE);
  const auto found = open->next(tree_);
  if (!found) return lastError_.fail(ERROR_NO_MORE_FILES);
  *data = describe(*found);
  return true;
}

bool FileSearch::close(HANDLE search) {
  return handles_.close<OpenSearch>(search) || lastError_.fail(ERROR_INVALID_HANDLE);
}

}  // namespace emulator
