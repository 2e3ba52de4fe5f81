#include "emulator/system/utf16.h"

#include <algorithm>
#include <array>

namespace emulator {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool isHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool isLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Takes one character off the front.
char32_t takeCharacter(std::u16string_view& text) {
  const char32_t unit = text.front();
  text.remove_prefix(1);
  if (!isHighSurrogate(unit)) return isLowSurrogate(unit) ? kReplacement : unit;
  if (text.empty() || !isLowSurrogate(text.front())) return kReplacement;
  const char32_t character = 0x10000 + ((unit - 0xD800) << 10) + (text.front() - char32_t{0xDC00});
  text.remove_prefix(1);
  return character;
}

void append(std::string& text, char32_t character) {
  const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  const auto putTail = [&put, character](int shift) { put(0x80 | ((character >> shift) & 0x3F)); };
  if (character < 0x80) {
    put(character);
  } else if (character < 0x800) {
    put(0xC0 | (character >> 6));
    putTail(0);
  } else if (character < 0x10000) {
    put(0xE0 | (character >> 12));
    putTail(6);
    putTail(0);
  } else {
    put(0xF0 | (character >> 18));
    putTail(12);
    putTail(6);
    putTail(0);
  }
}

/// How a multi-byte character begins, by its number of continuation bytes, and the least character that needs
/// them.
struct Lead {
  unsigned char mask, bits;
  char32_t least;
};
constexpr std::array kLeads{Lead{0x80, 0x00, 0}, Lead{0xE0, 0xC0, 0x80}, Lead{0xF0, 0xE0, 0x800},
                            Lead{0xF8, 0xF0, 0x10000}};

/// Takes one character, or one byte that begins none, off the front.
char32_t takeCharacter(std::string_view& text) {
  const auto byteAt = [&text](std::size_t index) { return static_cast<unsigned char>(text[index]); };
  const unsigned char first = byteAt(0);
  const auto* const lead =
      std::ranges::find_if(kLeads, [first](const Lead& l) { return (first & l.mask) == l.bits; });
  const auto tail = static_cast<std::size_t>(lead - kLeads.begin());
  char32_t character = lead == kLeads.end() ? 0 : first & static_cast<unsigned char>(~lead->mask);
  bool wellFormed = lead != kLeads.end() && tail < text.size();
  for (std::size_t i = 1; wellFormed && i <= tail; ++i) {
    wellFormed = (byteAt(i) & 0xC0) == 0x80;
    character = (character << 6) | (byteAt(i) & 0x3F);
  }
  wellFormed = wellFormed && character >= lead->least && character <= 0x10FFFF &&
               !isHighSurrogate(character) && !isLowSurrogate(character);
  text.remove_prefix(wellFormed ? tail + 1 : 1);
  return wellFormed ? character : kReplacement;
}

void append(std::u16string& text, char32_t character) {
  if (character < 0x10000) {
    text.push_back(static_cast<char16_t>(character));
    return;
  }
  text.push_back(static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)));
  text.push_back(static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
}

template <typename To, typename From>
To convert(From text) {
  To result;
  result.reserve(text.size());
  while (!text.empty()) append(result, takeCharacter(text));
  return result;
}

}  // namespace

std::string toUtf8(std::u16string_view text) {
  return convert<std::string>(text);
}

std::u16string toUtf16(std::string_view text) {
  return convert<std::u16string>(text);
}

}  // namespace emulator
