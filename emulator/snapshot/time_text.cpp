#include "emulator/snapshot/time_text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdio>

namespace emulator {
namespace {

using std::chrono::days;
using std::chrono::milliseconds;
using std::chrono::sys_days;
using std::chrono::sys_time;

using Moment = sys_time<milliseconds>;

constexpr sys_days kDateEpoch = sys_days(std::chrono::December / 30 / 1899);
constexpr sys_days kTicksEpoch = sys_days(std::chrono::January / 1 / 1601);
constexpr double kMillisecondsPerDay = 86'400'000;

/// A 0 stands for a digit.
constexpr std::string_view kForm = "0000-00-00T00:00:00.000";

/// The ticks of a millisecond, and the end.
constexpr std::string_view kRestForm = "0000Z";

bool hasForm(std::string_view text, std::string_view wanted) {
  return std::ranges::equal(text, wanted,
                            [](char c, char form) { return form == '0' ? c >= '0' && c <= '9' : c == form; });
}

int numberAt(std::string_view text, std::size_t position, std::size_t length) {
  int number = 0;
  for (const char digit : text.substr(position, length)) number = number * 10 + (digit - '0');
  return number;
}

std::optional<Moment> parse(std::string_view text) {
  using namespace std::chrono;
  if (!hasForm(text, kForm)) return std::nullopt;
  const year_month_day date{year(numberAt(text, 0, 4)), month(static_cast<unsigned>(numberAt(text, 5, 2))),
                            day(static_cast<unsigned>(numberAt(text, 8, 2)))};
  const int hour = numberAt(text, 11, 2);
  const int minute = numberAt(text, 14, 2);
  const int second = numberAt(text, 17, 2);
  if (!date.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return sys_days(date) + hours(hour) + minutes(minute) + seconds(second) +
         milliseconds(numberAt(text, 20, 3));
}

std::string toText(Moment moment) {
  const auto day = std::chrono::floor<days>(moment);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(moment - day);
  std::array<char, 40> text{};
  const int length =
      std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03d", int(date.year()),
                    unsigned(date.month()), unsigned(date.day()), static_cast<int>(time.hours().count()),
                    static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()),
                    static_cast<int>(time.subseconds().count()));
  return std::string(text.data(), static_cast<std::size_t>(length));
}

}  // namespace

std::string localText(double date) {
  const double day = std::trunc(date);
  const double ofDay = std::round(std::abs(date - day) * kMillisecondsPerDay);
  return toText(kDateEpoch + days(std::llround(day)) + milliseconds(std::llround(ofDay)));
}

std::optional<double> parseLocal(std::string_view text) {
  const auto moment = parse(text);
  if (!moment) return std::nullopt;
  const auto day = std::chrono::floor<days>(*moment);
  const auto whole = static_cast<double>((day - kDateEpoch).count());
  const double ofDay = static_cast<double>((*moment - day).count()) / kMillisecondsPerDay;
  return whole < 0 ? whole - ofDay : whole + ofDay;
}

std::string utcText(Ticks time) {
  return toText(kTicksEpoch + milliseconds(time / kTicksPerMillisecond)) + 'Z';
}

std::optional<std::string> preciseUtcText(Ticks time) {
  constexpr sys_days kYear10000 = sys_days(std::chrono::year(10000) / 1 / 1);
  const auto end = milliseconds(kYear10000 - kTicksEpoch).count() * kTicksPerMillisecond;
  if (time < 0 || time >= end) return std::nullopt;
  std::string rest = std::to_string(kTicksPerMillisecond + time % kTicksPerMillisecond);
  rest.front() = 'Z';
  std::ranges::rotate(rest, rest.begin() + 1);
  std::string text = utcText(time);
  text.pop_back();
  return text + rest;
}

std::optional<Ticks> parsePreciseUtc(std::string_view text) {
  const std::string_view rest = text.substr(std::min(text.size(), kForm.size()));
  if (rest.size() != kRestForm.size() || !hasForm(rest, kRestForm)) return std::nullopt;
  const auto time = parseUtc(std::string(text.substr(0, kForm.size())) + 'Z');
  return time ? std::optional(*time + numberAt(rest, 0, kRestForm.size() - 1)) : std::nullopt;
}

std::optional<Ticks> parseUtc(std::string_view text) {
  if (!text.ends_with('Z')) return std::nullopt;
  text.remove_suffix(1);
  const auto moment = parse(text);
  if (!moment || *moment < kTicksEpoch) return std::nullopt;
  return (*moment - kTicksEpoch).count() * kTicksPerMillisecond;
}

}  // namespace emulator
