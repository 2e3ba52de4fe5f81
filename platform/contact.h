// The object model's contact: 50 properties, getters first, then setters in the same order.
#pragma once

#include "platform/com.h"
#include "platform/property_database.h"

class IPOutlookApp;

/// Texts that getters hand out are freed with IPOutlookApp::SysFreeString. Puts are held until Save.
class IContact : public IDispatch {
 public:
  static constexpr IID kIid{0x7F804E40, 0x2010, 0x11D2, {0x8F, 0x18, 0x00, 0x00, 0xF8, 0x7A, 0x43, 0x35}};

  virtual HRESULT get_Birthday(DATE* value) = 0;
  virtual HRESULT get_Anniversary(DATE* value) = 0;
  virtual HRESULT get_BusinessFaxNumber(BSTR* value) = 0;
  virtual HRESULT get_CompanyName(BSTR* value) = 0;
  virtual HRESULT get_Department(BSTR* value) = 0;
  virtual HRESULT get_Email1Address(BSTR* value) = 0;
  virtual HRESULT get_MobileTelephoneNumber(BSTR* value) = 0;
  virtual HRESULT get_OfficeLocation(BSTR* value) = 0;
  virtual HRESULT get_PagerNumber(BSTR* value) = 0;
  virtual HRESULT get_BusinessTelephoneNumber(BSTR* value) = 0;
  virtual HRESULT get_JobTitle(BSTR* value) = 0;
  virtual HRESULT get_HomeTelephoneNumber(BSTR* value) = 0;
  virtual HRESULT get_Email2Address(BSTR* value) = 0;
  virtual HRESULT get_Spouse(BSTR* value) = 0;
  virtual HRESULT get_Email3Address(BSTR* value) = 0;
  virtual HRESULT get_Home2TelephoneNumber(BSTR* value) = 0;
  virtual HRESULT get_HomeFaxNumber(BSTR* value) = 0;
  virtual HRESULT get_CarTelephoneNumber(BSTR* value) = 0;
  virtual HRESULT get_AssistantName(BSTR* value) = 0;
  virtual HRESULT get_AssistantTelephoneNumber(BSTR* value) = 0;
  virtual HRESULT get_Children(BSTR* value) = 0;
  virtual HRESULT get_Categories(BSTR* value) = 0;
  virtual HRESULT get_WebPage(BSTR* value) = 0;
  virtual HRESULT get_Business2TelephoneNumber(BSTR* value) = 0;
  virtual HRESULT get_Title(BSTR* value) = 0;
  virtual HRESULT get_FirstName(BSTR* value) = 0;
  virtual HRESULT get_MiddleName(BSTR* value) = 0;
  virtual HRESULT get_LastName(BSTR* value) = 0;
  virtual HRESULT get_Suffix(BSTR* value) = 0;
  virtual HRESULT get_HomeAddressStreet(BSTR* value) = 0;
  virtual HRESULT get_HomeAddressCity(BSTR* value) = 0;
  virtual HRESULT get_HomeAddressState(BSTR* value) = 0;
  virtual HRESULT get_HomeAddressPostalCode(BSTR* value) = 0;
  virtual HRESULT get_HomeAddressCountry(BSTR* value) = 0;
  virtual HRESULT get_OtherAddressStreet(BSTR* value) = 0;
  virtual HRESULT get_OtherAddressCity(BSTR* value) = 0;
  virtual HRESULT get_OtherAddressState(BSTR* value) = 0;
  virtual HRESULT get_OtherAddressPostalCode(BSTR* value) = 0;
  virtual HRESULT get_OtherAddressCountry(BSTR* value) = 0;
  virtual HRESULT get_BusinessAddressStreet(BSTR* value) = 0;
  virtual HRESULT get_BusinessAddressCity(BSTR* value) = 0;
  virtual HRESULT get_BusinessAddressState(BSTR* value) = 0;
  virtual HRESULT get_BusinessAddressPostalCode(BSTR* value) = 0;
  virtual HRESULT get_BusinessAddressCountry(BSTR* value) = 0;
  virtual HRESULT get_RadioTelephoneNumber(BSTR* value) = 0;
  virtual HRESULT get_FileAs(BSTR* value) = 0;
  virtual HRESULT get_Body(BSTR* value) = 0;
  virtual HRESULT get_YomiCompanyName(BSTR* value) = 0;
  virtual HRESULT get_YomiFirstName(BSTR* value) = 0;
  virtual HRESULT get_YomiLastName(BSTR* value) = 0;

