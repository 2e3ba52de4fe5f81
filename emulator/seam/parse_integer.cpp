#include "emulator/seam/parse_integer.h"

#include <algorithm>
#include <limits>

namespace emulator {

namespace {

constexpr int kNoDigit = 99;

int digitOf(char16_t character) {
  if (character >= u'0' && character <= u'9') return character - u'0';
  if (character >= u'a' && character <= u'z') return character - u'a' + 10;
  if (character >= u'A' && character <= u'Z') return character - u'A' + 10;
  return kNoDigit;
}

bool isSpace(char16_t character) {
  return character == u' ' || (character >= u'\t' && character <= u'\r');
}

/// A prefix counts only when a digit follows it; the 0 alone is a number otherwise.
bool hasHexPrefix(std::u16string_view text) {
  return text.size() > 2 && text[0] == u'0' && (text[1] == u'x' || text[1] == u'X') && digitOf(text[2]) < 16;
}

}  // namespace

ParsedInteger parseInteger(std::u16string_view text, int base) {
  const auto first = std::ranges::find_if_not(text, isSpace);
  std::size_t place = static_cast<std::size_t>(first - text.begin());
  const bool negative = place < text.size() && text[place] == u'-';
  if (place < text.size() && (text[place] == u'-' || text[place] == u'+')) ++place;
  const bool hex = (base == 0 || base == 16) && hasHexPrefix(text.substr(place));
  if (base == 0) base = hex ? 16 : place < text.size() && text[place] == u'0' ? 8 : 10;
  if (hex) place += 2;

  const std::size_t digits = place;
  const std::int64_t limit = std::int64_t{std::numeric_limits<LONG>::max()} + (negative ? 1 : 0);
  std::int64_t value = 0;
  for (; place < text.size() && digitOf(text[place]) < base; ++place) {
    value = std::min(value * base + digitOf(text[place]), limit);
  }
  if (place == digits) return {};
  return {static_cast<LONG>(negative ? -value : value), place};
}

}  // namespace emulator
