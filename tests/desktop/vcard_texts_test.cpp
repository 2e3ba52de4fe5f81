// Texts and days of cards, under the names that address-book programs have for them.
#include "tests/desktop/vcard_support.h"

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct TextRow {
  const char* lines;
  std::u16string Contact::*member;
  const char16_t* text;
};

TEST(VcardTexts, haveManyNames) {
  for (const TextRow& row : {
           TextRow{"ORG:Acme\r\n", &Contact::company, u"Acme"},
           TextRow{"ORG:Acme;Sales\r\n", &Contact::department, u"Sales"},
           TextRow{"ORG:;Sales\r\n", &Contact::department, u"Sales"},
           TextRow{"TITLE:Boss\r\n", &Contact::jobTitle, u"Boss"},
           TextRow{"URL:http://example.org/?a;b\r\n", &Contact::webPage, u"http://example.org/?a;b"},
           TextRow{"item1.URL:http://example.org\r\n", &Contact::webPage, u"http://example.org"},
           TextRow{"X-SPOUSE:Bo\r\n", &Contact::spouse, u"Bo"},
           TextRow{"X-EVOLUTION-SPOUSE:Bo\r\n", &Contact::spouse, u"Bo"},
           TextRow{"X-SPOUSE:Bo\r\nX-EVOLUTION-SPOUSE:Bo\r\n", &Contact::spouse, u"Bo"},
           TextRow{"X-KADDRESSBOOK-X-SpousesName:Bo\r\n", &Contact::spouse, u"Bo"},
           TextRow{"X-MS-SPOUSE;N:Bo\r\n", &Contact::spouse, u"Bo"},
           TextRow{"RELATED;TYPE=spouse;VALUE=text:Bo\r\n", &Contact::spouse, u"Bo"},
           TextRow{"item1.X-ABRELATEDNAMES:Bo\r\nitem1.X-ABLabel:_$!<Spouse>!$_\r\n", &Contact::spouse,
                   u"Bo"},
           TextRow{"X-CHILDREN:Cy, Di\r\n", &Contact::children, u"Cy, Di"},
           TextRow{"X-MS-CHILD:Cy\r\nX-MS-CHILD:Di\r\n", &Contact::children, u"Cy, Di"},
           TextRow{"RELATED;TYPE=child;VALUE=text:Cy\r\nRELATED;TYPE=child:Di\r\n", &Contact::children,
                   u"Cy, Di"},
           TextRow{"X-ASSISTANT:Ed\r\n", &Contact::assistantName, u"Ed"},
           TextRow{"X-EVOLUTION-ASSISTANT:Ed\r\n", &Contact::assistantName, u"Ed"},
           TextRow{"X-KADDRESSBOOK-X-AssistantsName:Ed\r\n", &Contact::assistantName, u"Ed"},
           TextRow{"X-KADDRESSBOOK-X-Office:4b\r\n", &Contact::officeLocation, u"4b"},
           TextRow{"CATEGORIES:Work, Climbing\r\nCATEGORIES:Old\r\n", &Contact::categories,
                   u"Work,Climbing,Old"},
           TextRow{"NOTE:one\\ntwo\\, three; four\r\n", &Contact::body, u"one\r\ntwo, three; four"},
           TextRow{"NOTE:one\r\nNOTE:two\r\n", &Contact::body, u"one\r\ntwo"},
           TextRow{"TITLE:two\\nlines\r\n", &Contact::jobTitle, u"two lines"},
           TextRow{"TITLE:fol\r\n ded\r\n", &Contact::jobTitle, u"folded"},
       }) {
    const auto [contact, notes] = readOne(cardOf(row.lines));
    EXPECT_EQ(contact.*row.member, row.text) << row.lines;
    EXPECT_THAT(notes, IsEmpty()) << row.lines;
  }
}

struct NoteRow {
  const char* lines;
  const char* note;
};

TEST(VcardTexts, thatTheDeviceLacksAreNamed) {
  for (const NoteRow& row : {
           NoteRow{"NICKNAME:Annie\r\n", "NICKNAME is not kept on the device: \"Annie\""},
           NoteRow{"X-AIM;TYPE=HOME:ann.lee\r\n", "X-AIM is not kept on the device: \"ann.lee\""},
           NoteRow{"PHOTO;ENCODING=b;TYPE=JPEG:SGFsbG8=\r\n", "PHOTO is not kept on the device"},
           NoteRow{"PHOTO;VALUE=uri:http://example.org/a.jpg\r\n",
                   "PHOTO is not kept on the device: \"http://example.org/a.jpg\""},
           NoteRow{"CLASS:PRIVATE\r\n", "CLASS is not kept on the device: \"PRIVATE\""},
           NoteRow{"TITLE:a\r\nTITLE:b\r\n", "a second TITLE is not kept on the device: \"b\""},
           NoteRow{"ORG:a\r\nORG:b;c\r\n", "a second ORG is not kept on the device: \"b;c\""},
           NoteRow{"ORG:a;b;c\r\n", "units of the organisation are put into its department: \"c\""},
           NoteRow{"CATEGORIES:a\\,b\r\n", "a category with a comma is several on the device: \"a,b\""},
           NoteRow{"RELATED;TYPE=spouse:urn:uuid:12\r\n",
                   "RELATED is not kept on the device: \"urn:uuid:12\""},
           NoteRow{"RELATED;TYPE=friend;VALUE=text:Fay\r\n", "RELATED is not kept on the device: \"Fay\""},
           NoteRow{"item1.X-ABRELATEDNAMES:Fay\r\nitem1.X-ABLabel:_$!<Friend>!$_\r\n",
                   "X-ABRELATEDNAMES is not kept on the device: \"Fay\""},
           NoteRow{"item1.URL:http://a\r\nitem1.X-ABLabel:Blog\r\n",
                   "a label is not kept on the device: \"Blog\""},
           NoteRow{"NOTE;ALTID=1;LANGUAGE=en:a\r\nNOTE;ALTID=1;LANGUAGE=de:b\r\n",
                   "another form of NOTE is not kept on the device: \"b\""},
           NoteRow{"AGENT:\r\nBEGIN:VCARD\r\nVERSION:3.0\r\nFN:Ed\r\nEND:VCARD\r\n",
                   "AGENT is not kept on the device"},
       }) {
    EXPECT_THAT(readOne(cardOf(row.lines)).notes, ElementsAre(row.note)) << row.lines;
  }
}

