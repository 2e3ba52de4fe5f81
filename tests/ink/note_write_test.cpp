#include "tests/ink/note_test.h"

namespace qorv {
namespace {

using namespace test;

class NoteWrite : public NoteTest {};

TEST_F(NoteWrite, makesANoteFile) {
  const Bytes answer = add(noteRecord(u"Plan", u"Milk\r\nBread"));
  const DWORD oid = oidOf(u"Plan.pwi");
  ASSERT_NE(oid, 0u);
  EXPECT_EQ(answer, written(oid, 7));
  EXPECT_EQ(noteText(u"Plan.pwi"), u"Milk\r\nBread");
}

TEST_F(NoteWrite, byteByByte) {
  const DWORD next = placeNote(u"x.txt", u"") + 1;
  EXPECT_EQ(reply(hex("02 05"                       // add item, note
                      "07000000"                    // the requester's reference
                      "02000000"                    // two fields
                      "01000000 04000000 41004200"  // tag 1, four bytes: AB
                      "02000000 02000000 5A00")),   // tag 2, two bytes: Z
            Bytes().append(hex("01 00")).u32(next).append(hex("07000000 00000000000000000000")));
  EXPECT_EQ(noteText(u"AB.pwi"), u"Z");
}

TEST_F(NoteWrite, goesInWithItsTerminatorAndComesOutWithoutIt) {
  observeCalls();
  add(noteRecord(u"n", u"x"));
  const auto sent = calls("SendMessageW");
  ASSERT_EQ(sent.size(), 2u);
  EXPECT_EQ(sent[0]["args"][1], 0x449);
  EXPECT_EQ(sent[0]["args"][2], 0x11);
  EXPECT_EQ(sent[0]["result"], 1) << "one character";
  EXPECT_EQ(sent[1]["args"][1], 0x44A);
  EXPECT_EQ(sent[1]["args"][2], 0x10802);
  EXPECT_EQ(noteText(u"n.pwi"), u"x");
}

TEST_F(NoteWrite, canBeEmpty) {
  const DWORD oid = add(noteRecord(u"n", u"")).dwordAt(2);
  EXPECT_EQ(noteText(u"n.pwi"), u"");
  EXPECT_EQ(read(oid), readNote(oid, u"n", u""));
}

TEST_F(NoteWrite, comesBackAsItWasSent) {
  for (const std::size_t length : {1u, 2u, 63u, 5000u, 40'000u}) {
    std::u16string text;
    for (std::size_t i = 0; i < length; ++i) text += static_cast<char16_t>(0x20 + i * 31 % 0xD000);
    const std::u16string name(1, static_cast<char16_t>(u'a' + length % 26));
    const DWORD oid = add(noteRecord(name, text)).dwordAt(2);
    EXPECT_EQ(read(oid), readNote(oid, name, text)) << length;
  }
}

TEST_F(NoteWrite, withoutContentSaysItsName) {
  add(record(1).append(textField(1, u"a/b")));
  EXPECT_EQ(noteText(u"a_b.pwi"), u"a/b") << "the name as it was sent";
  add(record(0));
  EXPECT_EQ(noteText(u"Note1.pwi"), u"");
}

TEST_F(NoteWrite, fieldsMayComeInAnyOrderAndAgainAndOthersHaveNoValue) {
  add(record(5)
          .append(textField(2, u"old"))
          .u32(3)  // no tag of a note: the next word is the next tag
          .append(textField(1, u"first"))
          .append(textField(2, u"new"))
          .append(textField(1, u"second")));
  EXPECT_EQ(noteText(u"second.pwi"), u"new");
  EXPECT_EQ(names().size(), 1u);
}

TEST_F(NoteWrite, replacesCharactersThatNoFileNameHas) {
  add(noteRecord(u"a/b.c", u""));
  EXPECT_NE(oidOf(u"a_b_c.pwi"), 0u);
}

TEST_F(NoteWrite, aNoteWithoutANameIsNumbered) {
  add(record(1).append(textField(2, u"one")));
  add(noteRecord(u"", u"two"));
  EXPECT_EQ(noteText(u"Note1.pwi"), u"one");
  EXPECT_EQ(noteText(u"Note2.pwi"), u"two");
}

TEST_F(NoteWrite, aNameThatIsTakenIsNumbered) {
  for (int i = 0; i < 2; ++i) add(noteRecord(u"", u"unnamed"));  // Note1, Note2
  placeNote(u"plan.PWI", u"old");
  const DWORD oid = add(noteRecord(u"Plan", u"new")).dwordAt(2);
  EXPECT_EQ(noteText(u"plan.PWI"), u"old");
  EXPECT_EQ(noteText(u"Plan_3.pwi"), u"new");
  EXPECT_EQ(oid, oidOf(u"Plan_3.pwi"));
}

TEST_F(NoteWrite, theCounterIsOneForAllAndOnlyGrows) {
  placeNote(u"Plan.pwi", u"");
  placeNote(u"Plan_2.pwi", u"");
  add(noteRecord(u"", u"unnamed"));        // Note1
  add(noteRecord(u"Plan", u"clash"));      // Plan_2 is taken as well: Plan_3
  add(noteRecord(u"", u"unnamed again"));  // Note4
  EXPECT_EQ(noteText(u"Note1.pwi"), u"unnamed");
  EXPECT_EQ(noteText(u"Plan_3.pwi"), u"clash");
  EXPECT_EQ(noteText(u"Note4.pwi"), u"unnamed again");
  reply(request(5, kInkNote));
  add(noteRecord(u"", u"later"));
  EXPECT_EQ(noteText(u"Note5.pwi"), u"later") << "across sessions";
}

TEST_F(NoteWrite, anUnnamedPathThatIsTakenIsTriedWithTheNameNote) {
  placeNote(u"Note1.pwi", u"");
  add(noteRecord(u"", u"new"));
  EXPECT_EQ(noteText(u"Note_2.pwi"), u"new");
}

TEST_F(NoteWrite, aFolderTakesANameToo) {
  placeFolder(u"Plan.pwi");
  add(noteRecord(u"Plan", u"new"));
  EXPECT_EQ(noteText(u"Plan_1.pwi"), u"new");
}

TEST_F(NoteWrite, anUnchangedNameOverwritesInPlace) {
  const DWORD oid = placeNote(u"Plan.pwi", u"a long text that is there before");
  EXPECT_EQ(change(oid, noteRecord(u"Plan", u"short")), written(oid, oid));
  EXPECT_EQ(noteText(u"Plan.pwi"), u"short");
  EXPECT_EQ(oidOf(u"Plan.pwi"), oid);
  EXPECT_EQ(names().size(), 1u);
}

TEST_F(NoteWrite, anotherNameMakesANewFile) {
  const DWORD old = placeNote(u"Plan.pwi", u"old");
  const Bytes answer = change(old, noteRecord(u"Plans", u"new"));
  const DWORD oid = oidOf(u"Plans.pwi");
  EXPECT_EQ(answer, written(oid, old));
  EXPECT_NE(oid, old);
  EXPECT_EQ(names(), std::vector<std::u16string>{u"Plans.pwi"});
  EXPECT_EQ(noteText(u"Plans.pwi"), u"new");
}

TEST_F(NoteWrite, namesAreComparedExactly) {
  const DWORD old = placeNote(u"Plan.pwi", u"old");
  const DWORD oid = change(old, noteRecord(u"PLAN", u"new")).dwordAt(2);
  EXPECT_NE(oid, old);
  EXPECT_EQ(names(), std::vector<std::u16string>{u"PLAN.pwi"});
  // As sent, not as it became: the file's name is "a_b".
  const DWORD replaced = add(noteRecord(u"a/b", u"1")).dwordAt(2);
  EXPECT_NE(change(replaced, noteRecord(u"a/b", u"2")).dwordAt(2), replaced);
  EXPECT_EQ(noteText(u"a_b.pwi"), u"2");
}

TEST_F(NoteWrite, aRenamedNoteGivesWayToAnother) {
  const DWORD old = placeNote(u"Plan.pwi", u"old");
  placeNote(u"Plans.pwi", u"other");
  change(old, noteRecord(u"Plans", u"new"));
  EXPECT_EQ(noteText(u"Plans.pwi"), u"other");
  EXPECT_EQ(noteText(u"Plans_1.pwi"), u"new");
  EXPECT_EQ(oidOf(u"Plan.pwi"), 0u);
}

TEST_F(NoteWrite, aChangeWithoutANameKeepsTheFile) {
  const DWORD oid = placeNote(u"Plan.pwi", u"old");
  EXPECT_EQ(change(oid, record(1).append(textField(2, u"new"))), written(oid, oid));
  EXPECT_EQ(change(oid, noteRecord(u"", u"newer")), written(oid, oid));
  EXPECT_EQ(noteText(u"Plan.pwi"), u"newer");
  add(noteRecord(u"", u"unnamed"));
  EXPECT_EQ(noteText(u"Note1.pwi"), u"unnamed") << "the change took no number";
}

TEST_F(NoteWrite, aChangeOfAnUnknownNoteMakesANewOne) {
  const Bytes answer = change(0x7FFFFFFF, noteRecord(u"Plan", u"new"));
  EXPECT_EQ(answer, written(oidOf(u"Plan.pwi"), 0x7FFFFFFF));
  EXPECT_EQ(noteText(u"Plan.pwi"), u"new");
}

TEST_F(NoteWrite, aChangeOfAFolderMakesANewNote) {
  const DWORD folder = placeFolder(u"Plan.pwi");
  change(folder, noteRecord(u"Plan", u"new"));
  EXPECT_EQ(noteText(u"Plan_1.pwi"), u"new");
  EXPECT_EQ(oidOf(u"Plan.pwi"), folder);
}

TEST_F(NoteWrite, ofAReadOnlyNoteSucceedsAndChangesNothing) {
  const DWORD oid = placeNote(u"Plan.pwi", u"old", FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(change(oid, noteRecord(u"Plan", u"new")), written(oid, oid));
  EXPECT_EQ(noteText(u"Plan.pwi"), u"old");
  // With another name it can't be deleted, and a second note is made.
  const Bytes answer = change(oid, noteRecord(u"plan", u"new"));
  EXPECT_EQ(answer, written(oidOf(u"plan_1.pwi"), oid));
  EXPECT_EQ(noteText(u"Plan.pwi"), u"old");
  EXPECT_EQ(noteText(u"plan_1.pwi"), u"new");
}

TEST_F(NoteWrite, ofANameThatNoFileCanHaveSucceedsAndChangesNothing) {
  const std::u16string tooLong(242, u'x');
  EXPECT_EQ(add(noteRecord(tooLong, u"new")), written(0, 7));
  EXPECT_EQ(add(noteRecord(u"a\u0001b", u"new")), written(0, 7));
  const DWORD oid = placeNote(u"Plan.pwi", u"old");
  EXPECT_EQ(change(oid, noteRecord(tooLong, u"new")), written(oid, oid));
  EXPECT_EQ(change(oid, noteRecord(u"a\u0001b", u"new")), written(oid, oid));
  EXPECT_EQ(names(), std::vector<std::u16string>{u"Plan.pwi"});
  EXPECT_EQ(noteText(u"Plan.pwi"), u"old");
}

TEST_F(NoteWrite, ofTheLongestNameThatAFileCanHaveIsDone) {
  const std::u16string longest(241, u'x');
  add(noteRecord(longest, u"new"));
  EXPECT_EQ(noteText(longest + u".pwi"), u"new");
}

TEST_F(NoteWrite, withoutAWindowTouchesNoFile) {
  const DWORD oid = placeNote(u"Plan.pwi", u"old");
  fault("CreateWindowExW=1407");
  EXPECT_EQ(change(oid, noteRecord(u"Other", u"new")), Bytes().u8(0).u8(0).u32(oid).u32(oid).zeros(10));
  EXPECT_EQ(add(noteRecord(u"Other", u"new")), Bytes().u8(0).u8(0).u32(0).u32(7).zeros(10));
  EXPECT_EQ(names(), std::vector<std::u16string>{u"Plan.pwi"});
  EXPECT_EQ(noteText(u"Plan.pwi"), u"old");
}

TEST_F(NoteWrite, onAnOldPlatformTouchesNoFile) {
  device().configuration.setOsVersion({3, 0, 11170});
  EXPECT_EQ(add(noteRecord(u"Plan", u"new")), Bytes().u8(0).u8(0).u32(0).u32(7).zeros(10));
  EXPECT_TRUE(names().empty());
}

TEST_F(NoteWrite, intoAFileThatCannotBeMadeSucceedsWithoutAnIdentifier) {
  observeCalls();
  fault("CreateFileW=112");
  EXPECT_EQ(add(noteRecord(u"Plan", u"new")), written(0, 7));
  EXPECT_TRUE(names().empty());
  EXPECT_TRUE(callNames("WriteFile").empty()) << "what has no file counts as written";
  EXPECT_EQ(calls("SendMessageW")[1]["result"], 3);
}

TEST_F(NoteWrite, makesItsFileAnewForReadingAndWriting) {
  observeCalls();
  add(noteRecord(u"Plan", u"new"));
  // Read and write, shared for both, create always, normal.
  EXPECT_EQ(calls("CreateFileW")[0]["args"],
            nlohmann::json::parse(R"(["\\My Documents\\Plan.pwi", 3221225472, 3, null, 2, 128, null])"));
}

TEST_F(NoteWrite, thatIsCutShortTouchesNoFile) {
  const DWORD oid = placeNote(u"Plan.pwi", u"old");
  const Bytes whole = noteRecord(u"Other", u"new");
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const Bytes answer = change(oid, whole.slice(0, size));
    EXPECT_EQ(answer.slice(0, 2), hex("00 00")) << size;
    EXPECT_EQ(answer.size(), 20u);
  }
  EXPECT_EQ(add(record(0xFFFFFFFF)).slice(0, 2), hex("00 00"));
  EXPECT_EQ(add(record(1).u32(1).u32(0xFFFFFFFF)).slice(0, 2), hex("00 00"));
  EXPECT_EQ(names(), std::vector<std::u16string>{u"Plan.pwi"});
  EXPECT_EQ(noteText(u"Plan.pwi"), u"old");
}

TEST_F(NoteWrite, ofSeveralAnswersEach) {
  const DWORD old = placeNote(u"Plan.pwi", u"old");
  const Bytes answer = reply(request(15, kInkNote)
                                 .u32(3)
                                 .append(Bytes().u8(2).u8(kInkNote).u32(11).append(noteRecord(u"A", u"1")))
                                 .append(Bytes().u8(3).u8(kInkNote).u32(old).append(noteRecord(u"B", u"2")))
                                 .append(Bytes().u8(2).u8(kInkNote).u32(12).append(record(0))));
  EXPECT_EQ(answer, Bytes()
                        .append(Bytes().u8(1).u8(0).u32(oidOf(u"A.pwi")).u32(11))
                        .append(Bytes().u8(1).u8(0).u32(oidOf(u"B.pwi")).u32(old))
                        .append(Bytes().u8(1).u8(0).u32(oidOf(u"Note1.pwi")).u32(12)));
  EXPECT_EQ(names(), (std::vector<std::u16string>{u"A.pwi", u"B.pwi", u"Note1.pwi"}));
}

TEST_F(NoteWrite, ofSeveralStopsAtTheEntryThatIsCutShort) {
  const Bytes answer = reply(request(15, kInkNote)
                                 .u32(2)
                                 .append(Bytes().u8(2).u8(kInkNote).u32(11).append(noteRecord(u"A", u"1")))
                                 .append(Bytes().u8(2).u8(kInkNote).u32(12).append(record(2))));
  EXPECT_EQ(answer, Bytes().u8(1).u8(0).u32(oidOf(u"A.pwi")).u32(11));
  EXPECT_EQ(names(), std::vector<std::u16string>{u"A.pwi"});
}

}  // namespace
}  // namespace qorv
