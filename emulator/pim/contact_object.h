// A contact as the object model gives it.
#pragma once

#include "emulator/pim/contact_properties.h"
#include "emulator/pim/item_object.h"
#include "platform/contact.h"

namespace emulator {

class ContactObject final : public ItemObject<IContact, kContactProperties> {
 public:
  ContactObject(ModelContext& context, std::unique_ptr<ItemSource> source)
      : ItemObject(context, ModelClass::Contact, ObjectKind::Contact, std::move(source)) {}

  HRESULT get_Birthday(DATE* out) override { return get<"Birthday">(out); }
  HRESULT get_Anniversary(DATE* out) override { return get<"Anniversary">(out); }
  HRESULT get_BusinessFaxNumber(BSTR* out) override { return get<"BusinessFaxNumber">(out); }
  HRESULT get_CompanyName(BSTR* out) override { return get<"CompanyName">(out); }
  HRESULT get_Department(BSTR* out) override { return get<"Department">(out); }
  HRESULT get_Email1Address(BSTR* out) override { return get<"Email1Address">(out); }
  HRESULT get_MobileTelephoneNumber(BSTR* out) override { return get<"MobileTelephoneNumber">(out); }
  HRESULT get_OfficeLocation(BSTR* out) override { return get<"OfficeLocation">(out); }
  HRESULT get_PagerNumber(BSTR* out) override { return get<"PagerNumber">(out); }
  HRESULT get_BusinessTelephoneNumber(BSTR* out) override { return get<"BusinessTelephoneNumber">(out); }
  HRESULT get_JobTitle(BSTR* out) override { return get<"JobTitle">(out); }
  HRESULT get_HomeTelephoneNumber(BSTR* out) override { return get<"HomeTelephoneNumber">(out); }
  HRESULT get_Email2Address(BSTR* out) override { return get<"Email2Address">(out); }
  HRESULT get_Spouse(BSTR* out) override { return get<"Spouse">(out); }
  HRESULT get_Email3Address(BSTR* out) override { return get<"Email3Address">(out); }
  HRESULT get_Home2TelephoneNumber(BSTR* out) override { return get<"Home2TelephoneNumber">(out); }
  HRESULT get_HomeFaxNumber(BSTR* out) override { return get<"HomeFaxNumber">(out); }
  HRESULT get_CarTelephoneNumber(BSTR* out) override { return get<"CarTelephoneNumber">(out); }
  HRESULT get_AssistantName(BSTR* out) override { return get<"AssistantName">(out); }
  HRESULT get_AssistantTelephoneNumber(BSTR* out) override { return get<"AssistantTelephoneNumber">(out); }
  HRESULT get_Children(BSTR* out) override { return get<"Children">(out); }
  HRESULT get_Categories(BSTR* out) override { return get<"Categories">(out); }
  HRESULT get_WebPage(BSTR* out) override { return get<"WebPage">(out); }
  HRESULT get_Business2TelephoneNumber(BSTR* out) override { return get<"Business2TelephoneNumber">(out); }
  HRESULT get_Title(BSTR* out) override { return get<"Title">(out); }
  HRESULT get_FirstName(BSTR* out) override { return get<"FirstName">(out); }
  HRESULT get_MiddleName(BSTR* out) override { return get<"MiddleName">(out); }
  HRESULT get_LastName(BSTR* out) override { return get<"LastName">(out); }
  HRESULT get_Suffix(BSTR* out) override { return get<"Suffix">(out); }
  HRESULT get_HomeAddressStreet(BSTR* out) override { return get<"HomeAddressStreet">(out); }
  HRESULT get_HomeAddressCity(BSTR* out) override { return get<"HomeAddressCity">(out); }
  HRESULT get_HomeAddressState(BSTR* out) override { return get<"HomeAddressState">(out); }
  HRESULT get_HomeAddressPostalCode(BSTR* out) override { return get<"HomeAddressPostalCode">(out); }
  HRESULT get_HomeAddressCountry(BSTR* out) override { return get<"HomeAddressCountry">(out); }
  HRESULT get_OtherAddressStreet(BSTR* out) override { return get<"OtherAddressStreet">(out); }
  HRESULT get_OtherAddressCity(BSTR* out) override { return get<"OtherAddressCity">(out); }
  HRESULT get_OtherAddressState(BSTR* out) override { return get<"OtherAddressState">(out); }
  HRESULT get_OtherAddressPostalCode(BSTR* out) override { return get<"OtherAddressPostalCode">(out); }
  HRESULT get_OtherAddressCountry(BSTR* out) override { return get<"OtherAddressCountry">(out); }
  HRESULT get_BusinessAddressStreet(BSTR* out) override { return get<"BusinessAddressStreet">(out); }
  HRESULT get_BusinessAddressCity(BSTR* out) override { return get<"BusinessAddressCity">(out); }
  HRESULT get_BusinessAddressState(BSTR* out) override { return get<"BusinessAddressState">(out); }
  HRESULT get_BusinessAddressPostalCode(BSTR* out) override { return get<"BusinessAddressPostalCode">(out); }
  HRESULT get_BusinessAddressCountry(BSTR* out) override { return get<"BusinessAddressCountry">(out); }
  HRESULT get_RadioTelephoneNumber(BSTR* out) override { return get<"RadioTelephoneNumber">(out); }
  HRESULT get_FileAs(BSTR* out) override { return get<"FileAs">(out); }
  HRESULT get_Body(BSTR* out) override { return get<"Body">(out); }
  HRESULT get_YomiCompanyName(BSTR* out) override { return get<"YomiCompanyName">(out); }
  HRESULT get_YomiFirstName(BSTR* out) override { return get<"YomiFirstName">(out); }
  HRESULT get_YomiLastName(BSTR* out) override { return get<"YomiLastName">(out); }