TEST(VcardTexts, thatAreNobodysBusinessAreNot) {
  EXPECT_THAT(readOne(cardOf("PRODID:x\r\nREV:20050314T090000Z\r\nX-MOZILLA-HTML:FALSE\r\nCLASS:PUBLIC\r\n"
                             "item1.TEL;TYPE=CELL:1\r\nitem1.X-ABLabel:_$!<Mobile>!$_\r\n"))
                  .notes,
              IsEmpty());
  EXPECT_THAT(readOne("BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Ann Lee\r\nN:Lee;Ann\r\nEND:VCARD\r\n").notes,
              ElementsAre("the card has no UID"));
}

TEST(VcardTexts, thatAreLongAreNamedInPart) {
  EXPECT_THAT(readOne(cardOf("NICKNAME:" + std::string(100, 'x') + "\r\n")).notes,
              ElementsAre("NICKNAME is not kept on the device: \"" + std::string(60, 'x') + "\"..."));
}

struct DateRow {
  const char* line;
  LocalTime birthday;
};

TEST(VcardDates, haveManySpellings) {
  const LocalTime day{1970, 5, 1};
  for (const DateRow& row : {
           DateRow{"BDAY:1970-05-01\r\n", day},
           DateRow{"BDAY:19700501\r\n", day},
           DateRow{"BDAY;VALUE=DATE:1970-05-01\r\n", day},
           DateRow{"BDAY:1970-05-01T00:00:00Z\r\n", day},
           DateRow{"BDAY:19700501T000000+0200\r\n", day},
           DateRow{"BDAY:19700501T000000-05\r\n", day},
           DateRow{"BDAY:1970-05-01T00:00:00.000-05:30\r\n", day},
           DateRow{"BDAY;VALUE=date-time:1970-05-01T07:30:15\r\n", {1970, 5, 1, 7, 30, 15}},
           DateRow{"BDAY:19700501T0730\r\n", {1970, 5, 1, 7, 30}},
           DateRow{"BDAY:19700501T07\r\n", {1970, 5, 1, 7}},
           DateRow{"BDAY:1900-01-01\r\n", {1900, 1, 1}},
           DateRow{"BDAY:2999-12-31\r\n", {2999, 12, 31}},
           DateRow{"BDAY:\r\n", {}},
       }) {
    const auto [contact, notes] = readOne(cardOf(row.line));
    EXPECT_EQ(contact.birthday, row.birthday) << row.line;
    EXPECT_THAT(notes, IsEmpty()) << row.line;
  }
}

TEST(VcardDates, thatAreNotFullAreNamed) {
  for (const char* value :
       {"--0501", "--05-01", "---01", "1970", "1970-05", "1970-02-30", "1970-5-1", "circa 1800",
        "1970-05-01T", "1970-05-01T25:00:00", "1970-05-01T07:", "1970-05-01 x", "19700501T07+"}) {
    const auto [contact, notes] = readOne(cardOf("BDAY:" + std::string(value) + "\r\n"));
    EXPECT_EQ(contact.birthday, LocalTime()) << value;
    EXPECT_THAT(notes, ElementsAre("BDAY, which is no full date, is not kept on the device: \"" +
                                   std::string(value) + "\""));
  }
}

TEST(VcardDates, withAYearThatStandsForNoneAreNamed) {
  EXPECT_THAT(readOne(cardOf("BDAY;X-APPLE-OMIT-YEAR=1904:1904-05-01\r\n")).notes,
              ElementsAre("BDAY, which is no full date, is not kept on the device: \"1904-05-01\""));
}

TEST(VcardDates, outsideTheDevicesCalendarAreNamed) {
  for (const char* value : {"1899-12-31", "3000-01-01"}) {
    EXPECT_THAT(readOne(cardOf("BDAY:" + std::string(value) + "\r\n")).notes,
                ElementsAre("BDAY, which is outside the device's calendar (1900 to 2999), is not kept on the "
                            "device: \"" +
                            std::string(value) + "\""));
  }
}

TEST(VcardDates, ofWeddingsHaveManyNames) {
  for (const char* lines :
       {"ANNIVERSARY:19991231\r\n", "X-ANNIVERSARY:1999-12-31\r\n", "X-EVOLUTION-ANNIVERSARY:1999-12-31\r\n",
        "X-KADDRESSBOOK-X-Anniversary:1999-12-31\r\n", "X-MS-ANNIVERSARY:19991231\r\n",
        "item1.X-ABDATE;type=pref:1999-12-31\r\nitem1.X-ABLabel:_$!<Anniversary>!$_\r\n"}) {
    const auto [contact, notes] = readOne(cardOf(lines));
    EXPECT_EQ(contact.anniversary, (LocalTime{1999, 12, 31})) << lines;
    EXPECT_THAT(notes, IsEmpty()) << lines;
  }
}

}  // namespace
}  // namespace desktop
