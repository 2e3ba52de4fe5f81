#include "tests/ink/note_test.h"

#include "emulator/ink/note_file.h"

namespace test {

DWORD NoteTest::place(const std::u16string& name, const std::vector<BYTE>& contents, DWORD attributes) {
  emulator::FileTree& files = device().fileTree;
  const emulator::FilePlace at = files.locate(kNotes + name);
  const emulator::FileNode node = at.node ? *at.node : files.make(at.folder, at.name, FILE_ATTRIBUTE_NORMAL);
  files.truncate(node.oid);
  files.write(node.oid, 0, contents);
  files.setAttributes(node.oid, attributes);
  return node.oid;
}

DWORD NoteTest::placeNote(const std::u16string& name, std::u16string_view text, DWORD attributes) {
  return place(name, emulator::encodeNoteFile(text), attributes);
}

DWORD NoteTest::placeFolder(const std::u16string& name) {
  emulator::FileTree& files = device().fileTree;
  return files.make(files.locate(kNotes + name).folder, name, FILE_ATTRIBUTE_DIRECTORY).oid;
}

void NoteTest::setWritten(DWORD oid, int seconds) {
  device().fileTree.setWritten(oid, hostNow_ + emulator::Ticks{seconds} * 10'000'000);
}

DWORD NoteTest::oidOf(const std::u16string& name) {
  const auto at = device().fileTree.locate(kNotes + name);
  return at.node ? at.node->oid : 0;
}

std::optional<std::u16string> NoteTest::noteText(const std::u16string& name) {
  emulator::FileTree& files = device().fileTree;
  const auto at = files.locate(kNotes + name);
  if (!at.node) return std::nullopt;
  std::vector<BYTE> contents(static_cast<std::size_t>(at.node->size));
  files.read(at.node->oid, 0, contents);
  return emulator::decodeNoteFile(contents);
}

std::vector<std::u16string> NoteTest::names() {
  emulator::FileTree& files = device().fileTree;
  const DWORD folder = files.locate(u"\\My Documents").node->oid;
  std::vector<std::u16string> names;
  for (auto file = files.nextChild(folder, 0); file; file = files.nextChild(folder, file->oid)) {
    names.push_back(file->name);
  }
  return names;
}

}  // namespace test
