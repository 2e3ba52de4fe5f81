// The properties of a contact, in the order in which IContact declares them.
#pragma once

#include "emulator/pim/property.h"

namespace emulator {

inline constexpr std::array kContactProperties{
    date("Birthday"),
    date("Anniversary"),
    text("BusinessFaxNumber"),
    text("CompanyName"),
    text("Department"),
    text("Email1Address"),
    text("MobileTelephoneNumber"),
    text("OfficeLocation"),
    text("PagerNumber"),
    text("BusinessTelephoneNumber"),
    text("JobTitle"),
    text("HomeTelephoneNumber"),
    text("Email2Address"),
    text("Spouse"),
    text("Email3Address"),
    text("Home2TelephoneNumber"),
    text("HomeFaxNumber"),
    text("CarTelephoneNumber"),
    text("AssistantName"),
    text("AssistantTelephoneNumber"),
    text("Children"),
    text("Categories", 0x101D001F),
    text("WebPage"),
    text("Business2TelephoneNumber"),
    text("Title"),
    text("FirstName"),
    text("MiddleName"),
    text("LastName"),
    text("Suffix"),
    text("HomeAddressStreet"),
    text("HomeAddressCity"),
    text("HomeAddressState"),
    text("HomeAddressPostalCode"),
    text("HomeAddressCountry"),
    text("OtherAddressStreet"),
    text("OtherAddressCity"),
    text("OtherAddressState"),
    text("OtherAddressPostalCode"),
    text("OtherAddressCountry"),
    text("BusinessAddressStreet"),
    text("BusinessAddressCity"),
    text("BusinessAddressState"),
    text("BusinessAddressPostalCode"),
    text("BusinessAddressCountry"),
    text("RadioTelephoneNumber"),
    text("FileAs", 0x0080001F),
    text("Body", 0x101F001F),
    text("YomiCompanyName"),
    text("YomiFirstName"),
    text("YomiLastName"),
    internalFlag("FileAsPut"),
};

consteval std::size_t contactProperty(std::string_view name) {
  return placeOf(kContactProperties, name);
}

}  // namespace emulator
