#include <gtest/gtest.h>

#include "tests/pim/item_test.h"
#include "tests/support/appointments.h"

namespace qorv {
namespace {

using namespace test;
using Names = std::vector<std::string>;

constexpr unsigned kCompanyName = 4;
constexpr unsigned kMobileTelephoneNumber = 7;
constexpr unsigned kFileAs = 26;
constexpr unsigned kFirstName = 31;
constexpr unsigned kLastName = 33;

class ContactWrite : public ContactTest {
 protected:
  static Bytes annLee() {
    return record(2).append(textField(kFirstName, u"Ann")).append(textField(kLastName, u"Lee"));
  }
};

TEST_F(ContactWrite, addAnswersTheNewOid) {
  // 02 01 add contact, reference 7, one field: tag 7, six bytes "123".
  const Bytes bytes = hex("02 01 07000000 01000000 07000000 06000000 3100 3200 3300");
  const Bytes answer = reply(bytes);
  ASSERT_EQ(answer.size(), 20u);
  const DWORD oid = answer.dwordAt(2);
  EXPECT_NE(oid, 0u);
  EXPECT_EQ(answer, Bytes().u8(1).u8(0).u32(oid).u32(7).zeros(10));
  EXPECT_EQ(stored(oid)["MobileTelephoneNumber"], "123");
}

TEST_F(ContactWrite, savesOnceAndAsksForTheOidAfterwards) {
  observeCalls();
  const DWORD oid = add(annLee());
  EXPECT_NE(oid, 0u);
  const Names all = callsOf({"IContact.", "IPOutlookApp.CreateItem", "IPOutlookApp.GetItemFromOid"});
  // The item is made, asked for as a contact, filled, filed, saved, and released once by each of its holders.
  EXPECT_EQ(all, (Names{"IPOutlookApp.CreateItem", "IContact.QueryInterface", "IContact.Release",
                        "IContact.put_FirstName", "IContact.put_LastName", "IContact.put_FileAs",
                        "IContact.Save", "IContact.get_Oid", "IContact.Release"}));
}

TEST_F(ContactWrite, changeFillsTheContactThatIsThere) {
  load({{"Oid", 17}, {"Department", "Sales"}, {"FirstName", "Bo"}, {"LastName", "Lee"}});
  observeCalls();
  EXPECT_EQ(changeReply(17, annLee()), hex("01 00 11000000 11000000"));
  EXPECT_EQ(callNames("IContact.Save").size(), 1u);
  const Json contact = stored(17);
  EXPECT_EQ(contact["FirstName"], "Ann");
  EXPECT_EQ(contact["Department"], "Sales");
  EXPECT_EQ(contact["FileAs"], "Lee, Ann");
}

struct Filing {
  const char* name;
  Bytes record;
  std::vector<std::string> puts;  ///< of FileAs
  std::string filedAs;
};

void PrintTo(const Filing& filing, std::ostream* out) {
  *out << filing.name;
}

class ContactFiling : public ContactWrite, public testing::WithParamInterface<Filing> {};

TEST_P(ContactFiling, goesByTheNamesOfTheRecord) {
  observeCalls();
  const DWORD oid = add(GetParam().record);
  std::vector<std::string> puts;
  for (const auto& call : calls("IContact.put_FileAs")) puts.push_back(call["args"][0]);
  EXPECT_EQ(puts, GetParam().puts);
  EXPECT_EQ(stored(oid)["FileAs"], GetParam().filedAs);
}

Bytes first(std::u16string_view text) {
  return textField(kFirstName, text);
}
Bytes last(std::u16string_view text) {
  return textField(kLastName, text);
}
Bytes company(std::u16string_view text) {
  return textField(kCompanyName, text);
}
Bytes fileAs(std::u16string_view text) {
  return textField(kFileAs, text);
}
// Where nothing is put the object model files the contact itself: under a name, or the company.
INSTANTIATE_TEST_SUITE_P(
    Names, ContactFiling,
    testing::Values(
        Filing{"bothNames", recordOf({first(u"Ann"), last(u"Lee")}), {"Lee, Ann"}, "Lee, Ann"},
        Filing{"bothNamesReplaceFileAs",
               recordOf({fileAs(u"Acme"), first(u"Ann"), last(u"Lee")}),
               {"Acme", "Lee, Ann"},
               "Lee, Ann"},
        Filing{"bothNamesReplaceALaterFileAs",
               recordOf({last(u"Lee"), first(u"Ann"), fileAs(u"Acme")}),
               {"Acme", "Lee, Ann"},
               "Lee, Ann"},
        Filing{"companyAlone", recordOf({company(u"Acme")}), {}, "Acme"},
        Filing{"firstNameAlone", recordOf({first(u"Ann")}), {}, "Ann"},
        Filing{"lastNameAndFileAs", recordOf({last(u"Lee"), fileAs(u"The Lees")}), {"The Lees"}, "The Lees"},
        Filing{"nothing", recordOf({}), {","}, ","},
        Filing{"otherFieldsOnly", recordOf({textField(kMobileTelephoneNumber, u"123")}), {","}, ","},
        Filing{"bothNamesEmpty", recordOf({first(u""), last(u"")}), {", ", ","}, ","},
        Filing{
            "bothNamesEmptyWithCompany", recordOf({company(u"Acme"), first(u""), last(u"")}), {", "}, ", "},
        Filing{"bothNamesEmptyWithFileAs",
               recordOf({fileAs(u"Acme"), first(u""), last(u"")}),
               {"Acme", ", "},
               ", "},
        Filing{"firstNameEmpty", recordOf({first(u""), last(u"Lee")}), {"Lee, "}, "Lee, "},
        Filing{"oneEmptyName", recordOf({last(u"")}), {","}, ","},
        Filing{"fileAsAlone", recordOf({fileAs(u"Acme")}), {"Acme"}, "Acme"},
        Filing{"emptyFileAs", recordOf({fileAs(u"")}), {"", ","}, ","},
        Filing{"theLastFileAsCounts", recordOf({fileAs(u"Acme"), fileAs(u"")}), {"Acme", "", ","}, ","},
        // Names that came twice add up and the later one is composed.
        Filing{"repeatedNames", recordOf({first(u"Ann"), last(u"Lee"), first(u"")}), {"Lee, "}, "Lee, "},
        // A text ends at its first NUL.
        Filing{"namesBehindANul",
               recordOf({first(std::u16string_view(u"\0Ann", 4)), last(std::u16string_view(u"\0Lee", 4))}),
               {", ", ","},
               ","}),
    [](const auto& filing) { return std::string(filing.param.name); });

TEST_F(ContactWrite, aChangeWithoutNamesFilesTheContactUnderAComma) {
  load({{"Oid", 17}, {"FirstName", "Ann"}, {"LastName", "Lee"}});
  changeReply(17, recordOf({textField(kMobileTelephoneNumber, u"123")}));
  EXPECT_EQ(stored(17)["FileAs"], ",");
  EXPECT_EQ(stored(17)["LastName"], "Lee");
}

TEST_F(ContactWrite, longNamesAreComposedWhole) {
  const std::u16string name(3000, u'x');
  const DWORD oid = add(recordOf({first(name), last(name)}));
  EXPECT_EQ(stored(oid)["FileAs"], std::string(3000, 'x') + ", " + std::string(3000, 'x'));
}

TEST_F(ContactWrite, tagsThatCarryNothingConsumeNoValue) {
  Bytes bytes = record(6).u32(0).u32(51).u32(100).u32(0xFFFFFFFF);
  bytes.append(first(u"Ann")).append(last(u"Lee"));
  EXPECT_EQ(stored(add(bytes))["FileAs"], "Lee, Ann");
}

TEST_F(ContactWrite, textsOfNoneAndOfAnOddNumberOfBytes) {
  load({{"Oid", 17}, {"FirstName", "Ann"}, {"LastName", "Lee"}});
  // Tag 31 with no byte empties the property; tag 33 with three bytes has "A" and half a "B", whose other half is 0.
  EXPECT_EQ(changeReply(17, record(2).append(hex("1F000000 00000000 21000000 03000000 4100 42"))),
            hex("01 00 11000000 11000000"));
  EXPECT_EQ(stored(17)["FirstName"], "");
  EXPECT_EQ(stored(17)["LastName"], "AB");
}

TEST_F(ContactWrite, datesKeepTheirTimeOfDay) {
  observeCalls();
  const DWORD oid = add(record(1).append(timeField(2, 18, 45)));
  // 2005-03-14 is day 38425 of the object model's count; 18:45 is 0.78125 of a day.
  EXPECT_EQ(argumentsOf("IContact.put_Birthday"), Json::parse("[[38425.78125]]"));
  EXPECT_EQ(stored(oid)["Birthday"], "2005-03-14T18:45:00.000");
}

TEST_F(ContactWrite, theNoDateValueTakesADateAway) {
  load({{"Oid", 17}, {"Birthday", "1970-05-01T00:00:00.000"}, {"Anniversary", "1999-01-01T00:00:00.000"}});
  changeReply(17, record(1).append(Bytes().u32(2).time(4501, 1, 0, 1)));
  EXPECT_FALSE(stored(17).contains("Birthday"));
  EXPECT_TRUE(stored(17).contains("Anniversary"));
}

TEST_F(ContactWrite, aTimeThatIsNoDateLeavesItsProperty) {
  load({{"Oid", 17}, {"Birthday", "1970-05-01T00:00:00.000"}});
  changeReply(17, record(1).append(Bytes().u32(2).time(2005, 2, 0, 30)));
  EXPECT_EQ(stored(17)["Birthday"], "1970-05-01T00:00:00.000");
}

TEST_F(ContactWrite, failedSaveAnswersResultZeroAndTellsNobody) {
  fault("IContact.Save=0x80004005");
  observeCalls();
  EXPECT_EQ(addReply(annLee()), hex("00 00 00000000 07000000"));
  EXPECT_TRUE(callNames("MessageBoxW").empty());
  EXPECT_TRUE(callNames("IContact.get_Oid").empty());
  EXPECT_EQ(callNames("IContact.Save").size(), 1u);
  clearFaults();
  EXPECT_EQ(storedItems(), Json::array());
}

TEST_F(ContactWrite, noRefusalIsTriedAgain) {
  fault("IContact.Save=0x80040067");
  observeCalls();
  EXPECT_EQ(addReply(annLee()), hex("00 00 00000000 07000000"));
  EXPECT_EQ(callNames("IContact.Save").size(), 1u);
}

TEST_F(ContactWrite, failedSaveOfAChangeKeepsTheOidOfTheRequestAndTheContact) {
  load({{"Oid", 17}, {"FirstName", "Bo"}});
  fault("IContact.Save=0x80004005");
  EXPECT_EQ(changeReply(17, annLee()), hex("00 00 11000000 11000000"));
  EXPECT_EQ(stored(17)["FirstName"], "Bo");
}

TEST_F(ContactWrite, anyResultThatIsNoFailureCountsAsSaved) {
  load({{"Oid", 17}, {"FirstName", "Bo"}});
  fault("IContact.Save=1");
  EXPECT_EQ(changeReply(17, annLee()), hex("01 00 11000000 11000000"));
}

TEST_F(ContactWrite, aRecordThatIsCutShortIsNotSaved) {
  load({{"Oid", 17}, {"FirstName", "Bo"}});
  observeCalls();
  const Bytes whole = recordOf({first(u"Ann"), timeField(1, 9), textField(50, u"Body")});
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_EQ(changeReply(17, whole.slice(0, size)), hex("00 00 11000000 11000000")) << size;
    EXPECT_TRUE(callNames("IContact.Save").empty()) << size;
    EXPECT_EQ(addReply(whole.slice(0, size)), hex("00 00 00000000 07000000")) << size;
  }
  EXPECT_EQ(storedItems().size(), 1u);
  EXPECT_EQ(stored(17)["FirstName"], "Bo");
}

TEST_F(ContactWrite, batchGoesOnBehindAContactThatIsNotSaved) {
  load({{"Oid", 17}, {"FirstName", "Bo"}});
  fault("IContact.Save#2=0x80004005*1");
  const Bytes answer = reply(command(15)
                                 .u32(3)
                                 .append(Bytes().u8(2).u8(1).u32(70).append(annLee()))
                                 .append(Bytes().u8(2).u8(1).u32(71).append(recordOf({company(u"Acme")})))
                                 .append(Bytes().u8(3).u8(1).u32(17).append(annLee())));
  ASSERT_EQ(answer.size(), 30u);
  const DWORD added = answer.dwordAt(2);
  EXPECT_EQ(answer, Bytes()
                        .append(Bytes().u8(1).u8(0).u32(added).u32(70))
                        .append(Bytes().u8(0).u8(0).u32(0).u32(71))
                        .append(Bytes().u8(1).u8(0).u32(17).u32(17)));
  EXPECT_EQ(stored(added)["LastName"], "Lee");
  EXPECT_EQ(stored(17)["LastName"], "Lee");
  EXPECT_EQ(storedItems().size(), 2u);
}

TEST_F(ContactWrite, batchEndsAtAnEntryThatIsNotThereOrOfAnotherType) {
  const Bytes one = Bytes().u8(2).u8(1).u32(70).append(annLee());
  for (const Bytes& bad :
       {Bytes().u8(3).u8(1).u32(4711).append(annLee()), Bytes().u8(2).u8(3).u32(71).append(annLee())}) {
    const Bytes answer = reply(command(15).u32(3).append(one).append(bad).append(one));
    ASSERT_EQ(answer.size(), 12u);
    EXPECT_EQ(answer.slice(10, 2), hex("00 03"));
  }
}

TEST_F(ContactWrite, itemsOfOtherTypesAreNotFound) {
  emulator::loadSnapshot(device(), R"({"tasks": [{"Oid": 18}], "appointments": [{"Oid": 19}]})");
  for (const DWORD oid : {18u, 19u}) {
    EXPECT_EQ(changeReply(oid, annLee()), hex("00 03 00000000 00000000"));
    EXPECT_EQ(read(oid), hex("00 03"));
    EXPECT_EQ(reply(command(4).u32(oid)), hex("00 03"));
  }
}

TEST_F(ContactWrite, oneContactIsDeleted) {
  load({{"Oid", 17}});
  load({{"Oid", 18}});
  EXPECT_EQ(reply(command(4).u32(17)), hex("01 00"));
  EXPECT_EQ(reply(command(17).u32(2).u32(17).u32(18)), hex("12000000"));
  EXPECT_EQ(storedItems(), Json::array());
}

}  // namespace
}  // namespace qorv
