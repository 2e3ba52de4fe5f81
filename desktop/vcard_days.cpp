#include "desktop/vcard_days.h"

#include <array>

#include "desktop/local_time.h"
#include "desktop/text.h"
#include "desktop/vcard_date.h"

namespace desktop {

namespace {

struct DateProperty {
  std::string_view name;
  LocalTime Contact::*member;
};

constexpr std::array kDates{
    DateProperty{"BDAY", &Contact::birthday},
    DateProperty{"ANNIVERSARY", &Contact::anniversary},
    DateProperty{"X-ANNIVERSARY", &Contact::anniversary},
    DateProperty{"X-EVOLUTION-ANNIVERSARY", &Contact::anniversary},
    DateProperty{"X-KADDRESSBOOK-X-ANNIVERSARY", &Contact::anniversary},
    DateProperty{"X-MS-ANNIVERSARY", &Contact::anniversary},
};

// The device's calendar has no other years.
constexpr int kFirstYear = 1900;
constexpr int kLastYear = 2999;

/// A day; a time of day with it must be announced before 4.0.
void addDate(std::vector<VcardProperty>& card, std::string name, const LocalTime& date,
             VcardVersion version) {
  if (isNone(date)) return;
  VcardProperty property{{}, std::move(name), {}, {toUtf16(spellVcardDate(date, version))}};
  if (!isMidnight(date) && version == VcardVersion::V30)
    property.parameters.push_back({"VALUE", "date-time"});
  card.push_back(std::move(property));
}

/// Some programs write a year that stands for none, and say which.
bool hasNoYear(const VcardProperty& property, const LocalTime& date) {
  return parameterOf(property, "X-APPLE-OMIT-YEAR") == std::to_string(date.year);
}

void readDate(VcardDraft& draft, const VcardProperty& property, LocalTime Contact::*member) {
  const std::u16string text = oneLine(wholeText(property));
  if (text.empty()) return;
  const std::optional<LocalTime> date = readVcardDate(toUtf8(text));
  LocalTime& held = draft.contact.*member;
  if (!date || hasNoYear(property, *date)) {
    draft.noteLost(property.name + ", which is no full date,", text);
  } else if (date->year < kFirstYear || date->year > kLastYear) {
    draft.noteLost(property.name + ", which is outside the device's calendar (1900 to 2999),", text);
  } else if (isNone(held)) {
    held = *date;
  } else if (held != *date) {
    draft.noteLost("a second " + property.name, text);
  }
}

}  // namespace

void readDates(VcardDraft& draft) {
  for (const DateProperty& row : kDates) {
    for (const VcardProperty& property : draft.take(row.name)) readDate(draft, property, row.member);
  }
  const auto isAnniversary = [&](const VcardProperty& property) {
    return draft.labelOf(property) == u"Anniversary";
  };
  for (const VcardProperty& property : draft.takeIf("X-ABDATE", isAnniversary)) {
    readDate(draft, property, &Contact::anniversary);
  }
}

void addDates(std::vector<VcardProperty>& card, const Contact& contact, VcardVersion version) {
  addDate(card, "BDAY", contact.birthday, version);
  addDate(card, version == VcardVersion::V40 ? "ANNIVERSARY" : "X-ANNIVERSARY", contact.anniversary, version);
}

}  // namespace desktop
