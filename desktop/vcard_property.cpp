#include "desktop/vcard_property.h"

#include <algorithm>
#include <charconv>

namespace desktop {

namespace {

constexpr int kNotPreferred = 101;

char upperCase(char letter) {
  return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

/// "work,voice" in quotes is one value for a parser, and two types.
bool listHas(std::string_view list, std::string_view type) {
  while (!list.empty()) {
    const std::size_t end = std::min(list.find(','), list.size());
    if (equalsInAnyCase(list.substr(0, end), type)) return true;
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return false;
}

}  // namespace

std::string upperCase(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), [](char letter) { return upperCase(letter); });
  return result;
}

bool equalsInAnyCase(std::string_view left, std::string_view right) {
  return upperCase(left) == upperCase(right);
}

std::string_view parameterOf(const VcardProperty& property, std::string_view name) {
  for (const VcardParameter& parameter : property.parameters) {
    if (parameter.name == name) return parameter.value;
  }
  return {};
}

bool hasType(const VcardProperty& property, std::string_view type) {
  return std::any_of(property.parameters.begin(), property.parameters.end(),
                     [&](const VcardParameter& parameter) {
                       return parameter.name == "TYPE" && listHas(parameter.value, type);
                     });
}

int preferenceOf(const VcardProperty& property) {
  if (hasType(property, "PREF")) return 1;
  const std::string_view spelled = parameterOf(property, "PREF");
  int preference = 0;
  const auto [end, error] = std::from_chars(spelled.data(), spelled.data() + spelled.size(), preference);
  const bool isPreference = error == std::errc() && preference >= 1 && preference < kNotPreferred;
  return isPreference ? preference : kNotPreferred;
}

std::u16string wholeText(const VcardProperty& property) {
  std::u16string text;
  for (const std::u16string& value : property.values) {
    if (&value != &property.values.front()) text += u';';
    text += value;
  }
  return text;
}

}  // namespace desktop
