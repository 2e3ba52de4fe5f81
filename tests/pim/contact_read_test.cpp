#include <gtest/gtest.h>

#include "tests/pim/item_test.h"

namespace qorv {
namespace {

using namespace test;

constexpr unsigned kBusinessFaxNumber = 3;
constexpr unsigned kFileAs = 26;
constexpr unsigned kHomeAddressStreet = 35;

/// Header, two dates of 20 bytes, 47 empty texts of 4 + 4 + 2 bytes.
constexpr std::size_t kEmptyRecord = 7 + 2 * 20 + 47 * 10;
/// What lies in front of the first text.
constexpr std::size_t kFirstText = 7 + 2 * 20;

class ContactRead : public ContactTest {
 protected:
  /// A contact without dates and texts, but for one.
  void loadWith(DWORD oid, const std::string& property, std::size_t characters) {
    load({{"Oid", oid}, {property, std::string(characters, 'x')}});
  }
  /// The same as a record; `left out` is the tag of a text that did not fit, 0 for none.
  static Bytes emptyRecord(DWORD oid, unsigned leftOut = 0) {
    Bytes bytes = Bytes().u8(1).u8(0).u32(oid).u8(leftOut == 0 ? 49 : 48);
    // 4501-01-01 stands for no date: day 949998 after 1899-12-30, a Saturday, and a multiple of seven days later.
    for (const unsigned tag : {1u, 2u}) bytes.u32(tag).time(4501, 1, 6, 1);
    for (unsigned tag = 3; tag <= 50; ++tag) {
      if (tag != kFileAs && tag != leftOut) bytes.u32(tag).terminatedText(u"");
    }
    return bytes;
  }
};

TEST_F(ContactRead, anEmptyContactHasAllItsFields) {
  load({{"Oid", 17}});
  EXPECT_EQ(read(17), emptyRecord(17));
  EXPECT_EQ(read(17).size(), kEmptyRecord);
}

TEST_F(ContactRead, whatIsNotThereIsRefused) {
  EXPECT_EQ(read(17), hex("00 03"));
}

TEST_F(ContactRead, datesHaveTheirTimeOfDay) {
  load({{"Oid", 17}, {"Birthday", "2005-03-14T18:45:30.000"}});
  // 2005-03-14 was a Monday.
  EXPECT_EQ(read(17).slice(27, 20), Bytes().u32(2).time(2005, 3, 1, 14, 18, 45, 30));
}

TEST_F(ContactRead, aTextThatEndsAtTheLimitIsTheLast) {
  // 47 + (n + 1) * 2 <= 110592: 55271 characters are the longest first text. It ends at 47 + 8 + 110544, past the
  // limit, so that not even an empty text fits behind it.
  loadWith(17, "BusinessFaxNumber", 55271);
  const Bytes answer = read(17);
  EXPECT_EQ(answer.slice(0, 7), hex("01 00 11000000 03"));
  ASSERT_EQ(answer.size(), kFirstText + 8 + 110544);
  EXPECT_EQ(answer.slice(kFirstText, 8), Bytes().u32(kBusinessFaxNumber).u32(110544));
}

TEST_F(ContactRead, aTextBeyondTheLimitIsLeftOutAndTheOthersAreKept) {
  loadWith(17, "BusinessFaxNumber", 55272);
  EXPECT_EQ(read(17), emptyRecord(17, kBusinessFaxNumber));
  loadWith(18, "HomeAddressStreet", 60000);
  EXPECT_EQ(read(18), emptyRecord(18, kHomeAddressStreet));
}

TEST_F(ContactRead, aListEndsWithTheContactThatLostAText) {
  load({{"Oid", 17}});
  loadWith(18, "HomeAddressStreet", 60000);
  // The record of 18 is there but not counted; the list's last byte is its field count, 48.
  const Bytes expected =
      hex("01 00 01000000 30").append(emptyRecord(17)).append(emptyRecord(18, kHomeAddressStreet));
  EXPECT_EQ(reply(command(16).u32(3).u32(17).u32(18).u32(17)), expected);
}

TEST_F(ContactRead, aListOfContactsStopsAtAnItemOfAnotherType) {
  load({{"Oid", 17}});
  emulator::loadSnapshot(device(), R"({"tasks": [{"Oid": 18}]})");
  EXPECT_EQ(reply(command(16).u32(2).u32(17).u32(17)),
            hex("01 00 02000000 31").append(emptyRecord(17)).append(emptyRecord(17)));
  EXPECT_EQ(reply(command(16).u32(2).u32(17).u32(18)),
            hex("01 00 00000000 00").append(emptyRecord(17)).zeros(7));
}

TEST_F(ContactRead, aListFillsTheReplyUpToTheLimitForTexts) {
  load({{"Oid", 17}});
  Bytes oids;
  for (int i = 0; i < 300; ++i) oids.u32(17);
  // 7 + 213 * 517 = 110128 bytes lie under the limit of 110592. The 214th record has room for texts as long as one
  // of 2 bytes ends there: 110128 + 47 + 10 * i + 2 <= 110592 holds for i up to 41, so 42 texts and two dates.
  const Bytes answer = reply(command(16).u32(300).append(oids));
  EXPECT_EQ(answer.slice(0, 7), hex("01 00 D5000000 2C"));
  EXPECT_EQ(answer.size(), 110128u + kFirstText + 42 * 10);
}

}  // namespace
}  // namespace qorv
