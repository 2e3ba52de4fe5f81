// Properties of a card of which the device has a fixed number of places each.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/contact.h"
#include "desktop/vcard_property.h"

namespace desktop {

using ContactText = std::u16string Contact::*;

/// The parameter of ours that tells the place, 1 for the first, where the order of the properties doesn't tell
/// it: the device can have a second home phone without a first one.
inline constexpr std::string_view kPlaceParameter = "X-QORV-PLACE";

/// The place that the property asks for, when there is one and it is free; null otherwise.
ContactText askedPlace(const VcardProperty& property, std::span<const ContactText> places,
                       const Contact& contact);

/// Null when none is free.
ContactText freePlace(std::span<const ContactText> places, const Contact& contact);

/// One property for each place that has something, made by `like` with the text as its value.
void addPlaces(std::vector<VcardProperty>& card, const VcardProperty& like,
               std::span<const ContactText> places, const Contact& contact);

}  // namespace desktop
