// The fields of a contact's record.
#pragma once

#include <array>

#include "desktop/contact.h"
#include "desktop/record_field.h"

namespace desktop {

using ContactField = RecordField<Contact>;

inline constexpr std::uint32_t kFirstNameTag = 31;
inline constexpr std::uint32_t kLastNameTag = 33;

/// What the device takes and never sends.
inline constexpr ContactField kFileAsField{26, "file as", &Contact::fileAs};

/// What the device sends, all of it in every record. It puts the anniversary before the birthday.
inline constexpr std::array kContactFields{
    ContactField{1, "anniversary", &Contact::anniversary},
    ContactField{2, "birthday", &Contact::birthday},
    ContactField{3, "business fax", &Contact::businessFax},
    ContactField{4, "company", &Contact::company},
    ContactField{5, "department", &Contact::department},
    ContactField{6, "email", &Contact::email1},
    ContactField{7, "mobile phone", &Contact::mobilePhone},
    ContactField{8, "office location", &Contact::officeLocation},
    ContactField{9, "pager", &Contact::pager},
    ContactField{10, "business phone", &Contact::businessPhone},
    ContactField{11, "job title", &Contact::jobTitle},
    ContactField{12, "home phone", &Contact::homePhone},
    ContactField{13, "second email", &Contact::email2},
    ContactField{14, "spouse", &Contact::spouse},
    ContactField{15, "third email", &Contact::email3},
    ContactField{16, "second home phone", &Contact::home2Phone},
    ContactField{17, "home fax", &Contact::homeFax},
    ContactField{18, "car phone", &Contact::carPhone},
    ContactField{19, "assistant name", &Contact::assistantName},
    ContactField{20, "assistant phone", &Contact::assistantPhone},
    ContactField{21, "children", &Contact::children},
    ContactField{22, "categories", &Contact::categories},
    ContactField{23, "web page", &Contact::webPage},
    ContactField{24, "second business phone", &Contact::business2Phone},
    ContactField{25, "radio phone", &Contact::radioPhone},
    ContactField{27, "yomi company", &Contact::yomiCompany},
    ContactField{28, "yomi first name", &Contact::yomiFirstName},
    ContactField{29, "yomi last name", &Contact::yomiLastName},
    ContactField{30, "title", &Contact::title},
    ContactField{kFirstNameTag, "first name", &Contact::firstName},
    ContactField{32, "middle name", &Contact::middleName},
    ContactField{kLastNameTag, "last name", &Contact::lastName},
    ContactField{34, "suffix", &Contact::suffix},
    ContactField{35, "home street", &Contact::homeStreet},
    ContactField{36, "home city", &Contact::homeCity},
    ContactField{37, "home state", &Contact::homeState},
    ContactField{38, "home postal code", &Contact::homePostalCode},
    ContactField{39, "home country", &Contact::homeCountry},
    ContactField{40, "other street", &Contact::otherStreet},
    ContactField{41, "other city", &Contact::otherCity},
    ContactField{42, "other state", &Contact::otherState},
    ContactField{43, "other postal code", &Contact::otherPostalCode},
    ContactField{44, "other country", &Contact::otherCountry},
    ContactField{45, "business street", &Contact::businessStreet},
    ContactField{46, "business city", &Contact::businessCity},
    ContactField{47, "business state", &Contact::businessState},
    ContactField{48, "business postal code", &Contact::businessPostalCode},
    ContactField{49, "business country", &Contact::businessCountry},
    ContactField{50, "body", &Contact::body},
};

}  // namespace desktop
