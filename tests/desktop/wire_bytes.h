// Spells out messages for tests, without a line of the code under test.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace wire_bytes {

using Bytes = std::vector<std::uint8_t>;

/// "01 0A ff"
inline Bytes hex(std::string_view digits) {
  Bytes bytes;
  int high = -1;
  for (const char digit : digits) {
    if (digit == ' ' || digit == '\n') continue;
    const int value = digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10;
    if (high < 0) {
      high = value;
    } else {
      bytes.push_back(static_cast<std::uint8_t>(high << 4 | value));
      high = -1;
    }
  }
  return bytes;
}

inline Bytes operator+(Bytes left, const Bytes& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

inline Bytes u16(unsigned value) {
  return {static_cast<std::uint8_t>(value & 0xFF), static_cast<std::uint8_t>(value >> 8 & 0xFF)};
}

inline Bytes u32(std::uint32_t value) {
  return u16(value & 0xFFFF) + u16(value >> 16);
}

inline Bytes units(std::u16string_view text) {
  Bytes bytes;
  for (const char16_t unit : text) bytes = bytes + u16(unit);
  return bytes;
}

/// As a request has it: the byte count, then the text.
inline Bytes sentText(std::u16string_view text) {
  return u32(static_cast<std::uint32_t>(text.size() * 2)) + units(text);
}

/// As the device has it: the NUL counts and travels too.
inline Bytes deviceText(std::u16string_view text) {
  return u32(static_cast<std::uint32_t>(text.size() * 2 + 2)) + units(text) + u16(0);
}

inline Bytes zeros(std::size_t count) {
  return Bytes(count);
}

}  // namespace wire_bytes
