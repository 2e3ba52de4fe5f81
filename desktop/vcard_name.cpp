#include "desktop/vcard_name.h"

#include <algorithm>
#include <array>

#include "desktop/item_refused.h"
#include "desktop/text.h"

namespace desktop {

namespace {

using Text = std::u16string Contact::*;

constexpr std::u16string_view kNoName = u"(no name)";

/// In the order of N.
constexpr std::array kParts{&Contact::lastName, &Contact::firstName, &Contact::middleName, &Contact::title,
                            &Contact::suffix};
constexpr std::array kSpokenOrder{&Contact::title, &Contact::firstName, &Contact::middleName,
                                  &Contact::lastName, &Contact::suffix};
/// What stands for a name, the first one that there is.
constexpr std::array kStandIns{
    &Contact::company,        &Contact::email1,      &Contact::email2,         &Contact::email3,
    &Contact::mobilePhone,    &Contact::homePhone,   &Contact::home2Phone,     &Contact::businessPhone,
    &Contact::business2Phone, &Contact::carPhone,    &Contact::radioPhone,     &Contact::pager,
    &Contact::homeFax,        &Contact::businessFax, &Contact::assistantPhone,
};

std::u16string joinedName(const Contact& contact) {
  std::u16string name;
  for (const Text part : kSpokenOrder) {
    if (!name.empty() && !(contact.*part).empty()) name += u' ';
    name += contact.*part;
  }
  return name;
}

std::vector<std::u16string_view> wordsOf(std::u16string_view text) {
  std::vector<std::u16string_view> words;
  while (true) {
    text.remove_prefix(std::min(text.find_first_not_of(u" ,"), text.size()));
    if (text.empty()) return words;
    words.push_back(text.substr(0, text.find_first_of(u" ,")));
    text.remove_prefix(words.back().size());
  }
}

/// Whether the text says nothing but parts of the name, in any order.
bool isMadeOf(std::u16string_view text, const std::u16string& name) {
  const auto known = wordsOf(name);
  const auto words = wordsOf(text);
  return std::all_of(words.begin(), words.end(), [&](std::u16string_view word) {
    return std::find(known.begin(), known.end(), word) != known.end();
  });
}

void readParts(VcardDraft& draft) {
  const std::vector<VcardProperty> names = draft.take("N");
  for (const VcardProperty& name : names) {
    if (&name != &names.front()) {
      draft.noteLost("a second name", oneLine(wholeText(name)));
      continue;
    }
    for (std::size_t i = 0; i < name.values.size(); ++i) {
      const std::u16string part = oneLine(name.values[i]);
      if (i < kParts.size()) {
        draft.contact.*kParts[i] = part;
      } else if (!part.empty()) {
        draft.noteLost("a further part of the name", part);
      }
    }
  }
}

/// Whether the card is an organisation's. Throws ItemRefused when it is a list of people.
bool readKind(VcardDraft& draft) {
  const bool showsCompany = draft.takeText("X-ABSHOWAS") == u"COMPANY";
  std::string kind = upperCase(toUtf8(draft.takeText("KIND")));
  if (kind.empty()) kind = upperCase(toUtf8(draft.takeText("X-ADDRESSBOOKSERVER-KIND")));
  const bool isList = upperCase(toUtf8(draft.takeText("X-EVOLUTION-LIST"))) == "TRUE";
  if (isList || kind == "GROUP") throw ItemRefused("a list of people is no contact");
  const bool isKnown = kind.empty() || kind == "INDIVIDUAL" || kind == "ORG";
  if (!isKnown) draft.noteLost("the kind of what the card is about", toUtf16(kind));
  return showsCompany || kind == "ORG";
}

/// The last word is the family's.
void takeApart(std::u16string_view name, Contact& contact) {
  const std::size_t blank = name.find_last_of(u' ');
  contact.firstName = name.substr(0, blank);
  if (blank != std::u16string_view::npos) contact.lastName = name.substr(blank + 1);
  while (contact.firstName.ends_with(u' ')) contact.firstName.pop_back();
}

bool isStandIn(const std::u16string& text, const Contact& contact) {
  return std::any_of(kStandIns.begin(), kStandIns.end(),
                     [&](Text standIn) { return contact.*standIn == text; });
}

/// A card without N, or with an empty one, has its name in FN alone.
void readShownAlone(VcardDraft& draft, const std::u16string& name, bool isCompany) {
  if (isStandIn(name, draft.contact)) return;
  if (isCompany && draft.contact.company.empty()) {
    draft.contact.company = name;
  } else if (!isCompany) {
    takeApart(name, draft.contact);
    draft.notes.add("the card doesn't part the name: first name " + shown(draft.contact.firstName) +
                    ", last name " + shown(draft.contact.lastName));
  }
}

/// The device files a contact with both names by these alone, others by a text that it is given.
void readFiling(VcardDraft& draft, const std::u16string& name, const std::u16string& filing) {
  Contact& contact = draft.contact;
  if (!contact.firstName.empty() && !contact.lastName.empty()) {
    if (!isMadeOf(name, joinedName(contact))) draft.noteLost("the name shown", name);
    if (!filing.empty() && filing != contact.lastName + u", " + contact.firstName) {
      draft.noteLost("what the contact is filed by", filing);
    }
    return;
  }
  contact.fileAs = !filing.empty() ? filing : name;
  if (contact.fileAs == nameShown(contact)) contact.fileAs.clear();
  if (contact.fileAs.empty()) return;
  draft.notes.add("the device files the contact as " + shown(contact.fileAs) + " and doesn't give that back");
}

}  // namespace

std::u16string nameShown(const Contact& contact) {
  std::u16string name = joinedName(contact);
  for (const Text standIn : kStandIns) {
    if (name.empty()) name = contact.*standIn;
  }
  return name.empty() ? std::u16string(kNoName) : name;
}

void readNames(VcardDraft& draft) {
  const bool isCompany = readKind(draft);
  readParts(draft);
  std::u16string name = draft.takeText("FN");
  const std::u16string filing = draft.takeText("X-EVOLUTION-FILE-AS");
  const bool isNamed = !name.empty() || !filing.empty();
  if (name == kNoName) name.clear();
  if (joinedName(draft.contact).empty() && !name.empty()) readShownAlone(draft, name, isCompany);
  if (!isNamed && nameShown(draft.contact) == kNoName) throw ItemRefused("the card names nobody");
  readFiling(draft, name, filing);
}

VcardProperty nameProperty(const Contact& contact) {
  VcardProperty name{{}, "N", {}, {}};
  for (const Text part : kParts) name.values.push_back(contact.*part);
  return name;
}

}  // namespace desktop
