// The commands on all notes: count, list, delete.
#include "tests/ink/note_test.h"

namespace qorv {
namespace {

using namespace test;

class NoteList : public NoteTest {
 protected:
  Bytes count() { return reply(request(6, kInkNote)); }
  Bytes list() { return reply(request(13, kInkNote)); }
  Bytes deleteAll() { return reply(request(5, kInkNote)); }
  Bytes deleteItems(const std::vector<DWORD>& oids) {
    Bytes asked = request(17, kInkNote).u32(oids.size());
    for (const DWORD oid : oids) asked.u32(oid);
    return reply(asked);
  }

  static Bytes counted(DWORD number) { return Bytes().u8(1).u8(0).u32(number); }
  static Bytes listed(const std::vector<DWORD>& oids) {
    Bytes bytes = Bytes().u8(1).u8(0).u32(oids.size()).u8(0);
    for (const DWORD oid : oids) bytes.u32(oid);
    return bytes;
  }
};

TEST_F(NoteList, isEmptyOnAFreshDevice) {
  EXPECT_EQ(count(), hex("01 00 00000000"));
  EXPECT_EQ(list(), hex("01 00 00000000 00"));
  EXPECT_EQ(deleteAll(), hex("01 00"));
}

TEST_F(NoteList, isEmptyWithoutTheFolder) {
  device().fileTree.remove(device().fileTree.locate(u"\\My Documents").node->oid);
  EXPECT_EQ(count(), hex("01 00 00000000"));
  EXPECT_EQ(list(), hex("01 00 00000000 00"));
}

TEST_F(NoteList, hasTheFilesOfItsFolderAndExtension) {
  const DWORD one = placeNote(u"One.pwi", u"1");
  placeNote(u"Two.txt", u"2");
  const DWORD three = placeNote(u"THREE.PWI", u"3");
  placeFolder(u"Sub");
  placeNote(u"Sub\\Four.pwi", u"4");
  EXPECT_EQ(count(), counted(2));
  EXPECT_EQ(list(), listed({one, three}));
}

TEST_F(NoteList, hasReadOnlyNotesThatAreNotCounted) {
  const DWORD one = placeNote(u"One.pwi", u"1");
  const DWORD two = placeNote(u"Two.pwi", u"2", FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(count(), counted(1));
  EXPECT_EQ(list(), listed({one, two}));
}

TEST_F(NoteList, hasNoFoldersThatAreNamedLikeNotesAlthoughTheyAreCounted) {
  placeFolder(u"Folder.pwi");
  const DWORD one = placeNote(u"One.pwi", u"1");
  EXPECT_EQ(count(), counted(2));
  EXPECT_EQ(list(), listed({one}));
}

TEST_F(NoteList, deletesEveryNoteThatIsNotReadOnly) {
  placeFolder(u"Folder.pwi");
  placeNote(u"One.pwi", u"1");
  placeNote(u"Fixed.pwi", u"2", FILE_ATTRIBUTE_READONLY);
  placeNote(u"Three.pwi", u"3");
  placeNote(u"Other.txt", u"4");
  observeCalls();
  EXPECT_EQ(deleteAll(), hex("01 00"));
  EXPECT_EQ(names(), (std::vector<std::u16string>{u"Folder.pwi", u"Fixed.pwi", u"Other.txt"}));
  EXPECT_EQ(callNames("DeleteFileW").size(), 2u) << "a folder is no file to delete";
}

TEST_F(NoteList, goesOnAfterANoteThatCannotBeDeleted) {
  placeNote(u"One.pwi", u"1");
  placeNote(u"Two.pwi", u"2");
  fault("DeleteFileW#1=32*1");
  EXPECT_EQ(deleteAll(), hex("01 00"));
  EXPECT_EQ(names(), std::vector<std::u16string>{u"One.pwi"});
}

TEST_F(NoteList, deletesTheNotesThatAreNamed) {
  const DWORD one = placeNote(u"One.pwi", u"1");
  const DWORD fixed = placeNote(u"Fixed.pwi", u"2", FILE_ATTRIBUTE_READONLY);
  const DWORD folder = placeFolder(u"Folder.pwi");
  EXPECT_EQ(deleteItems({one, fixed, folder, 0x7FFFFFFF, one}), Bytes().u32(one));
  EXPECT_EQ(names(), (std::vector<std::u16string>{u"Fixed.pwi", u"Folder.pwi"}));
  EXPECT_EQ(deleteItems({}), Bytes());
}

TEST_F(NoteList, deletesNoNoteWithTheCommandForItems) {
  // That command asks the object model, which knows no files.
  const DWORD one = placeNote(u"One.pwi", u"1");
  EXPECT_EQ(reply(request(4, kInkNote).u32(one)), hex("00 03"));
  EXPECT_EQ(names(), std::vector<std::u16string>{u"One.pwi"});
}

TEST_F(NoteList, thatDoesNotFitSaysSo) {
  // The header and 55294 entries of four bytes leave one byte of the buffer.
  for (int i = 0; i < 55295; ++i) {
    device().fileTree.make(device().fileTree.locate(kNotes + u"x").folder,
                           u"n" + std::u16string(1, static_cast<char16_t>(0x4E00 + i % 20000)) +
                               std::u16string(1, static_cast<char16_t>(u'a' + i / 20000)) + u".pwi",
                           FILE_ATTRIBUTE_NORMAL);
  }
  const Bytes answer = list();
  EXPECT_EQ(answer.size(), 7u + 4u * 55294u);
  EXPECT_EQ(answer.slice(0, 7), Bytes().u8(0).u8(0).u32(55294).u8(0));
}

/// Three notes, of which the walk over the first is followed by a failure.
class FailingWalk : public NoteList {
 protected:
  FailingWalk() : first_(placeNote(u"One.pwi", u"1")) {
    placeNote(u"Two.pwi", u"2");
    placeNote(u"Three.pwi", u"3");
  }
  const DWORD first_;
};

TEST_F(FailingWalk, countingAndDeletingGoOnAfterAnyFailureButTheEnd) {
  fault("FindNextFileW#1=5*2");
  EXPECT_EQ(count(), counted(3));
  EXPECT_EQ(deleteAll(), hex("01 00"));
  EXPECT_TRUE(names().empty());
}

TEST_F(FailingWalk, countingAndDeletingEndWhenThereAreNoMore) {
  fault("FindNextFileW#1=18*1");
  EXPECT_EQ(count(), counted(1));
  deleteAll();
  EXPECT_EQ(names(), (std::vector<std::u16string>{u"Two.pwi", u"Three.pwi"}));
}

TEST_F(FailingWalk, listingEndsAtAnyFailure) {
  fault("FindNextFileW#1=5*1");
  EXPECT_EQ(list(), listed({first_}));
}

TEST_F(FailingWalk, aSearchThatAlwaysFailsEndsSomeTime) {
  fault("FindNextFileW=5");
  observeCalls();
  EXPECT_EQ(count(), counted(1));
  EXPECT_EQ(callNames("FindNextFileW").size(), 1000u);
  EXPECT_EQ(callNames("FindClose").size(), 1u);
}

TEST_F(FailingWalk, aSearchThatCannotBeginFindsNothing) {
  fault("FindFirstFileW=3");
  observeCalls();
  EXPECT_EQ(count(), counted(0));
  EXPECT_TRUE(callNames("FindClose").empty());
  EXPECT_EQ(list(), listed({}));
}

}  // namespace
}  // namespace qorv
