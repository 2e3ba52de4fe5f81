// One contact as the desktop holds it: plain values between the wire record and a card of an address book.
#pragma once

#include <cstdint>
#include <string>

#include "desktop/local_time.h"

namespace desktop {

/// Texts are UTF-16; an empty one is none. Of the texts only the body and the streets have several lines.
struct Contact {
  std::uint32_t oid = 0;  ///< the device's identifier; 0 before it has one

  std::u16string title;
  std::u16string firstName;
  std::u16string middleName;
  std::u16string lastName;
  std::u16string suffix;
  std::u16string yomiFirstName;  ///< the names' pronunciation
  std::u16string yomiLastName;
  /// What the device is to sort the contact by, when it doesn't compose that from first and last name. It never
  /// sends it, so that a contact that was read has none.
  std::u16string fileAs;

  std::u16string company;
  std::u16string yomiCompany;
  std::u16string department;
  std::u16string jobTitle;
  std::u16string officeLocation;
  std::u16string assistantName;

  std::u16string email1;
  std::u16string email2;
  std::u16string email3;
  std::u16string webPage;

  std::u16string mobilePhone;
  std::u16string businessPhone;
  std::u16string business2Phone;
  std::u16string homePhone;
  std::u16string home2Phone;
  std::u16string businessFax;
  std::u16string homeFax;
  std::u16string pager;
  std::u16string carPhone;
  std::u16string radioPhone;
  std::u16string assistantPhone;

  std::u16string homeStreet;
  std::u16string homeCity;
  std::u16string homeState;
  std::u16string homePostalCode;
  std::u16string homeCountry;
  std::u16string businessStreet;
  std::u16string businessCity;
  std::u16string businessState;
  std::u16string businessPostalCode;
  std::u16string businessCountry;
  std::u16string otherStreet;
  std::u16string otherCity;
  std::u16string otherState;
  std::u16string otherPostalCode;
  std::u16string otherCountry;

  LocalTime birthday;
  LocalTime anniversary;
  std::u16string spouse;
  std::u16string children;
  std::u16string categories;  ///< comma-separated
  std::u16string body;

  friend bool operator==(const Contact&, const Contact&) = default;
};

}  // namespace desktop
