// Times as one number, and their conversions to the platform's two forms.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/types.h"

namespace emulator {

/// 100-nanosecond units since 1601-01-01, as in a FILETIME.
using Ticks = std::int64_t;

inline constexpr Ticks kTicksPerMillisecond = 10'000;
inline constexpr Ticks kTicksPerSecond = 1000 * kTicksPerMillisecond;
inline constexpr Ticks kTicksPerMinute = 60 * kTicksPerSecond;

constexpr Ticks ticksOf(const FILETIME& time) {
  return static_cast<Ticks>((std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime);
}

constexpr FILETIME fileTimeOf(Ticks ticks) {
  const auto bits = static_cast<std::uint64_t>(ticks);
  return {static_cast<DWORD>(bits), static_cast<DWORD>(bits >> 32)};
}

/// Nothing for a date that does not exist or lies before 1601. The day of week is ignored.
std::optional<Ticks> ticksOf(const SYSTEMTIME& time);

/// With the day of week. Nothing for a time that the calendar form cannot hold: a FILETIME with its highest
/// bit set.
std::optional<SYSTEMTIME> systemTimeOf(Ticks ticks);

/// -1, 0 or 1; FILETIMEs are unsigned.
LONG compareFileTimes(const FILETIME& left, const FILETIME& right);

}  // namespace emulator
