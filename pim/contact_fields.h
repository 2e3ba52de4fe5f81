// The fields of contact records: tags and the properties that they carry.
#pragma once

#include "platform/contact.h"

namespace qorv {

struct ContactDateField {
  DWORD tag;
  HRESULT (IContact::*get)(DATE*);
  HRESULT (IContact::*put)(DATE);
};

struct ContactTextField {
  DWORD tag;
  HRESULT (IContact::*get)(BSTR*);
  HRESULT (IContact::*put)(BSTR);
};

namespace contact_tag {
inline constexpr DWORD kCompanyName = 4;
/// Accepted from the desktop, never sent: desktops compose it themselves.
inline constexpr DWORD kFileAs = 26;
inline constexpr DWORD kFirstName = 31;
inline constexpr DWORD kLastName = 33;
inline constexpr DWORD kBody = 50;
}  // namespace contact_tag

/// The first tag is the second date of the object model: desktops have always had them this way round.
inline constexpr ContactDateField kContactDates[] = {
    {1, &IContact::get_Anniversary, &IContact::put_Anniversary},
    {2, &IContact::get_Birthday, &IContact::put_Birthday},
};

/// In the order in which they are sent. Tags 25 to 29 carry what the object model declares after the
/// addresses.
inline constexpr ContactTextField kContactTexts[] = {
    {3, &IContact::get_BusinessFaxNumber, &IContact::put_BusinessFaxNumber},
    {4, &IContact::get_CompanyName, &IContact::put_CompanyName},
    {5, &IContact::get_Department, &IContact::put_Department},
    {6, &IContact::get_Email1Address, &IContact::put_Email1Address},
    {7, &IContact::get_MobileTelephoneNumber, &IContact::put_MobileTelephoneNumber},
    {8, &IContact::get_OfficeLocation, &IContact::put_OfficeLocation},
    {9, &IContact::get_PagerNumber, &IContact::put_PagerNumber},
    {10, &IContact::get_BusinessTelephoneNumber, &IContact::put_BusinessTelephoneNumber},
    {11, &IContact::get_JobTitle, &IContact::put_JobTitle},
    {12, &IContact::get_HomeTelephoneNumber, &IContact::put_HomeTelephoneNumber},
    {13, &IContact::get_Email2Address, &IContact::put_Email2Address},
    {14, &IContact::get_Spouse, &IContact::put_Spouse},
    {15, &IContact::get_Email3Address, &IContact::put_Email3Address},
    {16, &IContact::get_Home2TelephoneNumber, &IContact::put_Home2TelephoneNumber},
    {17, &IContact::get_HomeFaxNumber, &IContact::put_HomeFaxNumber},
    {18, &IContact::get_CarTelephoneNumber, &IContact::put_CarTelephoneNumber},
    {19, &IContact::get_AssistantName, &IContact::put_AssistantName},
    {20, &IContact::get_AssistantTelephoneNumber, &IContact::put_AssistantTelephoneNumber},
    {21, &IContact::get_Children, &IContact::put_Children},
    {22, &IContact::get_Categories, &IContact::put_Categories},
    {23, &IContact::get_WebPage, &IContact::put_WebPage},
    {24, &IContact::get_Business2TelephoneNumber, &IContact::put_Business2TelephoneNumber},
    {25, &IContact::get_RadioTelephoneNumber, &IContact::put_RadioTelephoneNumber},
    {26, &IContact::get_FileAs, &IContact::put_FileAs},
    {27, &IContact::get_YomiCompanyName, &IContact::put_YomiCompanyName},
    {28, &IContact::get_YomiFirstName, &IContact::put_YomiFirstName},
    {29, &IContact::get_YomiLastName, &IContact::put_YomiLastName},
    {30, &IContact::get_Title, &IContact::put_Title},
    {31, &IContact::get_FirstName, &IContact::put_FirstName},
    {32, &IContact::get_MiddleName, &IContact::put_MiddleName},
    {33, &IContact::get_LastName, &IContact::put_LastName},
    {34, &IContact::get_Suffix, &IContact::put_Suffix},
    {35, &IContact::get_HomeAddressStreet, &IContact::put_HomeAddressStreet},
    {36, &IContact::get_HomeAddressCity, &IContact::put_HomeAddressCity},
    {37, &IContact::get_HomeAddressState, &IContact::put_HomeAddressState},
    {38, &IContact::get_HomeAddressPostalCode, &IContact::put_HomeAddressPostalCode},
    {39, &IContact::get_HomeAddressCountry, &IContact::put_HomeAddressCountry},
    {40, &IContact::get_OtherAddressStreet, &IContact::put_OtherAddressStreet},
    {41, &IContact::get_OtherAddressCity, &IContact::put_OtherAddressCity},
    {42, &IContact::get_OtherAddressState, &IContact::put_OtherAddressState},
    {43, &IContact::get_OtherAddressPostalCode, &IContact::put_OtherAddressPostalCode},
    {44, &IContact::get_OtherAddressCountry, &IContact::put_OtherAddressCountry},
    {45, &IContact::get_BusinessAddressStreet, &IContact::put_BusinessAddressStreet},
    {46, &IContact::get_BusinessAddressCity, &IContact::put_BusinessAddressCity},
    {47, &IContact::get_BusinessAddressState, &IContact::put_BusinessAddressState},
    {48, &IContact::get_BusinessAddressPostalCode, &IContact::put_BusinessAddressPostalCode},
    {49, &IContact::get_BusinessAddressCountry, &IContact::put_BusinessAddressCountry},
    {50, &IContact::get_Body, &IContact::put_Body},
};

}  // namespace qorv
