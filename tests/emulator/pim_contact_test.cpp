// Contacts: every property through its own slots, and the name they are filed under.
#include "emulator/pim/contact_properties.h"
#include "tests/emulator/pim_test.h"

namespace emulator {
namespace {

using test::date;

class Contact : public test::PimTest {
 protected:
  std::u16string fileAsOnceSaved(ComReference<IContact>& contact) {
    EXPECT_EQ(contact->Save(), S_OK);
    return text(contact, &IContact::get_FileAs);
  }
};

// The property's own value, so that two slots that were mixed up show.
std::u16string sample(std::string_view name) {
  return std::u16string(name.begin(), name.end());
}

struct TextSlot {
  std::string_view name;
  HRESULT (IContact::*get)(BSTR*);
  HRESULT (IContact::*put)(BSTR);
};

constexpr TextSlot kTextSlots[] = {
    {"BusinessFaxNumber", &IContact::get_BusinessFaxNumber, &IContact::put_BusinessFaxNumber},
    {"CompanyName", &IContact::get_CompanyName, &IContact::put_CompanyName},
    {"Department", &IContact::get_Department, &IContact::put_Department},
    {"Email1Address", &IContact::get_Email1Address, &IContact::put_Email1Address},
    {"MobileTelephoneNumber", &IContact::get_MobileTelephoneNumber, &IContact::put_MobileTelephoneNumber},
    {"OfficeLocation", &IContact::get_OfficeLocation, &IContact::put_OfficeLocation},
    {"PagerNumber", &IContact::get_PagerNumber, &IContact::put_PagerNumber},
    {"BusinessTelephoneNumber", &IContact::get_BusinessTelephoneNumber,
     &IContact::put_BusinessTelephoneNumber},
    {"JobTitle", &IContact::get_JobTitle, &IContact::put_JobTitle},
    {"HomeTelephoneNumber", &IContact::get_HomeTelephoneNumber, &IContact::put_HomeTelephoneNumber},
    {"Email2Address", &IContact::get_Email2Address, &IContact::put_Email2Address},
    {"Spouse", &IContact::get_Spouse, &IContact::put_Spouse},
    {"Email3Address", &IContact::get_Email3Address, &IContact::put_Email3Address},
    {"Home2TelephoneNumber", &IContact::get_Home2TelephoneNumber, &IContact::put_Home2TelephoneNumber},
    {"HomeFaxNumber", &IContact::get_HomeFaxNumber, &IContact::put_HomeFaxNumber},
    {"CarTelephoneNumber", &IContact::get_CarTelephoneNumber, &IContact::put_CarTelephoneNumber},
    {"AssistantName", &IContact::get_AssistantName, &IContact::put_AssistantName},
    {"AssistantTelephoneNumber", &IContact::get_AssistantTelephoneNumber,
     &IContact::put_AssistantTelephoneNumber},
    {"Children", &IContact::get_Children, &IContact::put_Children},
    {"Categories", &IContact::get_Categories, &IContact::put_Categories},
    {"WebPage", &IContact::get_WebPage, &IContact::put_WebPage},
    {"Business2TelephoneNumber", &IContact::get_Business2TelephoneNumber,
     &IContact::put_Business2TelephoneNumber},
    {"Title", &IContact::get_Title, &IContact::put_Title},
    {"FirstName", &IContact::get_FirstName, &IContact::put_FirstName},
    {"MiddleName", &IContact::get_MiddleName, &IContact::put_MiddleName},
    {"LastName", &IContact::get_LastName, &IContact::put_LastName},
    {"Suffix", &IContact::get_Suffix, &IContact::put_Suffix},
    {"HomeAddressStreet", &IContact::get_HomeAddressStreet, &IContact::put_HomeAddressStreet},
    {"HomeAddressCity", &IContact::get_HomeAddressCity, &IContact::put_HomeAddressCity},
    {"HomeAddressState", &IContact::get_HomeAddressState, &IContact::put_HomeAddressState},
    {"HomeAddressPostalCode", &IContact::get_HomeAddressPostalCode, &IContact::put_HomeAddressPostalCode},
    {"HomeAddressCountry", &IContact::get_HomeAddressCountry, &IContact::put_HomeAddressCountry},
    {"OtherAddressStreet", &IContact::get_OtherAddressStreet, &IContact::put_OtherAddressStreet},
    {"OtherAddressCity", &IContact::get_OtherAddressCity, &IContact::put_OtherAddressCity},
    {"OtherAddressState", &IContact::get_OtherAddressState, &IContact::put_OtherAddressState},
    {"OtherAddressPostalCode", &IContact::get_OtherAddressPostalCode, &IContact::put_OtherAddressPostalCode},
    {"OtherAddressCountry", &IContact::get_OtherAddressCountry, &IContact::put_OtherAddressCountry},
    {"BusinessAddressStreet", &IContact::get_BusinessAddressStreet, &IContact::put_BusinessAddressStreet},
    {"BusinessAddressCity", &IContact::get_BusinessAddressCity, &IContact::put_BusinessAddressCity},
    {"BusinessAddressState", &IContact::get_BusinessAddressState, &IContact::put_BusinessAddressState},
    {"BusinessAddressPostalCode", &IContact::get_BusinessAddressPostalCode,
     &IContact::put_BusinessAddressPostalCode},
    {"BusinessAddressCountry", &IContact::get_BusinessAddressCountry, &IContact::put_BusinessAddressCountry},
    {"RadioTelephoneNumber", &IContact::get_RadioTelephoneNumber, &IContact::put_RadioTelephoneNumber},
    {"FileAs", &IContact::get_FileAs, &IContact::put_FileAs},
    {"Body", &IContact::get_Body, &IContact::put_Body},
    {"YomiCompanyName", &IContact::get_YomiCompanyName, &IContact::put_YomiCompanyName},
    {"YomiFirstName", &IContact::get_YomiFirstName, &IContact::put_YomiFirstName},
    {"YomiLastName", &IContact::get_YomiLastName, &IContact::put_YomiLastName},
};

TEST_F(Contact, keepsEveryPropertyInItsOwnPlace) {
  auto contact = newContact();
  EXPECT_EQ(contact->put_Birthday(date(1970, 5, 1)), S_OK);
  EXPECT_EQ(contact->put_Anniversary(date(1995, 6, 2)), S_OK);
  for (const TextSlot& slot : kTextSlots)
    EXPECT_EQ(put(contact, slot.put, sample(slot.name)), S_OK) << slot.name;
  ASSERT_EQ(contact->Save(), S_OK);

  auto again = find<IContact>(number(contact, &IContact::get_Oid));
  EXPECT_EQ(moment(again, &IContact::get_Birthday), date(1970, 5, 1));
  EXPECT_EQ(moment(again, &IContact::get_Anniversary), date(1995, 6, 2));
  for (const TextSlot& slot : kTextSlots) EXPECT_EQ(text(again, slot.get), sample(slot.name)) << slot.name;
}

TEST_F(Contact, hasFiftyPropertiesInTheDeclaredOrder) {
  // Two dates, 48 texts, and what the device keeps for itself.
  ASSERT_EQ(std::size(kTextSlots), 48u);
  ASSERT_EQ(kContactProperties.size(), 51u);
  for (std::size_t i = 0; i < std::size(kTextSlots); ++i) {
    EXPECT_EQ(kContactProperties[i + 2].name, kTextSlots[i].name);
  }
  EXPECT_TRUE(kContactProperties.back().isInternal);
}

TEST_F(Contact, beginsEmptyAndWithoutDates) {
  auto contact = newContact();
  EXPECT_EQ(moment(contact, &IContact::get_Birthday), kNoDate);
  EXPECT_EQ(moment(contact, &IContact::get_Anniversary), kNoDate);
  EXPECT_EQ(text(contact, &IContact::get_FileAs), u"");
}

TEST_F(Contact, takesNoDateBackAsADate) {
  auto contact = newContact();
  EXPECT_EQ(contact->put_Birthday(date(1970, 5, 1)), S_OK);
  EXPECT_EQ(contact->put_Birthday(kNoDate), S_OK);
  EXPECT_EQ(moment(contact, &IContact::get_Birthday), kNoDate);
  EXPECT_EQ(contact->put_Birthday(-3.0), E_INVALIDARG);
}

TEST_F(Contact, isFiledUnderLastAndFirstName) {
  auto contact = newContact();
  put(contact, &IContact::put_CompanyName, u"Acme");
  put(contact, &IContact::put_FirstName, u"Ann");
  EXPECT_EQ(fileAsOnceSaved(contact), u"Ann");
  put(contact, &IContact::put_LastName, u"Lee");
  EXPECT_EQ(fileAsOnceSaved(contact), u"Lee, Ann");
  put(contact, &IContact::put_FirstName, u"");
  EXPECT_EQ(fileAsOnceSaved(contact), u"Lee");
}

TEST_F(Contact, isFiledUnderItsCompanyOrItsFirstAddressWithoutAName) {
  auto contact = newContact();
  EXPECT_EQ(fileAsOnceSaved(contact), u"");
  put(contact, &IContact::put_Email3Address, u"third@example.org");
  EXPECT_EQ(fileAsOnceSaved(contact), u"third@example.org");
  put(contact, &IContact::put_Email1Address, u"first@example.org");
  EXPECT_EQ(fileAsOnceSaved(contact), u"first@example.org");
  put(contact, &IContact::put_CompanyName, u"Acme");
  EXPECT_EQ(fileAsOnceSaved(contact), u"Acme");
}

TEST_F(Contact, staysFiledAsItWasPut) {
  auto contact = newContact();
  put(contact, &IContact::put_FileAs, u",");
  put(contact, &IContact::put_FirstName, u"Ann");
  EXPECT_EQ(fileAsOnceSaved(contact), u",");
  auto again = find<IContact>(number(contact, &IContact::get_Oid));
  put(again, &IContact::put_LastName, u"Lee");
  EXPECT_EQ(fileAsOnceSaved(again), u",");
}

}  // namespace
}  // namespace emulator