  HRESULT put_Birthday(DATE in) override { return put<"Birthday">(in); }
  HRESULT put_Anniversary(DATE in) override { return put<"Anniversary">(in); }
  HRESULT put_BusinessFaxNumber(BSTR in) override { return put<"BusinessFaxNumber">(in); }
  HRESULT put_CompanyName(BSTR in) override { return put<"CompanyName">(in); }
  HRESULT put_Department(BSTR in) override { return put<"Department">(in); }
  HRESULT put_Email1Address(BSTR in) override { return put<"Email1Address">(in); }
  HRESULT put_MobileTelephoneNumber(BSTR in) override { return put<"MobileTelephoneNumber">(in); }
  HRESULT put_OfficeLocation(BSTR in) override { return put<"OfficeLocation">(in); }
  HRESULT put_PagerNumber(BSTR in) override { return put<"PagerNumber">(in); }
  HRESULT put_BusinessTelephoneNumber(BSTR in) override { return put<"BusinessTelephoneNumber">(in); }
  HRESULT put_JobTitle(BSTR in) override { return put<"JobTitle">(in); }
  HRESULT put_HomeTelephoneNumber(BSTR in) override { return put<"HomeTelephoneNumber">(in); }
  HRESULT put_Email2Address(BSTR in) override { return put<"Email2Address">(in); }
  HRESULT put_Spouse(BSTR in) override { return put<"Spouse">(in); }
  HRESULT put_Email3Address(BSTR in) override { return put<"Email3Address">(in); }
  HRESULT put_Home2TelephoneNumber(BSTR in) override { return put<"Home2TelephoneNumber">(in); }
  HRESULT put_HomeFaxNumber(BSTR in) override { return put<"HomeFaxNumber">(in); }
  HRESULT put_CarTelephoneNumber(BSTR in) override { return put<"CarTelephoneNumber">(in); }
  HRESULT put_AssistantName(BSTR in) override { return put<"AssistantName">(in); }
  HRESULT put_AssistantTelephoneNumber(BSTR in) override { return put<"AssistantTelephoneNumber">(in); }
  HRESULT put_Children(BSTR in) override { return put<"Children">(in); }
  HRESULT put_Categories(BSTR in) override { return put<"Categories">(in); }
  HRESULT put_WebPage(BSTR in) override { return put<"WebPage">(in); }
  HRESULT put_Business2TelephoneNumber(BSTR in) override { return put<"Business2TelephoneNumber">(in); }
  HRESULT put_Title(BSTR in) override { return put<"Title">(in); }
  HRESULT put_FirstName(BSTR in) override { return put<"FirstName">(in); }
  HRESULT put_MiddleName(BSTR in) override { return put<"MiddleName">(in); }
  HRESULT put_LastName(BSTR in) override { return put<"LastName">(in); }
  HRESULT put_Suffix(BSTR in) override { return put<"Suffix">(in); }
  HRESULT put_HomeAddressStreet(BSTR in) override { return put<"HomeAddressStreet">(in); }
  HRESULT put_HomeAddressCity(BSTR in) override { return put<"HomeAddressCity">(in); }
  HRESULT put_HomeAddressState(BSTR in) override { return put<"HomeAddressState">(in); }
  HRESULT put_HomeAddressPostalCode(BSTR in) override { return put<"HomeAddressPostalCode">(in); }
  HRESULT put_HomeAddressCountry(BSTR in) override { return put<"HomeAddressCountry">(in); }
  HRESULT put_OtherAddressStreet(BSTR in) override { return put<"OtherAddressStreet">(in); }
  HRESULT put_OtherAddressCity(BSTR in) override { return put<"OtherAddressCity">(in); }
  HRESULT put_OtherAddressState(BSTR in) override { return put<"OtherAddressState">(in); }
  HRESULT put_OtherAddressPostalCode(BSTR in) override { return put<"OtherAddressPostalCode">(in); }
  HRESULT put_OtherAddressCountry(BSTR in) override { return put<"OtherAddressCountry">(in); }
  HRESULT put_BusinessAddressStreet(BSTR in) override { return put<"BusinessAddressStreet">(in); }
  HRESULT put_BusinessAddressCity(BSTR in) override { return put<"BusinessAddressCity">(in); }
  HRESULT put_BusinessAddressState(BSTR in) override { return put<"BusinessAddressState">(in); }
  HRESULT put_BusinessAddressPostalCode(BSTR in) override { return put<"BusinessAddressPostalCode">(in); }
  HRESULT put_BusinessAddressCountry(BSTR in) override { return put<"BusinessAddressCountry">(in); }
  HRESULT put_RadioTelephoneNumber(BSTR in) override { return put<"RadioTelephoneNumber">(in); }
  HRESULT put_FileAs(BSTR in) override { return put<"FileAs">(in); }
  HRESULT put_Body(BSTR in) override { return put<"Body">(in); }
  HRESULT put_YomiCompanyName(BSTR in) override { return put<"YomiCompanyName">(in); }
  HRESULT put_YomiFirstName(BSTR in) override { return put<"YomiFirstName">(in); }
  HRESULT put_YomiLastName(BSTR in) override { return put<"YomiLastName">(in); }
};

}  // namespace emulator
