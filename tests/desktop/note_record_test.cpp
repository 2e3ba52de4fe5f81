#include "desktop/note_record.h"

#include <gtest/gtest.h>

#include "desktop/device_error.h"
#include "desktop/item_kind.h"
#include "tests/desktop/wire_bytes.h"

namespace {

using namespace desktop;
using namespace wire_bytes;

// A text travels to the device without its NUL, from the device with it: "AB" is 4 bytes, then 6.
const Bytes kSent = hex("02 00 00 00  01 00 00 00 04 00 00 00 41 00 42 00  02 00 00 00 02 00 00 00 5A 00");
const Bytes kHeld = hex(
    "01 00 21 00 00 01 02  01 00 00 00 06 00 00 00 41 00 42 00 00 00  02 00 00 00 04 00 00 00 5A 00 00 00");
constexpr std::uint32_t kOid = 0x01000021;

TEST(NoteRecord, hasItsNameAndItsContent) {
  EXPECT_EQ(writeNote({0, u"AB", u"Z"}), kSent);
}

TEST(NoteRecord, isReadWithItsName) {
  WireReader reader(kHeld);
  const Note note = readNote(reader, kOid);
  EXPECT_EQ(note.oid, kOid);
  EXPECT_EQ(note.name, u"AB");
  EXPECT_EQ(note.content, u"Z");
}

TEST(NoteRecord, isRefusedCutShortAtAnyByte) {
  for (std::size_t size = 0; size < kHeld.size(); ++size) {
    WireReader reader(BytesView(kHeld).first(size));
    EXPECT_THROW(readNote(reader, kOid), ProtocolError) << size;
  }
}

TEST(NoteRecord, isRefusedOfAnotherNote) {
  WireReader reader(kHeld);
  EXPECT_THROW(readNote(reader, kOid + 1), ProtocolError);
}

TEST(NoteRecord, withoutNameAndContentStandsForNoNote) {
  const ItemKind& kind = kNoteKind;
  EXPECT_TRUE(kind.isMissing(Note{kOid, u"", u""}));
  EXPECT_FALSE(kind.isMissing(Note{kOid, u"A", u""}));
  EXPECT_FALSE(kind.isMissing(Note{kOid, u"", u"Z"}));
}

}  // namespace
