#include <gtest/gtest.h>

#include "emulator/ink/note_file.h"

namespace emulator {
namespace {

/// Signature, version 1, two characters, U+0048 and U+20AC: low byte first.
const Bytes kHe{'Q', 'V', 'I', 'N', 'K', 0x0D, 0x0A, 0x1A, 1, 0, 2, 0, 0, 0, 0x48, 0, 0xAC, 0x20};

Bytes changed(std::size_t at, std::uint8_t byte) {
  Bytes file = kHe;
  file[at] = byte;
  return file;
}

TEST(NoteFile, hasASignatureAVersionAndTheText) {
  EXPECT_EQ(encodeNoteFile(u"H\u20AC"), kHe);
  EXPECT_EQ(decodeNoteFile(kHe), u"H\u20AC");
}

TEST(NoteFile, canBeEmpty) {
  const Bytes empty{'Q', 'V', 'I', 'N', 'K', 0x0D, 0x0A, 0x1A, 1, 0, 0, 0, 0, 0};
  EXPECT_EQ(encodeNoteFile(u""), empty);
  EXPECT_EQ(decodeNoteFile(empty), u"");
}

TEST(NoteFile, keepsWhateverCharactersThereAre) {
  const std::u16string text = u"a\r\nb\nc\t\xD800";
  EXPECT_EQ(decodeNoteFile(encodeNoteFile(text)), text);
}

TEST(NoteFile, isRefusedWhenAnyByteOfItsHeadIsAnother) {
  for (std::size_t at = 0; at < 14; ++at) {
    EXPECT_EQ(decodeNoteFile(changed(at, 0x7F)), std::nullopt) << at;
  }
}

TEST(NoteFile, isRefusedWithANulWhereATextEnds) {
  Bytes file = kHe;
  file[14] = 0;
  EXPECT_EQ(decodeNoteFile(file), std::nullopt);
}

TEST(NoteFile, isRefusedWhenItIsCutOrContinued) {
  for (std::size_t size = 0; size < kHe.size(); ++size) {
    EXPECT_EQ(decodeNoteFile(ByteView(kHe).first(size)), std::nullopt) << size;
  }
  Bytes longer = kHe;
  longer.push_back(0);
  EXPECT_EQ(decodeNoteFile(longer), std::nullopt);
  EXPECT_EQ(decodeNoteFile(changed(13, 0x80)), std::nullopt) << "a length that no file has";
}

}  // namespace
}  // namespace emulator
