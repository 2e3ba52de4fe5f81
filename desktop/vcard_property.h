// One property of a card of an address book, as a vCard library reads it and writes it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace desktop {

struct VcardParameter {
  std::string name;  ///< in upper case
  std::string value;
};

/// `item1.TEL;TYPE=HOME,VOICE:0123` has the group "item1", two parameters TYPE, and one value.
struct VcardProperty {
  std::string group;  ///< empty for none
  std::string name;   ///< in upper case
  std::vector<VcardParameter> parameters;
  /// Decoded; parted at semicolons, of CATEGORIES at commas.
  std::vector<std::u16string> values;
};

/// The first one of the name; empty when there is none.
std::string_view parameterOf(const VcardProperty& property, std::string_view name);

/// Whether TYPE says so, in letters of any case, alone or in a list.
bool hasType(const VcardProperty& property, std::string_view type);

/// 1 for what is preferred most, up to 100; 101 for what isn't preferred.
int preferenceOf(const VcardProperty& property);

/// The values as one text: only some properties are lists, and the text of another one may have semicolons.
std::u16string wholeText(const VcardProperty& property);

std::string upperCase(std::string_view text);

/// In letters of any case; both are ASCII.
bool equalsInAnyCase(std::string_view left, std::string_view right);

}  // namespace desktop
