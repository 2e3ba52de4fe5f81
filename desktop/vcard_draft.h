// A card while it is read: its properties, the contact that they make, and what is to be said about it.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/contact.h"
#include "desktop/icalendar_notes.h"
#include "desktop/vcard_property.h"

namespace desktop {

class VcardDraft {
 public:
  explicit VcardDraft(std::vector<VcardProperty> properties) : properties_(std::move(properties)) {}

  using Condition = std::function<bool(const VcardProperty& property)>;

  /// Hands over the properties of a name, in the card's order. What nobody takes is noted at the end.
  std::vector<VcardProperty> take(std::string_view name);
  std::vector<VcardProperty> takeIf(std::string_view name, const Condition& condition);

  /// The text of the first one of a name, on one line; empty when there is none. A second one is noted.
  std::u16string takeText(std::string_view name);

  /// What a person calls the property, as some programs say in a property of the same group; empty for none.
  std::u16string labelOf(const VcardProperty& property) const;

  /// `what` is not kept on the device: `text`
  void noteLost(const std::string& what, std::u16string_view text);

  /// Notes everything that nobody took and that a person would miss.
  void noteRest();

  Contact contact;
  Notes notes;

 private:
  std::vector<VcardProperty> properties_;
};

/// The text of a property as the device's one-line texts have it.
std::u16string oneLine(std::u16string_view text);

/// The text of a property as the device's longer texts have it.
std::u16string manyLines(std::u16string_view text);

/// In quotes, cut to what fits into a message.
std::string shown(std::u16string_view text);

}  // namespace desktop
