#include "desktop/vcard_date.h"

#include <cstdio>

#include "desktop/local_time.h"

namespace desktop {

namespace {

/// Reads digits off the beginning of a text.
class Digits {
 public:
  explicit Digits(std::string_view text) : rest_(text) {}

  /// Nothing, and nothing read, unless that many digits come next.
  std::optional<std::uint16_t> number(std::size_t count) {
    if (rest_.size() < count) return std::nullopt;
    std::uint16_t value = 0;
    for (const char digit : rest_.substr(0, count)) {
      if (digit < '0' || digit > '9') return std::nullopt;
      value = static_cast<std::uint16_t>(value * 10 + (digit - '0'));
    }
    rest_.remove_prefix(count);
    return value;
  }

  bool skip(char letter) {
    const bool isThere = rest_.starts_with(letter);
    if (isThere) rest_.remove_prefix(1);
    return isThere;
  }

  bool atEnd() const { return rest_.empty(); }

 private:
  std::string_view rest_;
};

bool readDay(Digits& digits, LocalTime& time) {
  const auto year = digits.number(4);
  const bool isExtended = digits.skip('-');
  const auto month = digits.number(2);
  if (isExtended && !digits.skip('-')) return false;
  const auto day = digits.number(2);
  if (!year || !month || !day) return false;
  time.year = *year;
  time.month = *month;
  time.day = *day;
  return true;
}

void skipFraction(Digits& digits) {
  if (!digits.skip('.') && !digits.skip(',')) return;
  while (digits.number(1)) {
  }
}

bool skipZone(Digits& digits) {
  if (digits.skip('Z') || digits.atEnd()) return true;
  if (!digits.skip('+') && !digits.skip('-')) return false;
  if (!digits.number(2)) return false;
  if (digits.skip(':') || !digits.atEnd()) return digits.number(2).has_value();
  return true;
}

/// Hours, and minutes and seconds as far as there are any.
bool readClock(Digits& digits, LocalTime& time) {
  const auto hour = digits.number(2);
  if (!hour) return false;
  time.hour = *hour;
  for (std::uint16_t LocalTime::*part : {&LocalTime::minute, &LocalTime::second}) {
    const bool isExtended = digits.skip(':');
    const auto value = digits.number(2);
    if (!value && isExtended) return false;
    if (!value) break;
    time.*part = *value;
  }
  skipFraction(digits);
  return skipZone(digits);
}

}  // namespace

std::optional<LocalTime> readVcardDate(std::string_view text) {
  LocalTime time;
  Digits digits(text);
  if (!readDay(digits, time)) return std::nullopt;
  if (!digits.atEnd() && !((digits.skip('T') || digits.skip(' ')) && readClock(digits, time)))
    return std::nullopt;
  if (!digits.atEnd() || !isValid(time)) return std::nullopt;
  return time;
}

std::string spellVcardDate(const LocalTime& time, VcardVersion version) {
  const bool isBasic = version == VcardVersion::V40;
  char text[40];
  std::snprintf(text, sizeof text, isBasic ? "%04u%02u%02u" : "%04u-%02u-%02u", time.year, time.month,
                time.day);
  std::string spelled = text;
  if (isMidnight(time)) return spelled;
  std::snprintf(text, sizeof text, isBasic ? "T%02u%02u%02u" : "T%02u:%02u:%02u", time.hour, time.minute,
                time.second);
  return spelled + text;
}

}  // namespace desktop
