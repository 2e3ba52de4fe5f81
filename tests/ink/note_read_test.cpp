#include "tests/ink/note_test.h"

namespace qorv {
namespace {

using namespace test;

class NoteRead : public NoteTest {};

TEST_F(NoteRead, isANameAndATextInThatOrder) {
  const DWORD oid = placeNote(u"Plan.pwi", u"Hi\r\n");
  EXPECT_EQ(read(oid), Bytes()
                           .append(hex("01 00"))
                           .u32(oid)
                           .append(hex("02"
                                       // Tag 1, ten bytes: "Plan" and its NUL.
                                       "01000000 0A000000 50006C0061006E000000"
                                       // Tag 2, ten bytes: H, i, carriage return, line feed, NUL.
                                       "02000000 0A000000 480069000D000A000000")));
}

TEST_F(NoteRead, canBeEmpty) {
  const DWORD oid = placeNote(u"Empty.pwi", u"");
  EXPECT_EQ(read(oid), readNote(oid, u"Empty", u""));
}

TEST_F(NoteRead, keepsTheTextAsItIs) {
  const std::u16string text = u"one\ntwo\rthree\r\n\tfour \u00FC \u20AC \U0001F600";
  const DWORD oid = placeNote(u"a.b.pwi", text);
  EXPECT_EQ(read(oid), readNote(oid, u"a.b", text));
}

TEST_F(NoteRead, comesThroughChunksOfEverySize) {
  for (const std::size_t length : {1u, 2u, 31u, 500u, 2049u, 20'000u}) {
    std::u16string text;
    for (std::size_t i = 0; i < length; ++i) text += static_cast<char16_t>(u'!' + i % 90);
    const DWORD oid = placeNote(u"n.pwi", text);
    EXPECT_EQ(read(oid), readNote(oid, u"n", text)) << length;
  }
}

TEST_F(NoteRead, countsTheBytesBeforeItTakesThem) {
  const DWORD oid = placeNote(u"n.pwi", u"text");
  observeCalls();
  read(oid);
  const auto sent = calls("SendMessageW");
  ASSERT_EQ(sent.size(), 3u);
  // Message and format: the file in, the text out twice.
  EXPECT_EQ(sent[0]["args"][1], 0x449);
  EXPECT_EQ(sent[0]["args"][2], 0x10802);
  for (int pass : {1, 2}) {
    EXPECT_EQ(sent[pass]["args"][1], 0x44A);
    EXPECT_EQ(sent[pass]["args"][2], 0x11);
    EXPECT_EQ(sent[pass]["result"], 4);
  }
}

TEST_F(NoteRead, usesAnInvisibleReadOnlyWindowOfTheControl) {
  const DWORD oid = placeNote(u"n.pwi", u"text");
  observeCalls();
  read(oid);
  const auto args = calls("CreateWindowExW")[0]["args"];
  EXPECT_EQ(args, nlohmann::json::parse(R"([0, "RichInk", null, 2048, -2147483648, -2147483648, -2147483648,
                                            -2147483648, null, null, null, null])"));
  std::vector<std::string> ends;
  for (const std::string& name : callNames()) {
    if (name == "DestroyWindow" || name == "CloseHandle") ends.push_back(name);
  }
  EXPECT_EQ(ends, (std::vector<std::string>{"DestroyWindow", "CloseHandle"}));
  EXPECT_EQ(device().windows.count(), 0u);
}

TEST_F(NoteRead, canBeOfAReadOnlyFile) {
  const DWORD oid = placeNote(u"n.pwi", u"text", FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(read(oid), readNote(oid, u"n", u"text"));
}

TEST_F(NoteRead, ofAFileThatIsNoNoteHasNoText) {
  const DWORD oid = place(u"n.pwi", {'{', '\\', 'p', 'w', 'i'});
  EXPECT_EQ(read(oid), readNote(oid, u"n", u""));
}

TEST_F(NoteRead, ofAnUnknownNoteHasTwoEmptyTexts) {
  EXPECT_EQ(read(0x7FFFFFFF), readNote(0x7FFFFFFF, u"", u""));
  EXPECT_EQ(read(0), readNote(0, u"", u""));
  const DWORD folder = placeFolder(u"Folder.pwi");
  EXPECT_EQ(read(folder), readNote(folder, u"", u""));
}

TEST_F(NoteRead, ofAFileThatCannotBeOpenedHasItsNameOnly) {
  const DWORD oid = placeNote(u"n.pwi", u"text");
  fault("CreateFileW=32");
  EXPECT_EQ(read(oid), readNote(oid, u"n", u""));
}

TEST_F(NoteRead, withoutAWindowEndsAfterThePlaceOfItsHeader) {
  const DWORD oid = placeNote(u"n.pwi", u"text");
  fault("CreateWindowExW=1407");
  EXPECT_EQ(read(oid), Bytes().zeros(7));
}

TEST_F(NoteRead, onAnOldPlatformEndsAfterThePlaceOfItsHeader) {
  device().configuration.setOsVersion({3, 0, 11170});
  const DWORD oid = placeNote(u"n.pwi", u"text");
  EXPECT_EQ(read(oid), Bytes().zeros(7));
}

TEST_F(NoteRead, withoutTheLibraryEndsAfterThePlaceOfItsHeader) {
  const DWORD oid = placeNote(u"n.pwi", u"text");
  fault("LoadLibraryW=126");
  EXPECT_EQ(read(oid), Bytes().zeros(7));
}

TEST_F(NoteRead, aFailingFileOrControlLeavesAnEmptyText) {
  const DWORD oid = placeNote(u"n.pwi", u"text");
  for (const char* rule : {"ReadFile#2=30", "SendMessageW=1", "SendMessageW#2=1", "SendMessageW#3=1*1"}) {
    clearFaults();
    fault(rule);
    const Bytes answer = read(oid);
    // What the second pass did not fill is still zero, and a text ends there.
    EXPECT_EQ(answer, readNote(oid, u"n", u"")) << rule;
  }
}

TEST_F(NoteRead, ofSeveralIsOneListOfRecords) {
  const DWORD one = placeNote(u"One.pwi", u"1");
  const DWORD two = placeNote(u"Two.pwi", u"2");
  EXPECT_EQ(reply(request(16, kInkNote).u32(3).u32(two).u32(0x7FFFFFFF).u32(one)),
            Bytes()
                .append(hex("01 00 03000000 02"))  // the last byte is the last record's field count
                .append(readNote(two, u"Two", u"2"))
                .append(readNote(0x7FFFFFFF, u"", u""))
                .append(readNote(one, u"One", u"1")));
}

TEST_F(NoteRead, aTextThatPassesTheLimitEndsTheList) {
  // 0x1B000 bytes less what is in front of it and the NUL: the header of the list and the record, tag, count,
  // "n" with its NUL, then tag and count, which are not part of the test.
  const std::size_t fits = (0x1B000 - 7 - 7 - 8 - 4) / 2 - 1;
  const DWORD fitting = placeNote(u"n.pwi", std::u16string(fits, u'x'));
  const DWORD tooLong = placeNote(u"m.pwi", std::u16string(fits + 1, u'x'));
  EXPECT_EQ(
      reply(request(16, kInkNote).u32(1).u32(fitting)),
      Bytes().append(hex("01 00 01000000 02")).append(readNote(fitting, u"n", std::u16string(fits, u'x'))));
  EXPECT_EQ(reply(request(16, kInkNote).u32(2).u32(tooLong).u32(fitting)),
            Bytes()
                .append(hex("01 00 00000000 01"))
                .append(Bytes().u8(1).u8(0).u32(tooLong).u8(1).u32(1).terminatedText(u"m")));
}

}  // namespace
}  // namespace qorv
