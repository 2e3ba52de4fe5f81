// Names of cards: parts, the name shown, and what the device files a contact by.
#include "tests/desktop/vcard_support.h"

namespace desktop {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(VcardNames, haveFiveParts) {
  const auto [contact, notes] = readOne(bareCardOf("FN:Dr. Ann Beth Lee Jr.\r\nN:Lee;Ann;Beth;Dr.;Jr.\r\n"));
  EXPECT_EQ(contact.title, u"Dr.");
  EXPECT_EQ(contact.firstName, u"Ann");
  EXPECT_EQ(contact.middleName, u"Beth");
  EXPECT_EQ(contact.lastName, u"Lee");
  EXPECT_EQ(contact.suffix, u"Jr.");
  EXPECT_EQ(contact.fileAs, u"");
  EXPECT_THAT(notes, IsEmpty());
}

TEST(VcardNames, haveListsParted) {
  const std::string lines = "N:Stevenson;John;Philip,Paul;Dr.;Jr.,M.D.\r\n";
  EXPECT_EQ(readOne(bareCardOf(lines)).contact.middleName, u"Philip Paul");
  EXPECT_EQ(readOne(bareCardOf(lines)).contact.suffix, u"Jr. M.D.");
  // An escaped comma is the name's own, and 2.1 has no lists.
  EXPECT_EQ(readOne(bareCardOf("N:Lee\\, the Elder;Ann\r\n")).contact.lastName, u"Lee, the Elder");
  EXPECT_EQ(readOne(bareCardOf(lines, "2.1")).contact.middleName, u"Philip,Paul");
}

TEST(VcardNames, losePartsThatTheDeviceLacks) {
  const auto [contact, notes] = readOne(bareCardOf("FN:Ann Lee\r\nN:Lee;Ann;;;;Santos;II\r\n", "4.0"));
  EXPECT_THAT(notes, ElementsAre("a further part of the name is not kept on the device: \"Santos\"",
                                 "a further part of the name is not kept on the device: \"II\""));
}

TEST(VcardNames, areTakenApartWhenTheCardDoesNot) {
  const auto [contact, notes] = readOne(bareCardOf("FN:Ann Beth Lee\r\n", "4.0"));
  EXPECT_EQ(contact.firstName, u"Ann Beth");
  EXPECT_EQ(contact.lastName, u"Lee");
  EXPECT_THAT(notes,
              ElementsAre("the card doesn't part the name: first name \"Ann Beth\", last name \"Lee\""));
  EXPECT_EQ(readOne(bareCardOf("FN:Ann\r\nN:;;;;\r\n")).contact.firstName, u"Ann");
}

TEST(VcardNames, ofCompaniesAreTheCompanys) {
  for (const char* mark : {"KIND:org\r\n", "X-ABShowAs:COMPANY\r\n"}) {
    const auto [contact, notes] = readOne(bareCardOf("FN:Acme Inc\r\n" + std::string(mark)));
    EXPECT_EQ(contact.company, u"Acme Inc") << mark;
    EXPECT_EQ(contact.firstName, u"") << mark;
    EXPECT_THAT(notes, IsEmpty()) << mark;
  }
  const auto [contact, notes] = readOne(bareCardOf("FN:Acme Inc\r\nORG:Acme Inc\r\n"));
  EXPECT_EQ(contact.firstName, u"");
  EXPECT_THAT(notes, IsEmpty());
}

TEST(VcardNames, mayBeAnAddressOrANumber) {
  EXPECT_EQ(readOne(bareCardOf("FN:ann@example.org\r\nEMAIL:ann@example.org\r\n")).contact.firstName, u"");
  EXPECT_EQ(readOne(bareCardOf("TEL;TYPE=CELL:0123\r\n")).contact.mobilePhone, u"0123");
}

struct Shown {
  const char* lines;
  const char16_t* fileAs;
  std::vector<std::string> notes;
};

TEST(VcardNames, areFiledAsTheDeviceCan) {
  for (const Shown& row : {
           // The device composes "Lee, Ann", whatever the card shows.
           Shown{"FN:Ann Lee\r\nN:Lee;Ann\r\n", u"", {}},
           Shown{"FN:Lee, Ann\r\nN:Lee;Ann\r\n", u"", {}},
           Shown{"FN:Lee Ann Dr.\r\nN:Lee;Ann;;Dr.\r\n", u"", {}},
           Shown{"FN:Annie\r\nN:Lee;Ann\r\n", u"", {"the name shown is not kept on the device: \"Annie\""}},
           Shown{"FN:Ann Lee\r\nN:Lee;Ann\r\nX-EVOLUTION-FILE-AS:Lee\\, Ann\r\n", u"", {}},
           Shown{"FN:Ann Lee\r\nN:Lee;Ann\r\nX-EVOLUTION-FILE-AS:Acme\r\n",
                 u"",
                 {"what the contact is filed by is not kept on the device: \"Acme\""}},
           // With one name, or none, it takes what it is given.
           Shown{"FN:Ann\r\nN:;Ann\r\n", u"", {}},
           Shown{"FN:Ann of Acme\r\nN:;Ann\r\n",
                 u"Ann of Acme",
                 {"the device files the contact as \"Ann of Acme\" and doesn't give that back"}},
           Shown{"FN:Ann\r\nN:;Ann\r\nX-EVOLUTION-FILE-AS:Neighbour\r\n",
                 u"Neighbour",
                 {"the device files the contact as \"Neighbour\" and doesn't give that back"}},
           Shown{"FN:Front desk\r\nKIND:org\r\nORG:Acme\r\n",
                 u"Front desk",
                 {"the device files the contact as \"Front desk\" and doesn't give that back"}},
       }) {
    const auto [contact, notes] = readOne(bareCardOf(row.lines));
    EXPECT_EQ(contact.fileAs, row.fileAs) << row.lines;
    EXPECT_EQ(notes, row.notes) << row.lines;
  }
}

TEST(VcardNames, thatNameNobodyAreRefused) {
  EXPECT_THAT(problemsOf(bareCardOf("NOTE:x\r\n")), ElementsAre("file.vcf:1: 1: the card names nobody"));
  EXPECT_THAT(problemsOf(bareCardOf("FN:\r\nN:;;;;\r\n")),
              ElementsAre("file.vcf:1: 1: the card names nobody"));
}

TEST(VcardNames, ofSeveralPeopleAreRefused) {
  for (const char* mark :
       {"KIND:group\r\n", "X-ADDRESSBOOKSERVER-KIND:group\r\n", "X-EVOLUTION-LIST:TRUE\r\n"}) {
    EXPECT_THAT(problemsOf(cardOf(mark)), ElementsAre("file.vcf:1: 1: a list of people is no contact"))
        << mark;
  }
}

TEST(VcardNames, ofThingsAreKeptAndSaidSo) {
  EXPECT_THAT(readOne(cardOf("KIND:location\r\n", "4.0")).notes,
              ElementsAre("the kind of what the card is about is not kept on the device: \"LOCATION\""));
  EXPECT_THAT(readOne(cardOf("KIND:individual\r\n", "4.0")).notes, IsEmpty());
}

TEST(VcardNames, haveTheirPronunciation) {
  const Contact apart = readOne(cardOf("X-PHONETIC-FIRST-NAME:hanako\r\nX-PHONETIC-LAST-NAME:yamada\r\n"
                                       "X-PHONETIC-ORG:akume\r\n"))
                            .contact;
  EXPECT_EQ(apart.yomiFirstName, u"hanako");
  EXPECT_EQ(apart.yomiLastName, u"yamada");
  EXPECT_EQ(apart.yomiCompany, u"akume");
  const Contact phone = readOne(cardOf("SOUND;X-IRMC-N:yamada;hanako;;;\r\n", "2.1")).contact;
  EXPECT_EQ(phone.yomiFirstName, u"hanako");
  EXPECT_EQ(phone.yomiLastName, u"yamada");
}

}  // namespace
}  // namespace desktop
