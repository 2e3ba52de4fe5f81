#include "emulator/system/zone_rules.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <utility>

#include "emulator/system/file_time.h"
#include "emulator/system/time_zone.h"
#include "emulator/system/utf16.h"

namespace emulator {
namespace {

constexpr int kSecondsPerHour = 3600;
constexpr int kSecondsPerDay = 24 * kSecondsPerHour;
constexpr Ticks kTicksPerWeek = Ticks{7} * kSecondsPerDay * kTicksPerSecond;
constexpr int kDefaultTransition = 2 * kSecondsPerHour;  ///< The hour of a change that the rule does not say.

/// Reads a POSIX rule from left to right.
class RuleReader {
 public:
  explicit RuleReader(std::string_view rule) : rule_(rule), rest_(rule) {}

  bool atEnd() const { return rest_.empty(); }
  bool isAt(char expected) const { return rest_.starts_with(expected); }

  /// Takes the character when it is the next one.
  bool take(char expected) {
    if (!isAt(expected)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  void require(char expected) {
    if (!take(expected)) refuse();
  }

  int number(int low, int high) {
    const std::size_t length = std::min(rest_.find_first_not_of("0123456789"), rest_.size());
    if (length == 0 || length > 3) refuse();
    const int value = std::stoi(std::string(rest_.substr(0, length)));
    if (value < low || value > high) refuse();
    rest_.remove_prefix(length);
    return value;
  }

  /// An abbreviation: letters, or anything between < and >.
  std::string name() {
    const bool quoted = take('<');
    const std::size_t length =
        std::min(quoted ? rest_.find('>') : rest_.find_first_of("0123456789+-,"), rest_.size());
    if (length == 0) refuse();
    std::string result(rest_.substr(0, length));
    rest_.remove_prefix(length);
    if (quoted) require('>');
    return result;
  }

  /// [+-]hours[:minutes[:seconds]], in seconds.
  int time() {
    const int sign = take('-') ? -1 : 1;
    if (sign > 0) take('+');
    int seconds = number(0, 167) * kSecondsPerHour;
    if (take(':')) seconds += number(0, 59) * 60;
    if (take(':')) seconds += number(0, 59);
    return sign * seconds;
  }

  [[noreturn]] void refuse() const {
    throw std::invalid_argument("not a time zone rule: \"" + std::string(rule_) + '"');
  }

 private:
  std::string_view rule_;
  std::string_view rest_;
};

/// The weekday moves with the time when that is not one of the rule's own day; which one of the month it then
/// is differs from year to year.
SYSTEMTIME onDayOfTime(SYSTEMTIME rule, int seconds, int year) {
  const Ticks moment = transitionIn(year, rule).value() + seconds * kTicksPerSecond;
  SYSTEMTIME moved = systemTimeOf(moment).value();
  const auto nextWeek = systemTimeOf(moment + kTicksPerWeek).value();
  const bool isLast = nextWeek.wMonth != moved.wMonth;
  moved.wDay = isLast && rule.wDay == 5 ? WORD{5} : static_cast<WORD>((moved.wDay - 1) / 7 + 1);
  moved.wYear = 0;
  return moved;
}

/// ,Mmonth.week.weekday[/time]
SYSTEMTIME readTransition(RuleReader& reader, int year) {
  SYSTEMTIME rule{};
  reader.require(',');
  reader.require('M');
  rule.wMonth = static_cast<WORD>(reader.number(1, 12));
  reader.require('.');
  rule.wDay = static_cast<WORD>(reader.number(1, 5));
  reader.require('.');
  rule.wDayOfWeek = static_cast<WORD>(reader.number(0, 6));
  const int seconds = reader.take('/') ? reader.time() : kDefaultTransition;
  // The end of the rule's own day: the platform has no hour 24, its last millisecond does.
  if (seconds == kSecondsPerDay) {
    rule.wHour = 23;
    rule.wMinute = 59;
    rule.wSecond = 59;
    rule.wMilliseconds = 999;
    return rule;
  }
  if (seconds < 0 || seconds > kSecondsPerDay) return onDayOfTime(rule, seconds, year);
  rule.wHour = static_cast<WORD>(seconds / kSecondsPerHour);
  rule.wMinute = static_cast<WORD>(seconds / 60 % 60);
  rule.wSecond = static_cast<WORD>(seconds % 60);
  return rule;
}

/// One of a zone's two periods: what it is called, its bias in seconds, and when it begins.
struct Period {
  std::string name;
  int bias = 0;
  SYSTEMTIME begin{};
};

/// A name and its bias, which may be left out when there is a default.
Period readPeriod(RuleReader& reader, std::optional<int> defaultBias) {
  Period period{reader.name(), 0, {}};
  period.bias = defaultBias && reader.isAt(',') ? *defaultBias : reader.time();
  return period;
}

void copyName(const std::string& name, WCHAR (&target)[32]) {
  const std::u16string text = toUtf16(name).substr(0, std::size(target) - 1);
  std::ranges::copy(text, target);
}

TIME_ZONE_INFORMATION zoneOf(const Period& standard, const std::optional<Period>& daylight) {
  TIME_ZONE_INFORMATION zone{};
  zone.Bias = standard.bias / 60;
  copyName(standard.name, zone.StandardName);
  copyName(daylight ? daylight->name : standard.name, zone.DaylightName);
  if (!daylight) return zone;
  zone.StandardDate = standard.begin;
  zone.DaylightDate = daylight->begin;
  zone.DaylightBias = (daylight->bias - standard.bias) / 60;
  return zone;
}

std::filesystem::path databaseFolder() {
  const char* folder = std::getenv("TZDIR");
  return folder != nullptr ? folder : "/usr/share/zoneinfo";
}

/// Names are made of these only; others could lead out of the database.
bool isZoneName(const std::string& name) {
  const auto allowed = [](char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '+' || c == '-' || c == '/';
  };
  return !name.empty() && name.front() != '/' && std::ranges::all_of(name, allowed);
}

/// The rule at the end of a zone's file: the last line, which holds from the last listed change on.
std::optional<std::string> ruleOf(const std::filesystem::path& path) {
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(path, ignored)) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  const std::string contents{std::istreambuf_iterator<char>(file), {}};
  if (!contents.starts_with("TZif") || !contents.ends_with('\n')) return std::nullopt;
  const std::size_t begin = contents.rfind('\n', contents.size() - 2) + 1;
  return contents.substr(begin, contents.size() - 1 - begin);
}

}  // namespace

TIME_ZONE_INFORMATION zoneFromRule(std::string_view rule, int year) {
  RuleReader reader(rule);
  Period standard = readPeriod(reader, std::nullopt);
  if (reader.atEnd()) return zoneOf(standard, std::nullopt);
  Period daylight = readPeriod(reader, standard.bias - kSecondsPerHour);
  daylight.begin = readTransition(reader, year);
  standard.begin = readTransition(reader, year);
  if (!reader.atEnd()) reader.refuse();
  // Ireland's law calls summer time standard and moves the clock back in winter; the platform moves it
  // forward.
  if (daylight.bias > standard.bias) std::swap(standard, daylight);
  return zoneOf(standard, daylight);
}

TIME_ZONE_INFORMATION zoneNamed(const std::string& name, int year) {
  const std::filesystem::path folder = databaseFolder();
  const auto rule = isZoneName(name) ? ruleOf(folder / name) : std::nullopt;
  if (!rule) throw std::invalid_argument("no time zone named \"" + name + "\" in " + folder.string());
  return zoneFromRule(*rule, year);
}

}  // namespace emulator
