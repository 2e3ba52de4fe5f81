#include "emulator/pim/ansi_text.h"

#include <algorithm>
#include <array>

namespace emulator {
namespace {

// The bytes 0x80 to 0x9F; all others stand for the character of their own number.
constexpr std::size_t kFirstSpecial = 0x80;
constexpr std::array<char16_t, 32> kSpecial = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr bool isSpecial(std::size_t byte) {
  return byte >= kFirstSpecial && byte < kFirstSpecial + kSpecial.size();
}

std::uint8_t toAnsi(char16_t character) {
  if (character <= 0xFF && !isSpecial(character)) return static_cast<std::uint8_t>(character);
  const auto found = std::ranges::find(kSpecial, character);
  if (found == kSpecial.end()) return '?';
  return static_cast<std::uint8_t>(kFirstSpecial + static_cast<std::size_t>(found - kSpecial.begin()));
}

char16_t fromAnsi(std::uint8_t byte) {
  return isSpecial(byte) ? kSpecial[byte - kFirstSpecial] : char16_t{byte};
}

}  // namespace

std::vector<std::uint8_t> toAnsi(std::u16string_view text) {
  std::vector<std::uint8_t> bytes(text.size());
  std::ranges::transform(text, bytes.begin(), [](char16_t character) { return toAnsi(character); });
  return bytes;
}

std::u16string fromAnsi(std::span<const std::uint8_t> bytes) {
  std::u16string text(bytes.size(), u'\0');
  std::ranges::transform(bytes, text.begin(), [](std::uint8_t byte) { return fromAnsi(byte); });
  return text;
}

}  // namespace emulator
