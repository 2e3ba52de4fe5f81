#include "desktop/vcard_email.h"

#include <algorithm>
#include <array>

#include "desktop/vcard_places.h"

namespace desktop {

namespace {

constexpr std::array kPlaces{&Contact::email1, &Contact::email2, &Contact::email3};

void keep(VcardDraft& draft, const VcardProperty& email, ContactText place) {
  const std::u16string address = oneLine(wholeText(email));
  if (address.empty()) return;
  if (place == nullptr) {
    draft.noteLost("an e-mail address more than three", address);
    return;
  }
  draft.contact.*place = address;
  if (hasType(email, "HOME") || hasType(email, "WORK")) {
    draft.notes.add("whether e-mail is for home or work is not kept on the device");
  }
}

}  // namespace

void readEmails(VcardDraft& draft) {
  std::vector<VcardProperty> emails = draft.take("EMAIL");
  std::stable_sort(emails.begin(), emails.end(), [](const VcardProperty& left, const VcardProperty& right) {
    return preferenceOf(left) < preferenceOf(right);
  });
  std::vector<const VcardProperty*> others;
  for (const VcardProperty& email : emails) {
    const ContactText place = askedPlace(email, kPlaces, draft.contact);
    place != nullptr ? keep(draft, email, place) : others.push_back(&email);
  }
  for (const VcardProperty* email : others) keep(draft, *email, freePlace(kPlaces, draft.contact));
}

void addEmails(std::vector<VcardProperty>& card, const Contact& contact, VcardVersion version) {
  VcardProperty like{{}, "EMAIL", {}, {}};
  if (version == VcardVersion::V30) like.parameters.push_back({"TYPE", "INTERNET"});
  const std::size_t first = card.size();
  addPlaces(card, like, kPlaces, contact);
  // Programs have orders of their own for addresses that are alike.
  if (card.size() - first < 2 || contact.email1.empty()) return;
  card[first].parameters.push_back(version == VcardVersion::V40 ? VcardParameter{"PREF", "1"}
                                                                : VcardParameter{"TYPE", "PREF"});
}

}  // namespace desktop
