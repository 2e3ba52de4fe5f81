// Cards with something wrong: each is named, the rest goes on.
#include "desktop/input_error.h"
#include "tests/desktop/vcard_support.h"

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::string_literals;

std::string errorOf(const std::string& text) {
  try {
    readVcards(text, "file.vcf");
  } catch (const InputError& error) {
    return error.what();
  }
  return "no error";
}

TEST(BrokenVcards, thatAreNoneAreRefused) {
  for (const std::string& text : {""s, "\n\n"s, "Hello\nworld\n"s, "BEGIN:VCALENDAR\nEND:VCALENDAR\n"s,
                                  "END:VCARD\n"s, "VERSION:3.0\nFN:Ann\n"s, "\xFF\xFE"s + "B\0E\0G\0"s}) {
    EXPECT_EQ(errorOf(text), "file.vcf: not a vCard file");
  }
}

TEST(BrokenVcards, areNamedAndTheOthersTaken) {
  const std::string text =
      "BEGIN:VCARD\n"           // 1
      "VERSION:3.0\n"           // 2
      "UID:open\n"              // 3
      "FN:Open\n"               // 4
      "BEGIN:VCARD\n"           // 5
      "VERSION:5.0\n"           // 6
      "UID:future\n"            // 7
      "FN:Future\n"             // 8
      "END:VCARD\n"             // 9
      "\n"                      // 10
      "BEGIN:VCARD\n"           // 11
      "UID:plain\n"             // 12
      "FN:Plain\n"              // 13
      "END:VCARD\n"             // 14
      "BEGIN:VCARD\n"           // 15
      "VERSION:3.0\n"           // 16
      "UID:good\n"              // 17
      "N:Lee;Ann\n"             // 18
      "FN:Ann\n"                // 19
      "  Lee\n"                 // 20
      "END:VCARD\n"             // 21
      "BEGIN:VCARD\n"           // 22
      "VERSION:3.0\n"           // 23
      "UID:line\n"              // 24
      "FN:Line\n"               // 25
      "this line is nothing\n"  // 26
      "END:VCARD\n"             // 27
      "BEGIN:VCARD\n"           // 28
      "VERSION:3.0\n"           // 29
      "UID:good\n"              // 30
      "N:Low;Bo\n"              // 31
      "END:VCARD\n"             // 32
      "BEGIN:VCARD\n"           // 33
      "VERSION:2.1\n"           // 34
      "N;CHARSET=X-NONE:L\n"    // 35
      "END:VCARD\n"             // 36
      "BEGIN:VCARD\n"           // 37
      "VERSION:3.0\n"           // 38
      "FN:Cut";                 // 39
  EXPECT_THAT(problemsOf(text),
              ElementsAre("file.vcf:1: the card isn't closed: END:VCARD is missing",
                          "file.vcf:5: future: VERSION \"5.0\" is none that is read: 2.1, 3.0 or 4.0",
                          "file.vcf:11: plain: the card doesn't say its VERSION",
                          "file.vcf:22: line 26 is no property: it has no colon",
                          "file.vcf:28: good: its UID stands for another card of the file, at line 15",
                          "file.vcf:33: the character set X-NONE is unknown",
                          "file.vcf:37: the card isn't closed: END:VCARD is missing"));
  const FileItems file = readVcards(text, "file.vcf");
  ASSERT_THAT(file.items, SizeIs(1));
  EXPECT_EQ(file.items[0].uid, "good");
  EXPECT_EQ(std::get<Contact>(file.items[0].item).lastName, u"Lee");
}

struct Fault {
  std::string lines;
  std::string problem;
};

TEST(BrokenVcards, tellTheLine) {
  for (const Fault& row : {
           Fault{"NOTE\r\n", "line 6 is no property: it has no colon"},
           Fault{"NOTE;X=\"a:b\r\n", "line 6 is no property: it has no colon"},
           Fault{":x\r\n", "line 6 is no property: it has no name"},
           Fault{";TYPE=HOME:x\r\n", "line 6 is no property: it has no name"},
           Fault{"TE L:x\r\n", "line 6 is no property: it has no name"},
           Fault{".TEL:x\r\n", "line 6 is no property: it has no name"},
           Fault{"TEL:1\r\nNOTE:a\0b\r\n"s, "line 7 holds a NUL"},
           Fault{"NOTE:fine\r\n folded \xFC\r\n", "line 6 is no UTF-8 text"},
           Fault{"NOTE:cut \xC3\r\n", "line 6 is no UTF-8 text"},
           Fault{"NOTE;CHARSET=UTF-16:abc\r\n", "a text is none in the character set UTF-16"},
       }) {
    EXPECT_THAT(problemsOf(cardOf(row.lines)), ElementsAre("file.vcf:1: " + row.problem)) << row.lines;
  }
}

