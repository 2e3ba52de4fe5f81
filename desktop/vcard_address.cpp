#include "desktop/vcard_address.h"

#include <array>

#include "desktop/vcard_places.h"

namespace desktop {

namespace {

/// The parts of ADR, in its order.
enum Part : std::size_t { Box, Extended, Street, City, State, PostalCode, Country, kPartCount };

struct AddressPlace {
  std::string_view type;  ///< empty for an address of any other kind
  std::string_view name;
  std::array<ContactText, kPartCount> parts;  ///< null where the device has none
};

constexpr std::array kPlaces{
    AddressPlace{"HOME",
                 "home address",
                 {nullptr, nullptr, &Contact::homeStreet, &Contact::homeCity, &Contact::homeState,
                  &Contact::homePostalCode, &Contact::homeCountry}},
    AddressPlace{"WORK",
                 "business address",
                 {nullptr, nullptr, &Contact::businessStreet, &Contact::businessCity, &Contact::businessState,
                  &Contact::businessPostalCode, &Contact::businessCountry}},
    AddressPlace{"",
                 "other address",
                 {nullptr, nullptr, &Contact::otherStreet, &Contact::otherCity, &Contact::otherState,
                  &Contact::otherPostalCode, &Contact::otherCountry}},
};

/// Without a word for it, programs take an address for one of home or work.
std::string_view otherKind(VcardVersion version) {
  return version == VcardVersion::V40 ? "X-OTHER" : "OTHER";
}

bool isFree(const AddressPlace& place, const Contact& contact) {
  for (const ContactText part : place.parts) {
    if (part != nullptr && !(contact.*part).empty()) return false;
  }
  return true;
}

using AddressParts = std::array<std::u16string, kPartCount>;

AddressParts partsOf(const VcardProperty& address) {
  AddressParts parts;
  for (std::size_t i = 0; i < parts.size() && i < address.values.size(); ++i) {
    parts[i] = i == Street ? manyLines(address.values[i]) : oneLine(address.values[i]);
  }
  return parts;
}

bool isEmpty(const AddressParts& parts) {
  return parts == AddressParts();
}

/// In the order in which they stand on an envelope.
std::u16string streetOf(const AddressParts& parts) {
  std::u16string street;
  for (const Part part : {Extended, Street, Box}) {
    if (!street.empty() && !parts[part].empty()) street += u"\r\n";
    street += parts[part];
  }
  return street;
}

/// The place of the address's own kind; null when it isn't free.
const AddressPlace* placeOf(const VcardProperty& address, const Contact& contact) {
  bool isOfAKind = false;
  for (const AddressPlace& place : kPlaces) {
    const bool isOwn = place.type.empty() ? !isOfAKind : hasType(address, place.type);
    if (isOwn && isFree(place, contact)) return &place;
    isOfAKind = isOfAKind || isOwn;
  }
  return nullptr;
}

void keep(VcardDraft& draft, const AddressPlace& place, const AddressParts& parts) {
  for (std::size_t i = Street; i < kPartCount; ++i) {
    draft.contact.*place.parts[i] = i == Street ? streetOf(parts) : parts[i];
  }
  if (!parts[Box].empty() || !parts[Extended].empty()) {
    draft.notes.add("parts of the " + std::string(place.name) +
                    " are put into its street: " + shown(oneLine(streetOf(parts))));
  }
}

}  // namespace

void readAddresses(VcardDraft& draft) {
  bool isThere = false;
  for (const VcardProperty& address : draft.take("ADR")) {
    const AddressParts parts = partsOf(address);
    if (isEmpty(parts)) continue;
    isThere = true;
    if (const AddressPlace* place = placeOf(address, draft.contact)) {
      keep(draft, *place, parts);
    } else {
      draft.noteLost("a second address of a kind", oneLine(wholeText(address)));
    }
    if (preferenceOf(address) <= 100) draft.notes.add("which address is preferred is not kept on the device");
  }
  // The same addresses once more, as they are printed on an envelope.
  if (isThere) draft.take("LABEL");
}

void addAddresses(std::vector<VcardProperty>& card, const Contact& contact, VcardVersion version) {
  for (const AddressPlace& place : kPlaces) {
    if (isFree(place, contact)) continue;
    VcardProperty address{{}, "ADR", {}, std::vector<std::u16string>(kPartCount)};
    address.parameters.push_back({"TYPE", std::string(place.type.empty() ? otherKind(version) : place.type)});
    for (std::size_t i = Street; i < kPartCount; ++i) address.values[i] = contact.*place.parts[i];
    card.push_back(std::move(address));
  }
}

}  // namespace desktop
