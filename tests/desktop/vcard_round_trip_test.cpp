// What a contact of the device holds is the same after it was written as a card and read again.
#include <random>

#include "desktop/contact_fields.h"
#include "desktop/difference.h"
#include "tests/desktop/vcard_support.h"

namespace desktop {
namespace {

using testing::IsEmpty;

constexpr std::array kVersions{VcardVersion::V30, VcardVersion::V40};

Contact there(const Contact& contact, VcardVersion version) {
  return readOne(writeVcard(contact, "contact-17@PDA", version)).contact;
}

/// Spelled, so that a failing test tells which field it was.
std::vector<std::string> lossesOf(const Contact& contact, VcardVersion version) {
  Differences differences;
  compareFields(differences, kContactFields, contact, there(contact, version));
  std::vector<std::string> losses;
  for (const Difference& difference : differences) losses.push_back(spell(difference));
  return losses;
}

void put(Contact& contact, const ContactField& field, const std::u16string& text, const LocalTime& time) {
  if (const auto* member = std::get_if<ContactField::Text>(&field.member)) contact.*(*member) = text;
  if (const auto* member = std::get_if<ContactField::Time>(&field.member)) contact.*(*member) = time;
}

const LocalTime kDay{1970, 5, 1};

class VcardRoundTrip : public testing::TestWithParam<VcardVersion> {};

TEST_P(VcardRoundTrip, keepsEachFieldAlone) {
  for (const ContactField& field : kContactFields) {
    Contact contact;
    put(contact, field, u"x 1", kDay);
    EXPECT_THAT(lossesOf(contact, GetParam()), IsEmpty()) << field.name;
  }
}

TEST_P(VcardRoundTrip, keepsAllFieldsTogether) {
  Contact contact;
  char16_t letter = u'A';
  for (const ContactField& field : kContactFields) {
    put(contact, field, std::u16string(3, letter), {static_cast<std::uint16_t>(1900 + field.tag), 2, 28});
    ++letter;
  }
  EXPECT_THAT(lossesOf(contact, GetParam()), IsEmpty());
}

TEST_P(VcardRoundTrip, saysNothingAboutWhatTheDeviceHeld) {
  Contact contact;
  for (const ContactField& field : kContactFields) put(contact, field, u"x", kDay);
  EXPECT_THAT(readOne(writeVcard(contact, "contact-17@PDA", GetParam())).notes, IsEmpty());
}

/// What a format could take for its own marks, or break.
constexpr std::array<std::u16string_view, 16> kAwkward{
    u";",
    u"a;b;;c;",
    u"back\\slash, \\n \\; \\\\",
    u"\"quoted\"",
    u"a:b",
    u"=C3=BC=",
    u"BEGIN:VCARD",
    u"END:VCARD",
    u"_$!<Home>!$_",
    u"\u00E4\u00F6\u00FC\u20AC",
    u"\u5C71\u7530 \u592A\u90CE",
    u"\U0001F600 smiles",
    u"a 'quote' & <tag>",
    u"tel:5",
    u"http://example.org/?a=b&c=d#e",
    u"a long text that has to be folded because a line of a card should have no more than 75 bytes in "
    u"\u00E4\u00F6\u00FC\u00E4\u00F6\u00FC\u00E4\u00F6\u00FC\u00E4\u00F6\u00FC\u00E4\u00F6\u00FC UTF-8",
};

/// A number that is spelled as an address is that number, and commas part categories.
bool isExempt(const ContactField& field, std::u16string_view text) {
  const bool isPhone = field.name.ends_with("phone") || field.name.ends_with("fax") || field.name == "pager";
  if (isPhone && text.starts_with(u"tel:")) return true;
  return field.name == "categories" && text.find(u',') != std::u16string_view::npos;
}

TEST_P(VcardRoundTrip, keepsAwkwardTextsInEveryField) {
  for (const std::u16string_view text : kAwkward) {
    for (const ContactField& field : kContactFields) {
      if (isExempt(field, text)) continue;
      Contact contact;
      put(contact, field, std::u16string(text), kDay);
      EXPECT_THAT(lossesOf(contact, GetParam()), IsEmpty()) << field.name;
    }
  }
}

TEST_P(VcardRoundTrip, keepsWhicheverFieldsThereAre) {
  std::mt19937 random(17);  // always the same contacts
  for (int i = 0; i < 300; ++i) {
    Contact contact;
    for (const ContactField& field : kContactFields) {
      const auto text = kAwkward[random() % kAwkward.size()];
      if (random() % 2 == 0 && !isExempt(field, text)) put(contact, field, std::u16string(text), kDay);
    }
    EXPECT_THAT(lossesOf(contact, GetParam()), IsEmpty()) << i;
  }
}

TEST_P(VcardRoundTrip, keepsTheLinesOfNotesAndStreets) {
  Contact contact;
  contact.firstName = u"Ann";
  contact.body = u"one\r\n\r\n  two\t\r\n";
  contact.homeStreet = u"Floor 2\r\n1, Main St; left";
  contact.businessStreet = u"\r\nx";
  EXPECT_THAT(lossesOf(contact, GetParam()), IsEmpty());
}

TEST_P(VcardRoundTrip, keepsALongNote) {
  Contact contact;
  contact.firstName = u"Ann";
  for (int i = 0; i < 3000; ++i) contact.body += u"\u00E4 line; of, 25 characters\r\n";
  EXPECT_THAT(lossesOf(contact, GetParam()), IsEmpty());
}

TEST_P(VcardRoundTrip, keepsTheTimeOfADay) {
  Contact contact;
  contact.firstName = u"Ann";
  contact.birthday = {1970, 5, 1, 7, 30, 15};
  EXPECT_THAT(lossesOf(contact, GetParam()), IsEmpty());
}

TEST_P(VcardRoundTrip, keepsAContactThatHasNothing) {
  const std::string text = writeVcard({}, "contact-17@PDA", GetParam());
  EXPECT_NE(text.find("\r\nFN:(no name)\r\n"), std::string::npos) << text;
  EXPECT_EQ(readOne(text).contact, Contact());
}

TEST_P(VcardRoundTrip, writesTheSameBytesAgain) {
  Contact contact;
  for (const ContactField& field : kContactFields) put(contact, field, u"x; y, z", kDay);
  const std::string text = writeVcard(contact, "contact-17@PDA", GetParam());
  EXPECT_EQ(writeVcard(readOne(text).contact, "contact-17@PDA", GetParam()), text);
}

INSTANTIATE_TEST_SUITE_P(, VcardRoundTrip, testing::ValuesIn(kVersions), [](const auto& version) {
  return std::string(version.param == VcardVersion::V30 ? "3_0" : "4_0");
});

TEST(VcardWriting, spellsVersion3) {
  Contact contact;
  contact.title = u"Dr.";
  contact.firstName = u"Ann";
  contact.lastName = u"Lee";
  contact.company = u"Acme";
  contact.email1 = u"ann@example.org";
  contact.home2Phone = u"0123";
  contact.carPhone = u"4567";
  contact.otherCity = u"York";
  contact.spouse = u"Bo";
  contact.birthday = kDay;
  contact.anniversary = {1999, 12, 31};
  contact.categories = u"Work, Climbing";
  EXPECT_EQ(writeVcard(contact, "contact-17@PDA", VcardVersion::V30),
            "BEGIN:VCARD\r\n"
            "VERSION:3.0\r\n"
            "PRODID:-//Qorv//qorv-sync//EN\r\n"
            "UID:contact-17@PDA\r\n"
            "FN:Dr. Ann Lee\r\n"
            "N:Lee;Ann;;Dr.;\r\n"
            "EMAIL;TYPE=INTERNET:ann@example.org\r\n"
            "TEL;X-QORV-PLACE=2;TYPE=HOME,VOICE:0123\r\n"
            "TEL;TYPE=CAR:4567\r\n"
            "ADR;TYPE=OTHER:;;;York;;;\r\n"
            "ORG:Acme\r\n"
            "X-SPOUSE:Bo\r\n"
            "BDAY:1970-05-01\r\n"
            "X-ANNIVERSARY:1999-12-31\r\n"
            "CATEGORIES:Work,Climbing\r\n"
            "END:VCARD\r\n");
}

TEST(VcardWriting, prefersTheFirstOfSeveralEmails) {
  Contact contact;
  contact.email1 = u"b";
  contact.email2 = u"a";
  const auto has = [&](VcardVersion version, const char* line) {
    return writeVcard(contact, "1", version).find(line) != std::string::npos;
  };
  EXPECT_TRUE(has(VcardVersion::V30, "\r\nEMAIL;TYPE=INTERNET,PREF:b\r\nEMAIL;TYPE=INTERNET:a\r\n"));
  EXPECT_TRUE(has(VcardVersion::V40, "\r\nEMAIL;PREF=1:b\r\nEMAIL:a\r\n"));
}

TEST(VcardWriting, spellsVersion4) {
  Contact contact;
  contact.firstName = u"Ann";
  contact.lastName = u"Lee";
  contact.email1 = u"ann@example.org";
  contact.carPhone = u"4567";
  contact.otherCity = u"York";
  contact.spouse = u"Bo";
  contact.birthday = kDay;
  contact.anniversary = {1999, 12, 31};
  EXPECT_EQ(writeVcard(contact, "contact-17@PDA", VcardVersion::V40),
            "BEGIN:VCARD\r\n"
            "VERSION:4.0\r\n"
            "PRODID:-//Qorv//qorv-sync//EN\r\n"
            "UID;VALUE=text:contact-17@PDA\r\n"
            "FN:Ann Lee\r\n"
            "N:Lee;Ann;;;\r\n"
            "EMAIL:ann@example.org\r\n"
            "TEL;TYPE=\"X-CAR\":4567\r\n"
            "ADR;TYPE=\"X-OTHER\":;;;York;;;\r\n"
            "RELATED;TYPE=spouse;VALUE=text:Bo\r\n"
            "BDAY:19700501\r\n"
            "ANNIVERSARY:19991231\r\n"
            "END:VCARD\r\n");
}

}  // namespace
}  // namespace desktop
