#include "desktop/local_time.h"

#include <cstdio>

namespace desktop {

namespace {

constexpr std::uint16_t kFirstYear = 1601;
constexpr std::uint16_t kLastYear = 30827;

std::chrono::year_month_day dateOf(const LocalTime& time) {
  return {std::chrono::year(time.year), std::chrono::month(time.month), std::chrono::day(time.day)};
}

}  // namespace

bool isValid(const LocalTime& time) {
  return time.year >= kFirstYear && time.year <= kLastYear && dateOf(time).ok() && time.hour < 24 &&
         time.minute < 60 && time.second < 60 && time.millisecond < 1000;
}

bool isNone(const LocalTime& time) {
  return time == LocalTime{};
}

LocalTime noneIfNoDate(const LocalTime& time) {
  return dateOf(time) == dateOf(kNoDateTime) ? LocalTime{} : time;
}

std::chrono::sys_days dayOf(const LocalTime& time) {
  return dateOf(time);
}

LocalTime midnightOf(std::chrono::sys_days day) {
  const std::chrono::year_month_day date(day);
  LocalTime time;
  time.year = static_cast<std::uint16_t>(static_cast<int>(date.year()));
  time.month = static_cast<std::uint16_t>(static_cast<unsigned>(date.month()));
  time.day = static_cast<std::uint16_t>(static_cast<unsigned>(date.day()));
  return time;
}

bool isMidnight(const LocalTime& time) {
  return time.hour == 0 && time.minute == 0 && time.second == 0 && time.millisecond == 0;
}

LocalTime addDays(const LocalTime& time, int days) {
  LocalTime moved = midnightOf(dayOf(time) + std::chrono::days(days));
  moved.hour = time.hour;
  moved.minute = time.minute;
  moved.second = time.second;
  moved.millisecond = time.millisecond;
  return moved;
}

std::time_t instantOf(const LocalTime& time) {
  std::tm clock{};
  clock.tm_year = time.year - 1900;
  clock.tm_mon = time.month - 1;
  clock.tm_mday = time.day;
  clock.tm_hour = time.hour;
  clock.tm_min = time.minute;
  clock.tm_sec = time.second;
  clock.tm_isdst = -1;
  return std::mktime(&clock);
}

LocalTime clockAt(std::time_t instant) {
  tzset();  // localtime_r needn't look at TZ itself
  std::tm clock{};
  localtime_r(&instant, &clock);
  LocalTime time;
  time.year = static_cast<std::uint16_t>(clock.tm_year + 1900);
  time.month = static_cast<std::uint16_t>(clock.tm_mon + 1);
  time.day = static_cast<std::uint16_t>(clock.tm_mday);
  time.hour = static_cast<std::uint16_t>(clock.tm_hour);
  time.minute = static_cast<std::uint16_t>(clock.tm_min);
  time.second = static_cast<std::uint16_t>(clock.tm_sec);
  return time;
}

std::string spellDay(const LocalTime& time) {
  if (isNone(time)) return "none";
  char text[24];
  std::snprintf(text, sizeof text, "%04u-%02u-%02u", time.year, time.month, time.day);
  return text;
}

std::string spellTime(const LocalTime& time) {
  if (isNone(time)) return "none";
  char clock[24];
  std::snprintf(clock, sizeof clock, " %02u:%02u", time.hour, time.minute);
  std::string text = spellDay(time) + clock;
  if (time.second != 0) {
    std::snprintf(clock, sizeof clock, ":%02u", time.second);
    text += clock;
  }
  return text;
}

}  // namespace desktop
