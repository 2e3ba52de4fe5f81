// What is known about contacts.
#include <array>
#include <nlohmann/json.hpp>

#include "desktop/contact_fields.h"
#include "desktop/contact_record.h"
#include "desktop/item_kind.h"
#include "desktop/record_json.h"
#include "desktop/record_layout.h"
#include "desktop/text.h"
#include "desktop/vcard.h"
#include "desktop/vcard_name.h"

namespace desktop {

namespace {

constexpr std::array kColumns{"NAME", "COMPANY", "EMAIL", "PHONE"};
constexpr auto kLayouts = layoutsOf(kContactFields);

const Contact& contactIn(const Item& item) {
  return std::get<Contact>(item);
}

Item read(WireReader& record, std::uint32_t oid) {
  return readContact(record, oid);
}

std::vector<Bytes> write(const Item& item, bool isThere) {
  return contactRecords(contactIn(item), isThere);
}

std::vector<Difference> compare(const Item& sent, const Item& device) {
  Differences out;
  compareFields(out, kContactFields, contactIn(sent), contactIn(device));
  return out;
}

std::string fileText(const Item& item, const std::string& uid, const FileStyle& style) {
  return writeVcard(contactIn(item), uid, style.vcard);
}

std::u16string title(const Item& item) {
  return nameShown(contactIn(item));
}

/// The number that a person would call first.
const std::u16string& phoneOf(const Contact& contact) {
  for (const std::u16string Contact::*phone :
       {&Contact::mobilePhone, &Contact::homePhone, &Contact::businessPhone, &Contact::home2Phone}) {
    if (!(contact.*phone).empty()) return contact.*phone;
  }
  return contact.business2Phone;
}

std::vector<std::string> cells(const Item& item) {
  const Contact& contact = contactIn(item);
  return {toUtf8(nameShown(contact)), toUtf8(contact.company), toUtf8(contact.email1),
          toUtf8(phoneOf(contact))};
}

nlohmann::json toJson(const Item& item) {
  const Contact& contact = contactIn(item);
  nlohmann::json json{{"oid", contact.oid}};
  addFields(json, kContactFields, contact);
  return json;
}

}  // namespace

const ItemKind kContactKind{
    .type = ItemType::Contact,
    .name = "contacts",
    .singular = "contact",
    .plural = "contacts",
    .folder = "contacts",
    .format = kVcardFormat,
    .columns = kColumns,
    .layouts = kLayouts,
    .read = read,
    .write = write,
    .compare = compare,
    .fileText = fileText,
    .title = title,
    .cells = cells,
    .toJson = toJson,
};

}  // namespace desktop
