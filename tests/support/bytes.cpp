#include "tests/support/bytes.h"

#include <iomanip>
#include <ostream>
#include <stdexcept>

namespace test {

Bytes& Bytes::u8(unsigned value) {
  bytes_.push_back(static_cast<BYTE>(value));
  return *this;
}

Bytes& Bytes::u16(unsigned value) {
  return u8(value & 0xFF).u8(value >> 8 & 0xFF);
}

Bytes& Bytes::u32(std::uint64_t value) {
  return u16(static_cast<unsigned>(value & 0xFFFF)).u16(static_cast<unsigned>(value >> 16 & 0xFFFF));
}

Bytes& Bytes::raw(std::string_view characters) {
  bytes_.insert(bytes_.end(), characters.begin(), characters.end());
  return *this;
}

Bytes& Bytes::zeros(std::size_t count) {
  bytes_.resize(bytes_.size() + count);
  return *this;
}

Bytes& Bytes::append(const Bytes& other) {
  bytes_.insert(bytes_.end(), other.bytes_.begin(), other.bytes_.end());
  return *this;
}

Bytes& Bytes::text(std::u16string_view value) {
  u32(value.size() * 2);
  for (const char16_t c : value) u16(c);
  return *this;
}

Bytes& Bytes::terminatedText(std::u16string_view value) {
  u32((value.size() + 1) * 2);
  for (const char16_t c : value) u16(c);
  return u16(0);
}

Bytes& Bytes::time(int year, int month, int dayOfWeek, int day, int hour, int minute, int second,
                   int milliseconds) {
  for (const int word : {year, month, dayOfWeek, day, hour, minute, second, milliseconds}) {
    u16(static_cast<unsigned>(word));
  }
  return *this;
}

Bytes Bytes::slice(std::size_t from, std::size_t count) const {
  if (from > bytes_.size() || count > bytes_.size() - from) throw std::out_of_range("slice leaves the bytes");
  const auto start = bytes_.begin() + static_cast<std::ptrdiff_t>(from);
  return Bytes(std::vector<BYTE>(start, start + static_cast<std::ptrdiff_t>(count)));
}

DWORD Bytes::dwordAt(std::size_t offset) const {
  const Bytes word = slice(offset, 4);
  return word.bytes_[0] | word.bytes_[1] << 8 | word.bytes_[2] << 16 | DWORD{word.bytes_[3]} << 24;
}

Bytes hex(std::string_view digits) {
  Bytes bytes;
  std::string pair;
  for (const char c : digits) {
    if (c == ' ' || c == '\n') continue;
    pair += c;
    if (pair.size() < 2) continue;
    bytes.u8(static_cast<unsigned>(std::stoul(pair, nullptr, 16)));
    pair.clear();
  }
  if (!pair.empty()) throw std::invalid_argument("half a byte");
  return bytes;
}

std::ostream& operator<<(std::ostream& out, const Bytes& bytes) {
  out << bytes.size() << " bytes:" << std::hex << std::setfill('0');
  for (const BYTE byte : bytes.vector()) out << ' ' << std::setw(2) << unsigned{byte};
  return out << std::dec;
}

}  // namespace test
