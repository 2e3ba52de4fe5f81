// The commands on changes. Notes keep one state for all contracts: what was there at the last commit.
#include <array>

#include "ink/ink_note.h"
#include "ink/note_database.h"
#include "ink/note_files.h"
#include "platform/time.h"
#include "platform/windows.h"

namespace qorv {

namespace {

constexpr BYTE kAdded = 1;
constexpr BYTE kChanged = 2;
constexpr BYTE kDeleted = 3;

/// u32 identifier, u8 kind.
constexpr std::size_t kChangeEntrySize = sizeof(DWORD) + sizeof(BYTE);

}  // namespace

void CCEInkNote::skipContractName() {
  DWORD position = 0;
  skipTypeByte(position);
  ReadString(requestCursor(), position);
}

void CCEInkNote::listChange(DWORD oid, BYTE kind) {
  std::array<BYTE, kChangeEntrySize> entry{};
  storeDword(entry.data(), oid);
  entry.back() = kind;
  if (WriteBytes(entry)) ++listHeader_.count;
}

/// Without a database there is nothing to compare with.
void CCEInkNote::listChangedAndDeleted() {
  const NoteDatabase database(NoteOrder::None);
  if (!database.isOpen()) return;
  database.visit([this](const RecordedNote& recorded) {
    const auto path = pathOfFile(recorded.oid);
    const auto file = path ? lookUpFile(*path) : std::nullopt;
    if (!file) {
      listChange(recorded.oid, kDeleted);
    } else if (CompareFileTime(&file->written, &recorded.written) == 1) {
      listChange(file->oid, kChanged);
    }
  });
}

bool CCEInkNote::listAdded() {
  const NoteDatabase database(NoteOrder::ByIdentifier);
  if (!database.isOpen()) return false;
  forEachNote(WalkEnd::AtAnyFailure, [&](const FoundFile& note) {
    if (!note.isFolder && !database.knows(note.oid)) listChange(note.oid, kAdded);
  });
  return true;
}

bool CCEInkNote::GetChanges() {
  setResponseLength(0);
  skipContractName();
  listHeader_.result = 0;
  writeListHeader();
  listChangedAndDeleted();
  const bool isComplete = listAdded() && !bufferFull();
  listHeader_.result = isComplete ? 1 : 0;
  copyListHeader(0);
  return isComplete;
}

bool CCEInkNote::CommitChanges(bool) {
  skipContractName();
  if (requestCut()) {
    writeStatus(0, kStatusContractFailed);
    return false;
  }
  if (!NoteDatabase::renew()) {
    MessageBoxW(nullptr, u"Failed to create InkNote DB", u"QorvApiMgr", MB_SETFOREGROUND);
    writeStatus(0, kStatusContractFailed);
    return false;
  }
  NoteDatabase database(NoteOrder::None);
  forEachNote(WalkEnd::WhenThereAreNoMore, [&database](const FoundFile& note) {
    if (!note.isReadOnly) database.add(note);
  });
  writeStatus(1, kStatusNone);
  return true;
}

}  // namespace qorv
