// The object model's contact.
#pragma once

#include "emulator/calls/interface.h"

namespace emulator {

template <>
struct Interface<IContact> {
  using Base = IDispatch;
  using Members = CallList<
      Call<&IContact::get_Birthday>, Call<&IContact::get_Anniversary>, Call<&IContact::get_BusinessFaxNumber>,
      Call<&IContact::get_CompanyName>, Call<&IContact::get_Department>, Call<&IContact::get_Email1Address>,
      Call<&IContact::get_MobileTelephoneNumber>, Call<&IContact::get_OfficeLocation>,
      Call<&IContact::get_PagerNumber>, Call<&IContact::get_BusinessTelephoneNumber>,
      Call<&IContact::get_JobTitle>, Call<&IContact::get_HomeTelephoneNumber>,
      Call<&IContact::get_Email2Address>, Call<&IContact::get_Spouse>, Call<&IContact::get_Email3Address>,
      Call<&IContact::get_Home2TelephoneNumber>, Call<&IContact::get_HomeFaxNumber>,
      Call<&IContact::get_CarTelephoneNumber>, Call<&IContact::get_AssistantName>,
      Call<&IContact::get_AssistantTelephoneNumber>, Call<&IContact::get_Children>,
      Call<&IContact::get_Categories>, Call<&IContact::get_WebPage>,
      Call<&IContact::get_Business2TelephoneNumber>, Call<&IContact::get_Title>,
      Call<&IContact::get_FirstName>, Call<&IContact::get_MiddleName>, Call<&IContact::get_LastName>,
      Call<&IContact::get_Suffix>, Call<&IContact::get_HomeAddressStreet>,
      Call<&IContact::get_HomeAddressCity>, Call<&IContact::get_HomeAddressState>,
      Call<&IContact::get_HomeAddressPostalCode>, Call<&IContact::get_HomeAddressCountry>,
      Call<&IContact::get_OtherAddressStreet>, Call<&IContact::get_OtherAddressCity>,
      Call<&IContact::get_OtherAddressState>, Call<&IContact::get_OtherAddressPostalCode>,
      Call<&IContact::get_OtherAddressCountry>, Call<&IContact::get_BusinessAddressStreet>,
      Call<&IContact::get_BusinessAddressCity>, Call<&IContact::get_BusinessAddressState>,
      Call<&IContact::get_BusinessAddressPostalCode>, Call<&IContact::get_BusinessAddressCountry>,
      Call<&IContact::get_RadioTelephoneNumber>, Call<&IContact::get_FileAs>, Call<&IContact::get_Body>,
      Call<&IContact::get_YomiCompanyName>, Call<&IContact::get_YomiFirstName>,
      Call<&IContact::get_YomiLastName>, Call<&IContact::put_Birthday>, Call<&IContact::put_Anniversary>,
      Call<&IContact::put_BusinessFaxNumber>, Call<&IContact::put_CompanyName>,
      Call<&IContact::put_Department>, Call<&IContact::put_Email1Address>,
      Call<&IContact::put_MobileTelephoneNumber>, Call<&IContact::put_OfficeLocation>,
      Call<&IContact::put_PagerNumber>, Call<&IContact::put_BusinessTelephoneNumber>,
      Call<&IContact::put_JobTitle>, Call<&IContact::put_HomeTelephoneNumber>,
      Call<&IContact::put_Email2Address>, Call<&IContact::put_Spouse>, Call<&IContact::put_Email3Address>,
      Call<&IContact::put_Home2TelephoneNumber>, Call<&IContact::put_HomeFaxNumber>,
      Call<&IContact::put_CarTelephoneNumber>, Call<&IContact::put_AssistantName>,
      Call<&IContact::put_AssistantTelephoneNumber>, Call<&IContact::put_Children>,
      Call<&IContact::put_Categories>, Call<&IContact::put_WebPage>,
      Call<&IContact::put_Business2TelephoneNumber>, Call<&IContact::put_Title>,
      Call<&IContact::put_FirstName>, Call<&IContact::put_MiddleName>, Call<&IContact::put_LastName>,
      Call<&IContact::put_Suffix>, Call<&IContact::put_HomeAddressStreet>,
      Call<&IContact::put_HomeAddressCity>, Call<&IContact::put_HomeAddressState>,
      Call<&IContact::put_HomeAddressPostalCode>, Call<&IContact::put_HomeAddressCountry>,
      Call<&IContact::put_OtherAddressStreet>, Call<&IContact::put_OtherAddressCity>,
      Call<&IContact::put_OtherAddressState>, Call<&IContact::put_OtherAddressPostalCode>,
      Call<&IContact::put_OtherAddressCountry>, Call<&IContact::put_BusinessAddressStreet>,
      Call<&IContact::put_BusinessAddressCity>, Call<&IContact::put_BusinessAddressState>,
      Call<&IContact::put_BusinessAddressPostalCode>, Call<&IContact::put_BusinessAddressCountry>,
      Call<&IContact::put_RadioTelephoneNumber>, Call<&IContact::put_FileAs>, Call<&IContact::put_Body>,
      Call<&IContact::put_YomiCompanyName>, Call<&IContact::put_YomiFirstName>,
      Call<&IContact::put_YomiLastName>, Call<&IContact::Save>, Call<&IContact::Delete>,
      Call<&IContact::Copy>, Call<&IContact::Display>, Call<&IContact::get_Oid>,
      Call<&IContact::put_BodyInk, in(0)>, Call<&IContact::get_BodyInk>, Call<&IContact::get_Application>>;
};

}  // namespace emulator
