// The note files: found by path, by identifier, and all of them.
#pragma once

#include <optional>
#include <string>

#include "platform/files.h"
#include "platform/property_database.h"

namespace qorv {

/// What a search tells of a file or folder.
struct FoundFile {
  CEOID oid = 0;
  FILETIME written{};
  bool isFolder = false;
  bool isReadOnly = false;
};

/// Nothing when there is neither file nor folder at the path.
std::optional<FoundFile> lookUpFile(const std::u16string& path);

/// The path of a file of the object store; nothing when the identifier is no file's, a folder's included.
std::optional<std::u16string> pathOfFile(CEOID oid);

/// True when the file is gone. A read-only file stays.
bool eraseFile(CEOID oid);

/// When a walk over the notes ends.
enum class WalkEnd {
  AtAnyFailure,
  WhenThereAreNoMore,  ///< any other failure of the search is tried again
};

/// A walk over everything that is named like a note, folders too.
class NoteWalk {
 public:
  explicit NoteWalk(WalkEnd end);
  NoteWalk(const NoteWalk&) = delete;
  NoteWalk& operator=(const NoteWalk&) = delete;
  ~NoteWalk();

  [[nodiscard]] bool atEnd() const { return atEnd_; }
  [[nodiscard]] FoundFile file() const;
  void next();

 private:
  WalkEnd end_;
  WIN32_FIND_DATAW data_{};
  HANDLE search_;
  bool atEnd_;
};

template <typename Visit>
void forEachNote(WalkEnd end, Visit visit) {
  for (NoteWalk walk(end); !walk.atEnd(); walk.next()) visit(walk.file());
}

}  // namespace qorv
