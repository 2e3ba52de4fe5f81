#include "desktop/vcard_places.h"

namespace desktop {

ContactText askedPlace(const VcardProperty& property, std::span<const ContactText> places,
                       const Contact& contact) {
  const std::string_view asked = parameterOf(property, kPlaceParameter);
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (asked == std::to_string(i + 1) && (contact.*places[i]).empty()) return places[i];
  }
  return nullptr;
}

ContactText freePlace(std::span<const ContactText> places, const Contact& contact) {
  for (const ContactText place : places) {
    if ((contact.*place).empty()) return place;
  }
  return nullptr;
}

void addPlaces(std::vector<VcardProperty>& card, const VcardProperty& like,
               std::span<const ContactText> places, const Contact& contact) {
  bool isGap = false;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const std::u16string& text = contact.*places[i];
    if (text.empty()) {
      isGap = true;
      continue;
    }
    card.push_back(like);
    card.back().values = {text};
    if (isGap) card.back().parameters.push_back({std::string(kPlaceParameter), std::to_string(i + 1)});
  }
}

}  // namespace desktop
