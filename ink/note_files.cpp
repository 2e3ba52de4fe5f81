#include "ink/note_files.h"

#include "ink/note_path.h"
#include "platform/errors.h"
#include "platform/system.h"
#include "service/property_database.h"

namespace qorv {

namespace {

/// How often a search that fails is asked on: one that always fails must not keep the session for ever.
constexpr int kMaxFailures = 1000;

FoundFile foundFile(const WIN32_FIND_DATAW& data) {
  return {data.dwOID, data.ftLastWriteTime, (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
          (data.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0};
}

}  // namespace

std::optional<FoundFile> lookUpFile(const std::u16string& path) {
  WIN32_FIND_DATAW data{};
  const HANDLE search = FindFirstFileW(path.c_str(), &data);
  if (search == INVALID_HANDLE_VALUE) return std::nullopt;
  FindClose(search);
  return foundFile(data);
}

std::optional<std::u16string> pathOfFile(CEOID oid) {
  CEGUID volume = kSystemVolume;
  CEOIDINFOEX information{};
  if (!objectInformation(volume, oid, information) || information.wObjType != OBJTYPE_FILE)
    return std::nullopt;
  return information.infFile.szFileName;
}

bool eraseFile(CEOID oid) {
  const auto path = pathOfFile(oid);
  return path && DeleteFileW(path->c_str());
}

NoteWalk::NoteWalk(WalkEnd end)
    : end_(end), search_(FindFirstFileW(kNotePattern, &data_)), atEnd_(search_ == INVALID_HANDLE_VALUE) {}

NoteWalk::~NoteWalk() {
  if (search_ != INVALID_HANDLE_VALUE) FindClose(search_);
}

FoundFile NoteWalk::file() const {
  return foundFile(data_);
}

void NoteWalk::next() {
  for (int failures = 0; !FindNextFileW(search_, &data_);) {
    atEnd_ =
        end_ == WalkEnd::AtAnyFailure || GetLastError() == ERROR_NO_MORE_FILES || ++failures == kMaxFailures;
    if (atEnd_) return;
  }
}

}  // namespace qorv
