#include "desktop/item_text.h"

#include <algorithm>

namespace desktop {
namespace {

constexpr bool isHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool isForbiddenControl(char16_t unit) {
  return (unit < 0x20 && unit != u'\n' && unit != u'\t') || unit == 0x7F;
}

std::u16string_view withoutBlanks(std::u16string_view text) {
  const std::size_t first = text.find_first_not_of(u" \t");
  if (first == std::u16string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(u" \t") - first + 1);
}

}  // namespace

std::u16string replaceLineEnds(std::u16string_view text, std::u16string_view lineEnd) {
  std::u16string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') continue;
    if (text[i] == u'\r' || text[i] == u'\n') {
      result += lineEnd;
    } else {
      result += text[i];
    }
  }
  return result;
}

std::u16string withDeviceLineEnds(std::u16string_view text) {
  return replaceLineEnds(text, u"\r\n");
}

std::u16string asOneLine(std::u16string_view text) {
  std::u16string result = replaceLineEnds(text, u" ");
  std::replace(result.begin(), result.end(), u'\t', u' ');
  return std::u16string(withoutBlanks(result));
}

std::u16string withFileLineEnds(std::u16string_view text) {
  std::u16string result = replaceLineEnds(text, u"\n");
  std::erase_if(result, isForbiddenControl);
  return result;
}

std::u16string tidyList(std::u16string_view list) {
  std::u16string result;
  while (!list.empty()) {
    const std::size_t end = std::min(list.find(u','), list.size());
    const std::u16string_view part = withoutBlanks(list.substr(0, end));
    if (!result.empty() && !part.empty()) result += u',';
    result += part;
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return result;
}

std::u16string_view cutTo(std::u16string_view text, std::size_t limit) {
  if (text.size() <= limit) return text;
  if (limit > 0 && isHighSurrogate(text[limit - 1])) --limit;
  return text.substr(0, limit);
}

std::u16string foldCase(std::u16string text) {
  std::ranges::transform(text, text.begin(), [](char16_t letter) {
    return letter >= u'A' && letter <= u'Z' ? static_cast<char16_t>(letter - u'A' + u'a') : letter;
  });
  return text;
}

}  // namespace desktop
