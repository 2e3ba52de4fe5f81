// Writing cards.
#include "desktop/item_text.h"
#include "desktop/text.h"
#include "desktop/vcard.h"
#include "desktop/vcard_address.h"
#include "desktop/vcard_days.h"
#include "desktop/vcard_email.h"
#include "desktop/vcard_library.h"
#include "desktop/vcard_name.h"
#include "desktop/vcard_phone.h"
#include "desktop/vcard_texts.h"

namespace desktop {

namespace {

constexpr std::u16string_view kProgram = u"-//Qorv//qorv-sync//EN";

VcardProperty uidProperty(const std::string& uid, VcardVersion version) {
  VcardProperty property{{}, "UID", {}, {toUtf16(uid)}};
  // In 4.0 it would be an address otherwise.
  if (version == VcardVersion::V40) property.parameters.push_back({"VALUE", "text"});
  return property;
}

}  // namespace

std::string writeVcard(const Contact& contact, const std::string& uid, VcardVersion version) {
  std::vector<VcardProperty> card{
      {{}, "PRODID", {}, {std::u16string(kProgram)}},
      uidProperty(uid, version),
      {{}, "FN", {}, {nameShown(contact)}},
      nameProperty(contact),
  };
  addEmails(card, contact, version);
  addPhones(card, contact, version);
  addAddresses(card, contact, version);
  addDates(card, contact, version);
  addTexts(card, contact, version);
  for (VcardProperty& property : card) {
    for (std::u16string& value : property.values) value = withFileLineEnds(value);
  }
  return formatVcard(card, version);
}

}  // namespace desktop
