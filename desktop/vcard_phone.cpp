#include "desktop/vcard_phone.h"

#include <algorithm>
#include <array>
#include <optional>

#include "desktop/contact_fields.h"
#include "desktop/text.h"
#include "desktop/vcard_places.h"

namespace desktop {

namespace {

using Types = std::array<std::string_view, 2>;

constexpr std::array kHome{&Contact::homePhone, &Contact::home2Phone};
constexpr std::array kBusiness{&Contact::businessPhone, &Contact::business2Phone};
constexpr std::array kMobile{&Contact::mobilePhone};
constexpr std::array kPager{&Contact::pager};
constexpr std::array kCar{&Contact::carPhone};
constexpr std::array kRadio{&Contact::radioPhone};
constexpr std::array kAssistant{&Contact::assistantPhone};
constexpr std::array kHomeFax{&Contact::homeFax};
constexpr std::array kBusinessFax{&Contact::businessFax};
constexpr std::array kAnyFax{&Contact::businessFax, &Contact::homeFax};
/// For a number of no kind that the device knows.
constexpr std::array kAnyVoice{&Contact::homePhone, &Contact::home2Phone, &Contact::businessPhone,
                               &Contact::business2Phone};

/// A number that has all the types belongs to one of the places.
struct PhoneRule {
  Types types;  ///< the second one may be empty
  std::span<const ContactText> places;
  bool isLast = false;  ///< nobody speaks into such a number: it never takes a voice number's place
};

/// The first rule that has a free place counts.
constexpr std::array kRules{
    PhoneRule{{"FAX", "HOME"}, kHomeFax, true},
    PhoneRule{{"FAX", "WORK"}, kBusinessFax, true},
    PhoneRule{{"FAX"}, kAnyFax, true},
    PhoneRule{{"PAGER"}, kPager, true},
    PhoneRule{{"CAR"}, kCar},
    PhoneRule{{"X-CAR"}, kCar},
    PhoneRule{{"X-EVOLUTION-RADIO"}, kRadio},
    PhoneRule{{"X-RADIO"}, kRadio},
    PhoneRule{{"RADIO"}, kRadio},
    PhoneRule{{"X-EVOLUTION-ASSISTANT"}, kAssistant},
    PhoneRule{{"X-ASSISTANT"}, kAssistant},
    PhoneRule{{"ASSISTANT"}, kAssistant},
    PhoneRule{{"CELL"}, kMobile},
    PhoneRule{{"PCS"}, kMobile},
    PhoneRule{{"WORK"}, kBusiness},
    PhoneRule{{"HOME"}, kHome},
};

/// How numbers are written; CAR is no type of 4.0.
struct WrittenPhone {
  Types types;
  std::span<const ContactText> places;
};

constexpr std::array kWritten{
    WrittenPhone{{"CELL"}, kMobile},
    WrittenPhone{{"WORK", "VOICE"}, kBusiness},
    WrittenPhone{{"HOME", "VOICE"}, kHome},
    WrittenPhone{{"WORK", "FAX"}, kBusinessFax},
    WrittenPhone{{"HOME", "FAX"}, kHomeFax},
    WrittenPhone{{"PAGER"}, kPager},
    WrittenPhone{{"CAR"}, kCar},
    WrittenPhone{{"X-EVOLUTION-RADIO"}, kRadio},
    WrittenPhone{{"X-EVOLUTION-ASSISTANT"}, kAssistant},
};

bool has(const VcardProperty& phone, const Types& types) {
  return std::all_of(types.begin(), types.end(),
                     [&](std::string_view type) { return type.empty() || hasType(phone, type); });
}

std::string placeName(ContactText place) {
  for (const ContactField& field : kContactFields) {
    if (const auto* text = std::get_if<ContactField::Text>(&field.member);
        text != nullptr && *text == place) {
      return std::string(field.name);
    }
  }
  return {};
}

/// 4.0 can spell a number as an address: `tel:+49-40-123;ext=5`
std::u16string numberOf(const VcardProperty& phone) {
  constexpr std::u16string_view kScheme = u"tel:";
  constexpr std::u16string_view kExtension = u";ext=";
  std::u16string number = oneLine(wholeText(phone));
  if (!equalsInAnyCase(toUtf8(number.substr(0, kScheme.size())), "tel:")) return number;
  number.erase(0, kScheme.size());
  const std::size_t extension = number.find(kExtension);
  if (extension != std::u16string::npos) number.replace(extension, kExtension.size(), u" ext. ");
  return number;
}

class PhoneReader {
 public:
  explicit PhoneReader(VcardDraft& draft) : draft_(draft) {}

