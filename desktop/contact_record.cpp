#include "desktop/contact_record.h"

#include <algorithm>
#include <array>

#include "desktop/contact_fields.h"
#include "desktop/local_time.h"

namespace desktop {

namespace {

constexpr std::string_view kSingular = "contact";

using Fields = std::vector<const ContactField*>;

bool isEmpty(const ContactField& field, const Contact& contact) {
  return std::visit(Overloaded{
                        [&](ContactField::Text text) { return (contact.*text).empty(); },
                        [&](ContactField::Time time) { return isNone(contact.*time); },
                        [](auto) { return false; },
                    },
                    field.member);
}

bool hasBothNames(const Contact& contact) {
  return !contact.firstName.empty() && !contact.lastName.empty();
}

/// What the device itself would file a contact without both names by, had it never been told.
std::u16string filing(const Contact& contact) {
  constexpr std::array kNames{&Contact::fileAs, &Contact::lastName, &Contact::firstName, &Contact::company,
                              &Contact::email1, &Contact::email2,   &Contact::email3};
  for (const std::u16string Contact::*name : kNames) {
    if (!(contact.*name).empty()) return contact.*name;
  }
  return {};
}

/// The contact as it travels: a day that is not there has a spelling of its own.
Contact inWireForm(const Contact& contact) {
  Contact sent = contact;
  sent.fileAs = filing(contact);
  for (LocalTime Contact::*time : {&Contact::birthday, &Contact::anniversary}) {
    if (isNone(sent.*time)) sent.*time = kNoDateTime;
  }
  return sent;
}

Bytes recordOf(const Contact& sent, const Fields& fields) {
  WireWriter writer;
  writer.number(static_cast<std::uint32_t>(fields.size()));
  for (const ContactField* field : fields) writeField(writer, *field, sent);
  return writer.take();
}

bool isName(const ContactField& field) {
  return field.tag == kFirstNameTag || field.tag == kLastNameTag;
}

/// The empty name that goes before the rest, when the device has the item and may have a name there.
const ContactField* nameToEmpty(const Contact& contact) {
  const auto found =
      std::find_if(kContactFields.begin(), kContactFields.end(),
                   [&](const ContactField& field) { return isName(field) && isEmpty(field, contact); });
  return found == kContactFields.end() ? nullptr : &*found;
}

Bytes addingRecord(const Contact& contact) {
  Fields fields;
  for (const ContactField& field : kContactFields) {
    if (!isEmpty(field, contact)) fields.push_back(&field);
  }
  if (!hasBothNames(contact)) fields.push_back(&kFileAsField);
  return recordOf(inWireForm(contact), fields);
}

std::vector<Bytes> changingRecords(const Contact& contact) {
  const Contact sent = inWireForm(contact);
  const ContactField* emptied = nameToEmpty(contact);
  Fields fields;
  for (const ContactField& field : kContactFields) {
    if (&field != emptied) fields.push_back(&field);
  }
  if (emptied == nullptr) return {recordOf(sent, fields)};
  fields.push_back(&kFileAsField);
  return {recordOf(sent, {emptied, &kFileAsField}), recordOf(sent, fields)};
}

}  // namespace

std::vector<Bytes> contactRecords(const Contact& contact, bool isThere) {
  return isThere ? changingRecords(contact) : std::vector<Bytes>{addingRecord(contact)};
}

Contact readContact(WireReader& reader, std::uint32_t oid) {
  const auto refuseOther = [](WireReader&, std::uint32_t, Contact&) { return false; };
  return readRecord<Contact>(reader, kSingular, oid, kContactFields, refuseOther);
}

}  // namespace desktop
