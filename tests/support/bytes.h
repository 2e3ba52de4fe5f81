// Byte strings for tests: written as hex, built field by field, and printed as hex when they differ.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/types.h"

namespace test {

class Bytes {
 public:
  Bytes() = default;
  explicit Bytes(std::vector<BYTE> bytes) : bytes_(std::move(bytes)) {}

  Bytes& u8(unsigned value);
  Bytes& u16(unsigned value);
  Bytes& u32(std::uint64_t value);
  Bytes& raw(std::string_view characters);
  Bytes& zeros(std::size_t count);
  Bytes& append(const Bytes& other);
  /// A request's text: u32 byte count and the characters, no terminator.
  Bytes& text(std::u16string_view value);
  /// A reply's text: the count and the characters include a terminating NUL.
  Bytes& terminatedText(std::u16string_view value);
  /// Eight u16: year, month, day of week, day, hour, minute, second, milliseconds.
  Bytes& time(int year, int month, int dayOfWeek, int day, int hour = 0, int minute = 0, int second = 0,
              int milliseconds = 0);

  [[nodiscard]] const std::vector<BYTE>& vector() const { return bytes_; }
  [[nodiscard]] std::size_t size() const { return bytes_.size(); }
  [[nodiscard]] const BYTE* data() const { return bytes_.data(); }
  [[nodiscard]] Bytes slice(std::size_t from, std::size_t count) const;
  [[nodiscard]] DWORD dwordAt(std::size_t offset) const;

  friend bool operator==(const Bytes&, const Bytes&) = default;

 private:
  std::vector<BYTE> bytes_;
};

/// "01 02 ff": pairs of hex digits, blanks between them as you like.
Bytes hex(std::string_view digits);

std::ostream& operator<<(std::ostream& out, const Bytes& bytes);

}  // namespace test
