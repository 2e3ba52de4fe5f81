// The commands on all notes: count, list and delete; and the deletion of one.
#include "ink/ink_note.h"

#include "ink/note_files.h"

namespace qorv {

CCEInkNote::CCEInkNote() : CQorvApiBase({kNoDefaultFolder, DataType::InkNote, nullptr}) {}

bool CCEInkNote::DeleteItemByOid(DataType, DWORD oid) {
  return eraseFile(oid);
}

bool CCEInkNote::DeleteAllItems() {
  DWORD position = 0;
  skipTypeByte(position);
  forEachNote(WalkEnd::WhenThereAreNoMore, [this](const FoundFile& note) {
    if (!note.isReadOnly) DeleteItemByOid(dataType(), note.oid);
  });
  writeStatus(1, kStatusNone);
  return true;
}

bool CCEInkNote::CountItems() {
  DWORD position = 0;
  skipTypeByte(position);
  DWORD count = 0;
  // Kept: a folder that is named like a note is counted, although no list has it.
  forEachNote(WalkEnd::WhenThereAreNoMore, [&count](const FoundFile& note) {
    if (!note.isReadOnly) ++count;
  });
  writeStatus(1, kStatusNone);
  WriteDword(count);
  return true;
}

bool CCEInkNote::GetAllItems() {
  setResponseLength(0);
  DWORD position = 0;
  skipTypeByte(position);
  listHeader_.result = 0;
  writeListHeader();
  forEachNote(WalkEnd::AtAnyFailure, [this](const FoundFile& note) {
    if (!note.isFolder && WriteDword(note.oid)) ++listHeader_.count;
  });
  // Nobody shall take a part for the whole.
  listHeader_.result = bufferFull() ? 0 : 1;
  copyListHeader(0);
  return listHeader_.result != 0;
}

}  // namespace qorv
