#include "emulator/system/file_time.h"

#include <chrono>

namespace emulator {
namespace {

using Duration = std::chrono::duration<Ticks, std::ratio<1, kTicksPerSecond>>;

constexpr std::chrono::sys_days kEpoch = std::chrono::sys_days(std::chrono::January / 1 / 1601);
constexpr int kFirstYear = 1601;
/// The last whole year that a FILETIME with a clear highest bit can hold.
constexpr int kLastYear = 30827;

}  // namespace

std::optional<Ticks> ticksOf(const SYSTEMTIME& time) {
  using namespace std::chrono;
  const year_month_day date{year(time.wYear), month(time.wMonth), day(time.wDay)};
  if (!date.ok() || time.wYear < kFirstYear || time.wYear > kLastYear) return std::nullopt;
  if (time.wHour > 23 || time.wMinute > 59 || time.wSecond > 59 || time.wMilliseconds > 999)
    return std::nullopt;
  const Duration day = floor<days>(sys_days(date) - kEpoch);
  const Duration ofDay =
      hours(time.wHour) + minutes(time.wMinute) + seconds(time.wSecond) + milliseconds(time.wMilliseconds);
  return (day + ofDay).count();
}

std::optional<SYSTEMTIME> systemTimeOf(Ticks ticks) {
  using namespace std::chrono;
  if (ticks < 0) return std::nullopt;
  const auto whole = floor<days>(Duration(ticks));
  const sys_days date = kEpoch + whole;
  const year_month_day calendar(date);
  const hh_mm_ss ofDay(floor<milliseconds>(Duration(ticks) - whole));
  return SYSTEMTIME{
      static_cast<WORD>(int(calendar.year())),       static_cast<WORD>(unsigned(calendar.month())),
      static_cast<WORD>(weekday(date).c_encoding()), static_cast<WORD>(unsigned(calendar.day())),
      static_cast<WORD>(ofDay.hours().count()),      static_cast<WORD>(ofDay.minutes().count()),
      static_cast<WORD>(ofDay.seconds().count()),    static_cast<WORD>(ofDay.subseconds().count())};
}

LONG compareFileTimes(const FILETIME& left, const FILETIME& right) {
  const auto a = static_cast<std::uint64_t>(ticksOf(left));
  const auto b = static_cast<std::uint64_t>(ticksOf(right));
  return a < b ? -1 : a > b ? 1 : 0;
}

}  // namespace emulator
