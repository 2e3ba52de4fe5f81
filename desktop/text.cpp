#include "desktop/text.h"

#include <array>
#include <cstdint>
#include <cstdio>

#include "desktop/input_error.h"

namespace desktop {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstHighSurrogate = 0xD800;
constexpr char32_t kFirstLowSurrogate = 0xDC00;
constexpr char32_t kEndOfSurrogates = 0xE000;
constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char32_t kLastCodePoint = 0x10FFFF;

bool isHighSurrogate(char32_t unit) {
  return unit >= kFirstHighSurrogate && unit < kFirstLowSurrogate;
}
bool isLowSurrogate(char32_t unit) {
  return unit >= kFirstLowSurrogate && unit < kEndOfSurrogates;
}
bool isControl(unsigned char byte) {
  return byte < 0x20 || byte == 0x7F;
}

char32_t takeCodePoint(std::u16string_view& text) {
  const char32_t unit = text.front();
  text.remove_prefix(1);
  if (!isHighSurrogate(unit) && !isLowSurrogate(unit)) return unit;
  if (isLowSurrogate(unit) || text.empty() || !isLowSurrogate(text.front())) return kReplacement;
  const char32_t low = text.front();
  text.remove_prefix(1);
  return kFirstSupplementary + ((unit - kFirstHighSurrogate) << 10) + (low - kFirstLowSurrogate);
}

void appendUtf8(std::string& out, char32_t point) {
  const auto tail = [&](int shift) { out += static_cast<char>(0x80 | ((point >> shift) & 0x3F)); };
  if (point < 0x80) {
    out += static_cast<char>(point);
  } else if (point < 0x800) {
    out += static_cast<char>(0xC0 | (point >> 6));
    tail(0);
  } else if (point < kFirstSupplementary) {
    out += static_cast<char>(0xE0 | (point >> 12));
    tail(6);
    tail(0);
  } else {
    out += static_cast<char>(0xF0 | (point >> 18));
    tail(12);
    tail(6);
    tail(0);
  }
}

void appendUtf16(std::u16string& out, char32_t point) {
  if (point < kFirstSupplementary) {
    out += static_cast<char16_t>(point);
    return;
  }
  const char32_t rest = point - kFirstSupplementary;
  out += static_cast<char16_t>(kFirstHighSurrogate + (rest >> 10));
  out += static_cast<char16_t>(kFirstLowSurrogate + (rest & 0x3FF));
}

/// The shape of a UTF-8 sequence, known from its first byte.
struct Lead {
  unsigned char mask;
  unsigned char value;
  std::size_t tails;
  char32_t least;  ///< smaller code points have a shorter spelling, which is the only one allowed
};

constexpr std::array kLeads{
    Lead{0x80, 0x00, 0, 0},
    Lead{0xE0, 0xC0, 1, 0x80},
    Lead{0xF0, 0xE0, 2, 0x800},
    Lead{0xF8, 0xF0, 3, kFirstSupplementary},
};

[[noreturn]] void refuse(std::string_view text) {
  throw InputError("no UTF-8 text: " + onOneLine(text));
}

char32_t takeUtf8(std::string_view& rest, std::string_view whole) {
  const auto first = static_cast<unsigned char>(rest.front());
  for (const Lead& lead : kLeads) {
    if ((first & lead.mask) != lead.value) continue;
    if (rest.size() <= lead.tails) refuse(whole);
    char32_t point = first & static_cast<unsigned char>(~lead.mask);
    for (std::size_t i = 1; i <= lead.tails; ++i) {
      const auto tail = static_cast<unsigned char>(rest[i]);
      if ((tail & 0xC0) != 0x80) refuse(whole);
      point = (point << 6) | (tail & 0x3F);
    }
    if (point < lead.least || point > kLastCodePoint || isHighSurrogate(point) || isLowSurrogate(point)) {
      refuse(whole);
    }
    rest.remove_prefix(lead.tails + 1);
    return point;
  }
  refuse(whole);
}

std::string spellControl(char control) {
  switch (control) {
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      break;
  }
  char text[8];
  std::snprintf(text, sizeof text, "\\x%02X", static_cast<unsigned char>(control));
  return text;
}

}  // namespace

std::string toUtf8(std::u16string_view text) {
  std::string out;
  while (!text.empty()) appendUtf8(out, takeCodePoint(text));
  return out;
}

std::u16string toUtf16(std::string_view text) {
  std::u16string out;
  for (std::string_view rest = text; !rest.empty();) appendUtf16(out, takeUtf8(rest, text));
  return out;
}

std::string_view withoutByteOrderMark(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return text.starts_with(kMark) ? text.substr(kMark.size()) : text;
}

std::string onOneLine(std::string_view utf8) {
  std::string line(utf8);
  for (char& byte : line) {
    if (isControl(static_cast<unsigned char>(byte))) byte = ' ';
  }
  return line;
}

std::string quoted(std::u16string_view text) {
  std::string out = "\"";
  for (const char byte : toUtf8(text)) {
    if (isControl(static_cast<unsigned char>(byte))) {
      out += spellControl(byte);
    } else {
      if (byte == '"' || byte == '\\') out += '\\';
      out += byte;
    }
  }
  return out + '"';
}

}  // namespace desktop
