#include "desktop/contact_record.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "desktop/contact_fields.h"
#include "desktop/device_error.h"
#include "desktop/item_kind.h"
#include "tests/desktop/wire_bytes.h"

namespace {

using namespace desktop;
using namespace wire_bytes;

// 1 May 1970 was a Friday (5), 31 December 1999 too; 1 January 4501 is a Saturday (6).
const Bytes kBirthday = hex("B2 07 05 00 05 00 01 00  00 00 00 00 00 00 00 00");
const Bytes kWedding = hex("CF 07 0C 00 05 00 1F 00  00 00 00 00 00 00 00 00");
const Bytes kNoDate = hex("95 11 01 00 06 00 01 00  00 00 00 00 00 00 00 00");

// Tags: 1 anniversary, 2 birthday, 4 company, 6 email, 26 file as, 31 first name, 33 last name, 50 body.

/// The record that the device sends: tags 1 to 25 and 27 to 50, 49 of them (0x31), of which the given ones have
/// a text.
Bytes received(std::uint32_t oid, const std::vector<std::pair<std::uint32_t, std::u16string>>& texts,
               const Bytes& anniversary = kNoDate, const Bytes& birthday = kNoDate) {
  Bytes record = hex("01 00") + u32(oid) + hex("31") + u32(1) + anniversary + u32(2) + birthday;
  for (std::uint32_t tag = 3; tag <= 50; ++tag) {
    if (tag == 26) continue;
    std::u16string text;
    for (const auto& [given, value] : texts) {
      if (given == tag) text = value;
    }
    record = record + u32(tag) + deviceText(text);
  }
  return record;
}

Contact readAll(const Bytes& bytes, std::uint32_t oid = 17) {
  WireReader reader(bytes);
  Contact contact = readContact(reader, oid);
  reader.expectEnd();
  return contact;
}

std::string errorOf(const Bytes& bytes) {
  try {
    readAll(bytes);
  } catch (const ProtocolError& error) {
    return error.what();
  }
  return "no error";
}

Contact named(const std::u16string& first, const std::u16string& last) {
  Contact contact;
  contact.firstName = first;
  contact.lastName = last;
  return contact;
}

TEST(ContactRecord, ofANewContactHasOnlyWhatThereIs) {
  Contact contact = named(u"Ann", u"Lee");
  contact.birthday = {1970, 5, 1};
  contact.body = u"Hi";
  EXPECT_EQ(contactRecords(contact, false),
            std::vector<Bytes>{u32(4) + u32(2) + kBirthday + u32(31) + sentText(u"Ann") + u32(33) +
                               sentText(u"Lee") + u32(50) + sentText(u"Hi")});
}

TEST(ContactRecord, tellsWhatToFileAContactWithoutBothNamesBy) {
  // One name: that; none: the company, then the first e-mail address; and whatever the card says before these.
  EXPECT_EQ(contactRecords(named(u"Ann", u""), false),
            std::vector<Bytes>{u32(2) + u32(31) + sentText(u"Ann") + u32(26) + sentText(u"Ann")});
  Contact company;
  company.company = u"Acme";
  company.email1 = u"a@b";
  EXPECT_EQ(contactRecords(company, false),
            std::vector<Bytes>{u32(3) + u32(4) + sentText(u"Acme") + u32(6) + sentText(u"a@b") + u32(26) +
                               sentText(u"Acme")});
  company.fileAs = u"Desk";
  company.company.clear();
  EXPECT_EQ(contactRecords(company, false),
            std::vector<Bytes>{u32(2) + u32(6) + sentText(u"a@b") + u32(26) + sentText(u"Desk")});
}

TEST(ContactRecord, ofAKnownContactEmptiesWhatIsNotThere) {
  const std::vector<Bytes> records = contactRecords(named(u"Ann", u"Lee"), true);
  ASSERT_EQ(records.size(), 1u);
  Bytes expected = u32(49) + u32(1) + kNoDate + u32(2) + kNoDate;
  for (std::uint32_t tag = 3; tag <= 50; ++tag) {
    if (tag == 26) continue;
    expected = expected + u32(tag) + sentText(tag == 31 ? u"Ann" : tag == 33 ? u"Lee" : u"");
  }
  EXPECT_EQ(records[0], expected);
}

TEST(ContactRecord, neverHasAnEmptyNameBesideTheOther) {
  // The name that goes is emptied first, alone; then come the other 48 fields and what to file it by.
  const std::vector<Bytes> records = contactRecords(named(u"Ann", u""), true);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0], u32(2) + u32(33) + sentText(u"") + u32(26) + sentText(u"Ann"));
  Bytes expected = u32(49) + u32(1) + kNoDate + u32(2) + kNoDate;
  for (std::uint32_t tag = 3; tag <= 50; ++tag) {
    if (tag == 26 || tag == 33) continue;
    expected = expected + u32(tag) + sentText(tag == 31 ? u"Ann" : u"");
  }
  EXPECT_EQ(records[1], expected + u32(26) + sentText(u"Ann"));
}

TEST(ContactRecord, emptiesBothNamesOneAfterTheOther) {
  Contact company;
  company.company = u"Acme";
  const std::vector<Bytes> records = contactRecords(company, true);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0], u32(2) + u32(31) + sentText(u"") + u32(26) + sentText(u"Acme"));
}

