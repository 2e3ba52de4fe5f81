#include "desktop/vcard_texts.h"

#include <algorithm>
#include <array>

#include "desktop/item_text.h"
#include "desktop/text.h"

namespace desktop {

namespace {

/// Where a text stands in a card. The first name that a text has is the one that is written; the others are
/// those of programs that have names of their own.
struct TextProperty {
  std::string_view name;
  std::u16string Contact::*member;
  std::string_view related;  ///< its TYPE in a RELATED of 4.0; empty for none
};

constexpr std::array kTexts{
    TextProperty{"TITLE", &Contact::jobTitle, {}},
    TextProperty{"URL", &Contact::webPage, {}},
    TextProperty{"X-KADDRESSBOOK-X-OFFICE", &Contact::officeLocation, {}},
    TextProperty{"X-OFFICE", &Contact::officeLocation, {}},
    TextProperty{"X-SPOUSE", &Contact::spouse, "spouse"},
    TextProperty{"X-EVOLUTION-SPOUSE", &Contact::spouse, {}},
    TextProperty{"X-KADDRESSBOOK-X-SPOUSESNAME", &Contact::spouse, {}},
    TextProperty{"X-MS-SPOUSE", &Contact::spouse, {}},
    TextProperty{"X-CHILDREN", &Contact::children, "child"},
    TextProperty{"X-MS-CHILD", &Contact::children, {}},
    TextProperty{"X-ASSISTANT", &Contact::assistantName, {}},
    TextProperty{"X-EVOLUTION-ASSISTANT", &Contact::assistantName, {}},
    TextProperty{"X-KADDRESSBOOK-X-ASSISTANTSNAME", &Contact::assistantName, {}},
    TextProperty{"X-MS-ASSISTANT", &Contact::assistantName, {}},
    TextProperty{"X-PHONETIC-FIRST-NAME", &Contact::yomiFirstName, {}},
    TextProperty{"X-PHONETIC-LAST-NAME", &Contact::yomiLastName, {}},
    TextProperty{"X-PHONETIC-ORG", &Contact::yomiCompany, {}},
};

/// What a label makes of a property that says nothing itself.
constexpr std::array kLabelledTexts{
    TextProperty{"Spouse", &Contact::spouse, {}},
    TextProperty{"Child", &Contact::children, {}},
    TextProperty{"Assistant", &Contact::assistantName, {}},
};

/// Children are one text on the device; of everything else it has one.
void keepText(VcardDraft& draft, const TextProperty& row, const std::string& name,
              const std::u16string& text) {
  std::u16string& held = draft.contact.*row.member;
  if (text.empty() || text == held) return;
  if (held.empty()) {
    held = text;
  } else if (row.member == &Contact::children) {
    held += u", " + text;
  } else {
    draft.noteLost("a second " + name, text);
  }
}

/// A RELATED can point to another card, which the device can't.
bool isNamed(const VcardProperty& property) {
  const std::u16string text = wholeText(property);
  return equalsInAnyCase(parameterOf(property, "VALUE"), "text") || text.find(u':') == std::u16string::npos;
}

void readPlainTexts(VcardDraft& draft) {
  for (const TextProperty& row : kTexts) {
    for (const VcardProperty& property : draft.take(row.name)) {
      keepText(draft, row, property.name, oneLine(wholeText(property)));
    }
    if (row.related.empty()) continue;
    const auto isRow = [&](const VcardProperty& property) {
      return hasType(property, row.related) && isNamed(property);
    };
    for (const VcardProperty& property : draft.takeIf("RELATED", isRow)) {
      keepText(draft, row, std::string(row.related), oneLine(wholeText(property)));
    }
  }
}

void readLabelledTexts(VcardDraft& draft) {
  for (const TextProperty& row : kLabelledTexts) {
    const auto isRow = [&](const VcardProperty& property) {
      return draft.labelOf(property) == toUtf16(row.name);
    };
    for (const VcardProperty& property : draft.takeIf("X-ABRELATEDNAMES", isRow)) {
      keepText(draft, row, std::string(row.name), oneLine(wholeText(property)));
    }
  }
}

/// Units below the department are written behind it.
void readOrganisation(VcardDraft& draft) {
  const std::vector<VcardProperty> organisations = draft.take("ORG");
  for (const VcardProperty& organisation : organisations) {
    if (&organisation != &organisations.front()) {
      draft.noteLost("a second ORG", oneLine(wholeText(organisation)));
      continue;
    }
    const auto& values = organisation.values;
    if (!values.empty()) draft.contact.company = oneLine(values[0]);
    std::u16string& department = draft.contact.department;
    for (std::size_t i = 1; i < values.size(); ++i) {
      const std::u16string unit = oneLine(values[i]);
      if (unit.empty()) continue;
      if (!department.empty())
        draft.notes.add("units of the organisation are put into its department: " + shown(unit));
      department += (department.empty() ? u"" : u", ") + unit;
    }
  }
}

void readCategories(VcardDraft& draft) {
  std::u16string list;
  for (const VcardProperty& property : draft.take("CATEGORIES")) {
    for (const std::u16string& value : property.values) {
      const std::u16string category = oneLine(value);
      if (category.find(u',') != std::u16string::npos) {
        draft.notes.add("a category with a comma is several on the device: " + shown(category));
      }
      list += category + u',';
    }
  }
  draft.contact.categories = tidyList(list);
}

void readNote(VcardDraft& draft) {
  for (const VcardProperty& property : draft.take("NOTE")) {
    const std::u16string text = manyLines(wholeText(property));
    if (text.empty()) continue;
    if (!draft.contact.body.empty()) draft.contact.body += u"\r\n";
    draft.contact.body += text;
  }
}

/// Phones of some makers keep the names' pronunciation as a sound.
void readPronunciation(VcardDraft& draft) {
  const auto isName = [](const VcardProperty& property) { return hasType(property, "X-IRMC-N"); };
  for (const VcardProperty& property : draft.takeIf("SOUND", isName)) {
    const std::u16string name = wholeText(property);
    std::u16string_view parts(name);
    for (std::u16string Contact::*member : {&Contact::yomiLastName, &Contact::yomiFirstName}) {
      const std::size_t end = std::min(parts.find(u';'), parts.size());
      keepText(draft, {{}, member, {}}, property.name, oneLine(parts.substr(0, end)));
      parts.remove_prefix(std::min(end + 1, parts.size()));
    }
  }
}

void add(std::vector<VcardProperty>& card, std::string name, std::u16string value) {
  if (!value.empty()) card.push_back({{}, std::move(name), {}, {std::move(value)}});
}

void addRelated(std::vector<VcardProperty>& card, const TextProperty& row, const std::u16string& text) {
  if (text.empty()) return;
  card.push_back({{}, "RELATED", {{"VALUE", "text"}, {"TYPE", std::string(row.related)}}, {text}});
}

void addCategories(std::vector<VcardProperty>& card, const Contact& contact) {
  VcardProperty categories{{}, "CATEGORIES", {}, {}};
  std::u16string list = tidyList(oneLine(contact.categories));
  for (std::u16string_view rest = list; !rest.empty();) {
    const std::size_t end = std::min(rest.find(u','), rest.size());
    categories.values.emplace_back(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  if (!categories.values.empty()) card.push_back(std::move(categories));
}

}  // namespace

void readTexts(VcardDraft& draft) {
  readOrganisation(draft);
  readPlainTexts(draft);
  readLabelledTexts(draft);
  readPronunciation(draft);
  readCategories(draft);
  readNote(draft);
}

void addTexts(std::vector<VcardProperty>& card, const Contact& contact, VcardVersion version) {
  if (!contact.company.empty() || !contact.department.empty()) {
    card.push_back({{}, "ORG", {}, {contact.company}});
    if (!contact.department.empty()) card.back().values.push_back(contact.department);
  }
  std::u16string Contact::*written = nullptr;
  for (const TextProperty& row : kTexts) {
    if (row.member == written) continue;
    written = row.member;
    if (version == VcardVersion::V40 && !row.related.empty()) {
      addRelated(card, row, contact.*row.member);
    } else {
      add(card, std::string(row.name), contact.*row.member);
    }
  }
  addCategories(card, contact);
  add(card, "NOTE", contact.body);
}

}  // namespace desktop
