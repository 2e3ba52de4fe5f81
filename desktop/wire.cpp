#include "desktop/wire.h"

#include <algorithm>

#include "desktop/device_error.h"
#include "desktop/local_time.h"

namespace desktop {

namespace {

constexpr std::size_t kTimeSize = 16;

std::uint16_t halfAt(BytesView bytes, std::size_t offset) {
  return static_cast<std::uint16_t>(bytes[offset] | bytes[offset + 1] << 8);
}

std::uint16_t weekdayOf(const LocalTime& time) {
  if (!isValid(time)) return 0;
  return static_cast<std::uint16_t>(std::chrono::weekday(dayOf(time)).c_encoding());
}

}  // namespace

BytesView WireReader::raw(std::size_t count) {
  if (count > rest_.size()) {
    throw ProtocolError("the reply ends " + std::to_string(count - rest_.size()) + " bytes too early");
  }
  const BytesView taken = rest_.first(count);
  rest_ = rest_.subspan(count);
  return taken;
}

std::uint8_t WireReader::byte() {
  return raw(1)[0];
}

std::uint32_t WireReader::number() {
  const BytesView bytes = raw(4);
  return halfAt(bytes, 0) | static_cast<std::uint32_t>(halfAt(bytes, 2)) << 16;
}

LocalTime WireReader::time() {
  const BytesView bytes = raw(kTimeSize);
  LocalTime time;
  time.year = halfAt(bytes, 0);
  time.month = halfAt(bytes, 2);
  time.day = halfAt(bytes, 6);
  time.hour = halfAt(bytes, 8);
  time.minute = halfAt(bytes, 10);
  time.second = halfAt(bytes, 12);
  time.millisecond = halfAt(bytes, 14);
  return time;
}

std::u16string WireReader::text() {
  const std::uint32_t count = number();
  const BytesView bytes = raw(count);
  if (count % 2 != 0) throw ProtocolError("a text of " + std::to_string(count) + " bytes is no UTF-16");
  std::u16string text(count / 2, u'\0');
  for (std::size_t i = 0; i < text.size(); ++i) text[i] = halfAt(bytes, 2 * i);
  text.resize(std::min(text.find(u'\0'), text.size()));
  return text;
}

void WireReader::expectEnd() const {
  if (!rest_.empty()) {
    throw ProtocolError("the reply goes on for " + std::to_string(rest_.size()) + " bytes after its end");
  }
}

void WireWriter::byte(std::uint8_t value) {
  bytes_.push_back(value);
}

void WireWriter::half(std::uint16_t value) {
  byte(static_cast<std::uint8_t>(value & 0xFF));
  byte(static_cast<std::uint8_t>(value >> 8));
}

void WireWriter::number(std::uint32_t value) {
  half(static_cast<std::uint16_t>(value & 0xFFFF));
  half(static_cast<std::uint16_t>(value >> 16));
}

void WireWriter::time(const LocalTime& value) {
  for (const std::uint16_t part : {value.year, value.month, weekdayOf(value), value.day, value.hour,
                                   value.minute, value.second, value.millisecond}) {
    half(part);
  }
}

void WireWriter::text(std::u16string_view value) {
  number(static_cast<std::uint32_t>(value.size() * 2));
  for (const char16_t unit : value) half(unit);
}

void WireWriter::raw(BytesView bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
}

void WireWriter::zeros(std::size_t count) {
  bytes_.resize(bytes_.size() + count);
}

}  // namespace desktop
