// What the versions of cards spell differently: encodings, character sets, folding.
#include "tests/desktop/vcard_support.h"

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::u16string noteOf(const std::string& line, const std::string& version = "2.1") {
  return readOne(cardOf(line, version)).contact.body;
}

TEST(VcardVersions, areReadInOneFile) {
  const FileItems file = readVcards(bareCardOf("N:Lee;Ann\r\n", "2.1") + "\r\nnoise\r\n" +
                                        "BEGIN:VCARD\r\nVERSION:4.0\r\nFN:Bo\r\nN:;Bo;;;\r\nEND:VCARD\r\n",
                                    "file.vcf");
  EXPECT_THAT(file.problems, IsEmpty());
  ASSERT_EQ(file.items.size(), 2u);
  EXPECT_EQ(std::get<Contact>(file.items[1].item).firstName, u"Bo");
}

TEST(VcardVersions, quotePrintables) {
  EXPECT_EQ(noteOf("NOTE;ENCODING=QUOTED-PRINTABLE;CHARSET=UTF-8:Gr=C3=BC=C3=9Fe=0D=0Azwei\r\n"),
            u"Gr\u00FC\u00DF"
            u"e\r\nzwei");
  EXPECT_EQ(noteOf("NOTE;QUOTED-PRINTABLE:a=3Db\r\n"), u"a=b");
  // A soft line break; what follows may begin with a blank, or look like a property.
  EXPECT_EQ(noteOf("NOTE;ENCODING=QUOTED-PRINTABLE:one=\r\n two=\r\nTEL:3\r\n"), u"one twoTEL:3");
  EXPECT_EQ(noteOf("NOTE;ENCODING=QUOTED-PRINTABLE:ends=\r\n"), u"ends");
  EXPECT_EQ(readOne(bareCardOf("N;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:M=FCller;J=F6rg\r\n", "2.1"))
                .contact.lastName,
            u"M\u00FCller");
}

TEST(VcardVersions, haveOtherCharacterSets) {
  EXPECT_EQ(noteOf("NOTE;CHARSET=ISO-8859-1:Gr\xFC\xDF"
                   "e\r\n"),
            u"Gr\u00FC\u00DF"
            u"e");
  EXPECT_EQ(noteOf("NOTE;CHARSET=WINDOWS-1252;LANGUAGE=de:5 \x80\r\n"), u"5 \u20AC");
  EXPECT_EQ(noteOf("NOTE;CHARSET=SHIFT_JIS:\x8E\x52\r\n"), u"\u5C71");
  EXPECT_EQ(noteOf("NOTE;CHARSET=UTF-8:\xC3\xBC\r\n"), u"\u00FC");
  // Longer than one step of the conversion.
  EXPECT_EQ(noteOf("NOTE;CHARSET=ISO-8859-1:" + std::string(10000, '\xFC') + "\r\n"),
            std::u16string(10000, u'\u00FC'));
}

TEST(VcardVersions, haveTextsInBase64) {
  EXPECT_EQ(noteOf("NOTE;ENCODING=BASE64:SGFsbG8g\r\n V2VsdA==\r\n\r\n"), u"Hallo Welt");
  EXPECT_EQ(noteOf("NOTE;ENCODING=b:SGFsbG8gV2VsdA==\r\n", "3.0"), u"Hallo Welt");
  // Without blanks before what goes on.
  EXPECT_EQ(noteOf("NOTE;ENCODING=BASE64:\r\nSGFsbG8g\r\nV2VsdA==\r\n\r\n"), u"Hallo Welt");
}

TEST(VcardVersions, beginWithAByteOrderMark) {
  EXPECT_EQ(readOne("\xEF\xBB\xBF" + cardOf("")).contact.firstName, u"Ann");
}

TEST(VcardVersions, areInAnyCaseAndWithAnyLineEnds) {
  EXPECT_EQ(readOne("begin:vcard\nversion:3.0\nuid:1\nfn:Ann Lee\nn:Lee;Ann\ntel;type=cell:1\nend:vcard")
                .contact.mobilePhone,
            u"1");
}

TEST(VcardVersions, readQuotedParameters) {
  EXPECT_EQ(readOne(cardOf("ADR;TYPE=home;LABEL=\"1 Main St; York:\":;;1 Main St;York;;;\r\n", "4.0"))
                .contact.homeCity,
            u"York");
}

}  // namespace
}  // namespace desktop