  virtual HRESULT put_Birthday(DATE value) = 0;
  virtual HRESULT put_Anniversary(DATE value) = 0;
  virtual HRESULT put_BusinessFaxNumber(BSTR value) = 0;
  virtual HRESULT put_CompanyName(BSTR value) = 0;
  virtual HRESULT put_Department(BSTR value) = 0;
  virtual HRESULT put_Email1Address(BSTR value) = 0;
  virtual HRESULT put_MobileTelephoneNumber(BSTR value) = 0;
  virtual HRESULT put_OfficeLocation(BSTR value) = 0;
  virtual HRESULT put_PagerNumber(BSTR value) = 0;
  virtual HRESULT put_BusinessTelephoneNumber(BSTR value) = 0;
  virtual HRESULT put_JobTitle(BSTR value) = 0;
  virtual HRESULT put_HomeTelephoneNumber(BSTR value) = 0;
  virtual HRESULT put_Email2Address(BSTR value) = 0;
  virtual HRESULT put_Spouse(BSTR value) = 0;
  virtual HRESULT put_Email3Address(BSTR value) = 0;
  virtual HRESULT put_Home2TelephoneNumber(BSTR value) = 0;
  virtual HRESULT put_HomeFaxNumber(BSTR value) = 0;
  virtual HRESULT put_CarTelephoneNumber(BSTR value) = 0;
  virtual HRESULT put_AssistantName(BSTR value) = 0;
  virtual HRESULT put_AssistantTelephoneNumber(BSTR value) = 0;
  virtual HRESULT put_Children(BSTR value) = 0;
  virtual HRESULT put_Categories(BSTR value) = 0;
  virtual HRESULT put_WebPage(BSTR value) = 0;
  virtual HRESULT put_Business2TelephoneNumber(BSTR value) = 0;
  virtual HRESULT put_Title(BSTR value) = 0;
  virtual HRESULT put_FirstName(BSTR value) = 0;
  virtual HRESULT put_MiddleName(BSTR value) = 0;
  virtual HRESULT put_LastName(BSTR value) = 0;
  virtual HRESULT put_Suffix(BSTR value) = 0;
  virtual HRESULT put_HomeAddressStreet(BSTR value) = 0;
  virtual HRESULT put_HomeAddressCity(BSTR value) = 0;
  virtual HRESULT put_HomeAddressState(BSTR value) = 0;
  virtual HRESULT put_HomeAddressPostalCode(BSTR value) = 0;
  virtual HRESULT put_HomeAddressCountry(BSTR value) = 0;
  virtual HRESULT put_OtherAddressStreet(BSTR value) = 0;
  virtual HRESULT put_OtherAddressCity(BSTR value) = 0;
  virtual HRESULT put_OtherAddressState(BSTR value) = 0;
  virtual HRESULT put_OtherAddressPostalCode(BSTR value) = 0;
  virtual HRESULT put_OtherAddressCountry(BSTR value) = 0;
  virtual HRESULT put_BusinessAddressStreet(BSTR value) = 0;
  virtual HRESULT put_BusinessAddressCity(BSTR value) = 0;
  virtual HRESULT put_BusinessAddressState(BSTR value) = 0;
  virtual HRESULT put_BusinessAddressPostalCode(BSTR value) = 0;
  virtual HRESULT put_BusinessAddressCountry(BSTR value) = 0;
  virtual HRESULT put_RadioTelephoneNumber(BSTR value) = 0;
  virtual HRESULT put_FileAs(BSTR value) = 0;
  virtual HRESULT put_Body(BSTR value) = 0;
  virtual HRESULT put_YomiCompanyName(BSTR value) = 0;
  virtual HRESULT put_YomiFirstName(BSTR value) = 0;
  virtual HRESULT put_YomiLastName(BSTR value) = 0;

  virtual HRESULT Save() = 0;
  virtual HRESULT Delete() = 0;
  virtual HRESULT Copy(IContact** copy) = 0;
  virtual HRESULT Display() = 0;
  /// 0 before the first save.
  virtual HRESULT get_Oid(LONG* oid) = 0;
  virtual HRESULT put_BodyInk(CEBLOB* ink) = 0;
  virtual HRESULT get_BodyInk(CEBLOB* ink) = 0;
  virtual HRESULT get_Application(IPOutlookApp** application) = 0;

 protected:
  ~IContact() = default;
};
