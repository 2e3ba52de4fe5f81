#include "emulator/snapshot/base64.h"

#include <algorithm>
#include <array>

namespace emulator {
namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint32_t kNoDigit = 64;

constexpr auto kValues = [] {
  std::array<std::uint8_t, 256> values{};
  values.fill(kNoDigit);
  for (std::size_t i = 0; i < kDigits.size(); ++i) {
    values[static_cast<unsigned char>(kDigits[i])] = static_cast<std::uint8_t>(i);
  }
  return values;
}();

/// The three bytes of four digits; nothing when one is no digit.
std::optional<std::uint32_t> groupOf(std::string_view digits) {
  std::uint32_t group = 0;
  for (const char digit : digits) {
    const std::uint32_t value = kValues[static_cast<unsigned char>(digit)];
    if (value == kNoDigit) return std::nullopt;
    group = group << 6 | value;
  }
  return group;
}

std::size_t paddingOf(std::string_view text) {
  return text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
}

}  // namespace

std::string toBase64(ByteView bytes) {
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t at = 0; at < bytes.size(); at += 3) {
    const std::size_t count = std::min<std::size_t>(bytes.size() - at, 3);
    std::uint32_t group = 0;
    for (std::size_t i = 0; i < 3; ++i) group = group << 8 | (i < count ? bytes[at + i] : 0U);
    for (std::size_t i = 0; i < 4; ++i) text += i <= count ? kDigits[group >> (18 - 6 * i) & 63] : '=';
  }
  return text;
}

std::optional<Bytes> fromBase64(std::string_view text) {
  if (text.empty()) return Bytes();
  if (text.size() % 4 != 0) return std::nullopt;
  const std::size_t padding = paddingOf(text);
  std::string last(text.substr(text.size() - 4));
  last.replace(4 - padding, padding, padding, kDigits.front());
  Bytes bytes;
  bytes.reserve(text.size() / 4 * 3);
  for (std::size_t at = 0; at < text.size(); at += 4) {
    const auto group = groupOf(at + 4 < text.size() ? text.substr(at, 4) : last);
    if (!group) return std::nullopt;
    for (const int shift : {16, 8, 0}) bytes.push_back(static_cast<std::uint8_t>(*group >> shift));
  }
  for (std::size_t i = 0; i < padding; ++i) {
    if (bytes.back() != 0) return std::nullopt;
    bytes.pop_back();
  }
  return bytes;
}

}  // namespace emulator