  /// Those that ask for a place come before those that don't, and those of a kind before those of none.
  void read(std::vector<VcardProperty> phones) {
    std::erase_if(phones, [](const VcardProperty& phone) { return numberOf(phone).empty(); });
    std::erase_if(phones, [&](const VcardProperty& phone) { return takeAsked(phone); });
    std::erase_if(phones, [&](const VcardProperty& phone) { return takeKnown(phone); });
    for (const VcardProperty& phone : phones) takeUnknown(phone);
  }

 private:
  void keep(const VcardProperty& phone, ContactText place) {
    draft_.contact.*place = numberOf(phone);
    if (preferenceOf(phone) <= 100)
      draft_.notes.add("which phone number is preferred is not kept on the device");
  }

  bool takeAsked(const VcardProperty& phone) {
    for (const PhoneRule& rule : kRules) {
      if (!has(phone, rule.types)) continue;
      const ContactText place = askedPlace(phone, rule.places, draft_.contact);
      if (place != nullptr) keep(phone, place);
      return place != nullptr;
    }
    return false;
  }

  /// False for a number of no kind that the device knows.
  bool takeKnown(const VcardProperty& phone) {
    const PhoneRule* first = nullptr;
    for (const PhoneRule& rule : kRules) {
      if (!has(phone, rule.types)) continue;
      if (first == nullptr) first = &rule;
      const ContactText place = freePlace(rule.places, draft_.contact);
      if (place != nullptr) {
        keep(phone, place);
        if (&rule != first && rule.places.data() != first->places.data()) noteMoved(phone, place);
        return true;
      }
      if (rule.isLast) break;
    }
    if (first == nullptr) return false;
    draft_.noteLost("one " + placeName(first->places.back()) + " more than there is room for",
                    numberOf(phone));
    return true;
  }

  void takeUnknown(const VcardProperty& phone) {
    const ContactText place = freePlace(kAnyVoice, draft_.contact);
    if (place == nullptr) {
      draft_.noteLost("a phone number of a kind that the device doesn't know", numberOf(phone));
      return;
    }
    keep(phone, place);
    noteMoved(phone, place);
  }

  void noteMoved(const VcardProperty& phone, ContactText place) {
    draft_.notes.add("a phone number is kept as " + placeName(place) + ": " + shown(numberOf(phone)));
  }

  VcardDraft& draft_;
};

}  // namespace

void readPhones(VcardDraft& draft) {
  std::vector<VcardProperty> phones = draft.take("TEL");
  for (VcardProperty& phone : draft.take("X-MS-TEL")) phones.push_back(std::move(phone));
  PhoneReader(draft).read(std::move(phones));
}

void addPhones(std::vector<VcardProperty>& card, const Contact& contact, VcardVersion version) {
  for (const WrittenPhone& row : kWritten) {
    VcardProperty like{{}, "TEL", {}, {}};
    for (const std::string_view type : row.types) {
      if (type.empty()) continue;
      const bool isForeign = version == VcardVersion::V40 && type == "CAR";
      like.parameters.push_back({"TYPE", (isForeign ? "X-" : "") + std::string(type)});
    }
    addPlaces(card, like, row.places, contact);
  }
}

}  // namespace desktop
