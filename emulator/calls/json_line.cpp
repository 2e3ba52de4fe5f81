#include "emulator/calls/json_line.h"

#include <array>
#include <charconv>
#include <cmath>

namespace emulator {

namespace {

constexpr std::size_t kLongestNumber = 32;  // the shortest form of a double takes at most 24 characters

template <typename Number>
void append(std::string& line, Number value) {
  std::array<char, kLongestNumber> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  line.append(digits.data(), end);
}

}  // namespace

void JsonLine::separate() {
  if (!line_.empty() && line_.back() != '[' && line_.back() != '{' && line_.back() != ' ') line_ += ", ";
}

void JsonLine::open(char bracket) {
  separate();
  line_ += bracket;
}

void JsonLine::key(std::string_view name) {
  text(name);
  line_ += ": ";
}

void JsonLine::null() {
  separate();
  line_ += "null";
}

void JsonLine::number(std::int64_t value) {
  separate();
  append(line_, value);
}

void JsonLine::number(std::uint64_t value) {
  separate();
  append(line_, value);
}

void JsonLine::number(double value) {
  if (!std::isfinite(value)) return null();
  separate();
  append(line_, value);
}

void JsonLine::character(char16_t unit) {
  constexpr std::string_view kHex = "0123456789abcdef";
  if (unit == u'"' || unit == u'\\') {
    line_ += {'\\', static_cast<char>(unit)};
  } else if (unit >= 0x20 && unit < 0x7F) {
    line_ += static_cast<char>(unit);
  } else {
    line_ += {'\\', 'u', kHex[unit >> 12], kHex[(unit >> 8) & 15], kHex[(unit >> 4) & 15], kHex[unit & 15]};
  }
}

void JsonLine::text(std::u16string_view value) {
  separate();
  line_ += '"';
  for (const char16_t unit : value) character(unit);
  line_ += '"';
}

void JsonLine::text(std::string_view value) {
  separate();
  line_ += '"';
  for (const char unit : value) character(static_cast<unsigned char>(unit));
  line_ += '"';
}

}  // namespace emulator
