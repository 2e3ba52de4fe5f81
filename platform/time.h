// Clock, time zone and conversions between time forms.
#pragma once

#include "platform/types.h"

/// Biases in minutes: UTC = local time + bias. A transition with year 0 is a rule: month, day of week, and in
/// wDay which one of the month (5 is the last); month 0 means no daylight saving.
struct TIME_ZONE_INFORMATION {
  LONG Bias;
  WCHAR StandardName[32];
  SYSTEMTIME StandardDate;
  LONG StandardBias;
  WCHAR DaylightName[32];
  SYSTEMTIME DaylightDate;
  LONG DaylightBias;
};
static_assert(sizeof(TIME_ZONE_INFORMATION) == 172);

inline constexpr DWORD TIME_ZONE_ID_UNKNOWN = 0;
inline constexpr DWORD TIME_ZONE_ID_STANDARD = 1;
inline constexpr DWORD TIME_ZONE_ID_DAYLIGHT = 2;
inline constexpr DWORD TIME_ZONE_ID_INVALID = 0xFFFFFFFF;

extern "C" DWORD GetTimeZoneInformation(TIME_ZONE_INFORMATION* zone) CE_CALL(GetTimeZoneInformation);
/// Both conversions fail with ERROR_INVALID_PARAMETER for a date that does not exist; the day of week is
/// ignored on the way in and filled in on the way out.
extern "C" BOOL FileTimeToSystemTime(const FILETIME* fileTime, SYSTEMTIME* systemTime)
    CE_CALL(FileTimeToSystemTime);
extern "C" BOOL SystemTimeToFileTime(const SYSTEMTIME* systemTime, FILETIME* fileTime)
    CE_CALL(SystemTimeToFileTime);
/// -1, 0 or 1.
extern "C" LONG CompareFileTime(const FILETIME* left, const FILETIME* right) CE_CALL(CompareFileTime);
/// Milliseconds since the device started; wraps.
extern "C" DWORD GetTickCount() CE_CALL(GetTickCount);
extern "C" void Sleep(DWORD milliseconds) CE_CALL(Sleep);
