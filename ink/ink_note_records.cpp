// Note records: a note's file as two texts, and back.
#include <optional>

#include "ink/ink_note.h"
#include "ink/ink_state.h"
#include "ink/ink_window.h"
#include "ink/note_files.h"
#include "ink/note_path.h"
#include "service/unique_handle.h"

namespace qorv {

namespace {

struct NoteTexts {
  std::u16string name;
  std::optional<std::u16string> content;  ///< nothing when the file can't be opened
};

/// Nothing when the platform can't convert notes.
std::optional<NoteTexts> readNote(CEOID oid) {
  UniqueHandle file;  // before the window, which is to be gone when the file is closed
  InkWindow window;
  if (!window) return std::nullopt;
  const auto path = pathOfFile(oid);
  if (!path) return NoteTexts();
  file = UniqueHandle(CreateFileW(path->c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file) return NoteTexts{noteNameOf(*path), std::nullopt};
  window.load(file.get());
  return NoteTexts{noteNameOf(*path), window.text()};
}

/// A path where there is nothing yet.
std::u16string freePath(std::u16string_view noteName) {
  DWORD& counter = inkState().nameCounter;
  const std::u16string fileName = fileNameFor(noteName);
  std::u16string path = fileName.empty() ? unnamedNotePath(counter++) : notePath(fileName);
  while (lookUpFile(path)) path = numberedNotePath(fileName, counter++);
  return path;
}

/// Where a note is to be written. A note that gets another name leaves its old place; without a name, and
/// with the name that it has, it stays where it is.
std::u16string pathFor(CEOID oid, std::u16string_view name) {
  const auto old = oid != 0 ? pathOfFile(oid) : std::nullopt;
  if (!old) return freePath(name);
  if (name.empty() || name == noteNameOf(*old)) return *old;
  // What can't be written must not cost the note that is there.
  std::u16string renamed = notePath(fileNameFor(name));
  if (!canBeFile(renamed)) return renamed;
  eraseFile(oid);
  return freePath(name);
}

}  // namespace

struct CCEInkNote::Record {
  RequestText name;
  RequestText content;

  [[nodiscard]] std::u16string nameText() const { return name ? name.get() : u""; }
  /// A note without content says its name.
  [[nodiscard]] std::u16string contentText() const { return content ? content.get() : nameText(); }
};

CCEInkNote::Record CCEInkNote::readRecord(const BYTE* record, DWORD& position) {
  Record note;
  const DWORD count = ReadDword(record, position);
  for (DWORD i = 0; i < count && !requestCut(); ++i) {
    const DWORD tag = ReadDword(record, position);
    if (tag == note_tag::kName) note.name = ReadString(record, position);
    if (tag == note_tag::kContent) note.content = ReadString(record, position);
  }
  return note;
}

bool CCEInkNote::ReadItemRecord(IDispatch*, DWORD oid) {
  const DWORD start = beginRecord();
  const auto note = readNote(oid);
  if (!note) return false;
  WriteTaggedString(note_tag::kName, note->name.c_str());
  WriteTaggedString(note_tag::kContent, note->content.value_or(u"").c_str());
  endRecord(start, oid);
  return note->content.has_value();
}

bool CCEInkNote::WriteItemRecord(IDispatch*, const BYTE* record, DWORD& consumed, ItemReplyHeader& header) {
  consumed = 0;
  const Record note = readRecord(record, consumed);
  if (requestCut()) return false;
  InkWindow window;
  if (!window) return false;
  const std::u16string path = pathFor(header.oid, note.nameText());
  window.setText(note.contentText());
  window.save(path);
  // Kept: a file that could not be written is no failure; the identifier stays what it was then.
  if (const auto file = lookUpFile(path); file && !file->isFolder) header.oid = file->oid;
  return true;
}

}  // namespace qorv