TEST(BrokenVcards, tellTheTextThatIsNotUtf8OnceItIsDecoded) {
  EXPECT_THAT(problemsOf(cardOf("NOTE;ENCODING=QUOTED-PRINTABLE:Gr=FC\r\n", "2.1")),
              ElementsAre("file.vcf:1: NOTE is no UTF-8 text"));
  EXPECT_THAT(problemsOf(cardOf("TITLE;ENCODING=b:/w==\r\n")),
              ElementsAre("file.vcf:1: TITLE is no UTF-8 text"));
}

TEST(BrokenVcards, mayHaveBinaryValuesThatAreNone) {
  EXPECT_THAT(readOne(cardOf("PHOTO;ENCODING=b:!!! no base64 !!!\r\n")).notes,
              ElementsAre("PHOTO is not kept on the device"));
  EXPECT_THAT(readOne(cardOf("PHOTO;ENCODING=BASE64:\r\n", "2.1")).notes,
              ElementsAre("PHOTO is not kept on the device"));
}

/// A card with a little of everything.
const std::string kRich =
    "BEGIN:VCARD\r\nVERSION:2.1\r\nUID:1\r\nN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:L=C3=BC;Ann;;;\r\n"
    "item1.TEL;HOME;VOICE:1\r\nitem1.X-ABLabel:_$!<Home>!$_\r\nADR;TYPE=\"home,work\":;;a\\nb;c;d;e;f\r\n"
    "NOTE;ENCODING=QUOTED-PRINTABLE:one=\r\ntwo=0D=0A=\r\n\r\nEMAIL;PREF=1:a@b\r\nBDAY:1970-05-01T00:00:"
    "00Z\r\n"
    "PHOTO;ENCODING=BASE64:\r\n SGFs\r\n bG8=\r\n\r\nCATEGORIES:a,b\\,c\r\nNOTE;CHARSET=ISO-8859-1:\xFC\r\n"
    "RELATED;VALUE=text;TYPE=spouse;ALTID=1:Bo\r\nEND:VCARD\r\n";

/// Reading must neither crash nor fail in any other way than by saying what is wrong.
void expectSurvival(const std::string& text) {
  try {
    const FileItems file = readVcards(text, "file.vcf");
    for (const FileItem& item : file.items) {
      const Contact& contact = std::get<Contact>(item.item);
      for (const VcardVersion version : {VcardVersion::V30, VcardVersion::V40}) {
        EXPECT_THAT(readVcards(writeVcard(contact, "u", version), "again.vcf").problems, IsEmpty()) << text;
      }
    }
  } catch (const InputError&) {
  }
}

TEST(BrokenVcards, mayEndAnywhere) {
  ASSERT_THAT(problemsOf(kRich), IsEmpty());
  for (std::size_t length = 0; length <= kRich.size(); ++length) {
    expectSurvival(kRich.substr(0, length));
    expectSurvival(kRich.substr(0, length) + "\r\nEND:VCARD\r\n");
  }
}

TEST(BrokenVcards, mayHaveAnyByteAnywhere) {
  for (const char byte : {'\0', '\n', ' ', '"', ':', '=', '\xFF'}) {
    for (std::size_t place = 0; place < kRich.size(); ++place) {
      std::string text = kRich;
      text[place] = byte;
      expectSurvival(text);
    }
  }
}

TEST(BrokenVcards, mayHaveHugeLinesAndLists) {
  const std::string huge(1 << 20, 'x');
  EXPECT_EQ(readOne(cardOf("NOTE:" + huge + "\r\n")).contact.body.size(), huge.size());
  expectSurvival(cardOf("N" + huge + ":1\r\n"));
  expectSurvival(cardOf("TEL;TYPE=" + huge + ":1\r\n"));
  expectSurvival(cardOf("NOTE;ENCODING=QUOTED-PRINTABLE:" + std::string(100000, '=') + "\r\n", "2.1"));
  std::string phones;
  for (int i = 0; i < 5000; ++i) phones += "TEL;TYPE=HOME:" + std::to_string(i) + "\r\n";
  EXPECT_THAT(readOne(cardOf(phones)).notes, SizeIs(4998));
  std::string folded = "NOTE:";
  for (int i = 0; i < 50000; ++i) folded += "x\r\n ";
  EXPECT_EQ(readOne(cardOf(folded + "\r\n")).contact.body.size(), 50000u);
}

TEST(BrokenVcards, mayBeNestedDeeply) {
  std::string text;
  for (int i = 0; i < 1000; ++i) text += "BEGIN:VCARD\r\nVERSION:2.1\r\nN:Lee\r\nAGENT:\r\n";
  EXPECT_THAT(problemsOf(text), SizeIs(1));
  for (int i = 0; i < 1000; ++i) text += "END:VCARD\r\n";
  EXPECT_EQ(readOne(text).contact.lastName, u"Lee");
}

}  // namespace
}  // namespace desktop