TEST(ContactRecord, isReadWithItsDays) {
  const Contact contact =
      readAll(received(17, {{31, u"Ann"}, {33, u"Lee"}, {4, u"Acme"}, {50, u"Hi"}}, kWedding, kBirthday));
  EXPECT_EQ(contact.oid, 17u);
  EXPECT_EQ(contact.anniversary, (LocalTime{1999, 12, 31}));
  EXPECT_EQ(contact.birthday, (LocalTime{1970, 5, 1}));
  EXPECT_EQ(contact.firstName, u"Ann");
  EXPECT_EQ(contact.lastName, u"Lee");
  EXPECT_EQ(contact.company, u"Acme");
  EXPECT_EQ(contact.body, u"Hi");
}

TEST(ContactRecord, isReadWithoutDays) {
  EXPECT_EQ(readAll(received(17, {})).birthday, LocalTime());
  EXPECT_EQ(readAll(received(17, {}, Bytes(16), kBirthday)).anniversary, LocalTime());
}

/// Tag, and the member that it belongs to.
const std::vector<std::pair<std::uint32_t, std::u16string Contact::*>> kTextTags{
    {3, &Contact::businessFax},
    {4, &Contact::company},
    {5, &Contact::department},
    {6, &Contact::email1},
    {7, &Contact::mobilePhone},
    {8, &Contact::officeLocation},
    {9, &Contact::pager},
    {10, &Contact::businessPhone},
    {11, &Contact::jobTitle},
    {12, &Contact::homePhone},
    {13, &Contact::email2},
    {14, &Contact::spouse},
    {15, &Contact::email3},
    {16, &Contact::home2Phone},
    {17, &Contact::homeFax},
    {18, &Contact::carPhone},
    {19, &Contact::assistantName},
    {20, &Contact::assistantPhone},
    {21, &Contact::children},
    {22, &Contact::categories},
    {23, &Contact::webPage},
    {24, &Contact::business2Phone},
    {25, &Contact::radioPhone},
    {27, &Contact::yomiCompany},
    {28, &Contact::yomiFirstName},
    {29, &Contact::yomiLastName},
    {30, &Contact::title},
    {31, &Contact::firstName},
    {32, &Contact::middleName},
    {33, &Contact::lastName},
    {34, &Contact::suffix},
    {35, &Contact::homeStreet},
    {36, &Contact::homeCity},
    {37, &Contact::homeState},
    {38, &Contact::homePostalCode},
    {39, &Contact::homeCountry},
    {40, &Contact::otherStreet},
    {41, &Contact::otherCity},
    {42, &Contact::otherState},
    {43, &Contact::otherPostalCode},
    {44, &Contact::otherCountry},
    {45, &Contact::businessStreet},
    {46, &Contact::businessCity},
    {47, &Contact::businessState},
    {48, &Contact::businessPostalCode},
    {49, &Contact::businessCountry},
    {50, &Contact::body},
};

TEST(ContactRecord, hasEachTextUnderItsTag) {
  for (const auto& [tag, member] : kTextTags) {
    Contact contact;
    contact.oid = 17;
    contact.*member = u"x";
    EXPECT_EQ(readAll(received(17, {{tag, u"x"}})), contact) << tag;
  }
}

TEST(ContactRecord, thatIsNoneBreaksTheProtocol) {
  EXPECT_EQ(errorOf(received(18, {})),
            "contact 17 was asked for, the device sends a record of 18 with result 1");
  EXPECT_EQ(errorOf(hex("01 00 11 00 00 00 01") + u32(26) + deviceText(u"Lee, Ann")),
            "contact 17 came with a field 26 that such a record can't have");
  EXPECT_EQ(errorOf(hex("01 00 11 00 00 00 01") + u32(2) + kBirthday),
            "contact 17 came without its anniversary");
  EXPECT_EQ(errorOf(received(17, {}, hex("CF 07 0D 00 05 00 1F 00  00 00 00 00 00 00 00 00"))),
            "contact 17 has no valid anniversary");
}

TEST(ContactRecord, isJsonForScripts) {
  const auto json =
      kContactKind.toJson(readAll(received(17, {{31, u"Ann"}, {16, u"1"}}, kNoDate, kBirthday)));
  EXPECT_EQ(json["oid"], 17);
  EXPECT_EQ(json["first_name"], "Ann");
  EXPECT_EQ(json["second_home_phone"], "1");
  EXPECT_EQ(json["birthday"], "1970-05-01T00:00:00");
  EXPECT_EQ(json["anniversary"], nullptr);
  EXPECT_EQ(json["company"], "");
  EXPECT_EQ(json.size(), 50u);  // the OID and the 49 fields
}

TEST(ContactRecord, isComparedFieldByField) {
  Contact sent = named(u"Ann", u"Lee");
  sent.fileAs = u"the device never sends this";
  Contact device = named(u"Ann", u"Le");
  device.birthday = {1970, 5, 1};
  const std::vector<Difference> differences = kContactKind.compare(sent, device);
  ASSERT_EQ(differences.size(), 2u);
  EXPECT_EQ(spell(differences[0]), "birthday: sent none, device has 1970-05-01 00:00");
  EXPECT_EQ(spell(differences[1]), "last name: sent \"Lee\", device has \"Le\"");
}

}  // namespace
