#include "platform/time.h"

#include "emulator/seam/call.h"

using emulator::call;
using emulator::Device;

DWORD GetTimeZoneInformation(TIME_ZONE_INFORMATION* zone) {
  return call<&::GetTimeZoneInformation>(
      [&](Device& device) {
        const emulator::TimeZone timeZone = device.configuration.timeZone();
        *zone = timeZone.information();
        return timeZone.periodAt(device.clock.now());
      },
      zone);
}

BOOL FileTimeToSystemTime(const FILETIME* fileTime, SYSTEMTIME* systemTime) {
  return call<&::FileTimeToSystemTime>(
      [&](Device& device) {
        const auto converted = emulator::systemTimeOf(emulator::ticksOf(*fileTime));
        if (!converted) return device.lastError.fail(ERROR_INVALID_PARAMETER);
        *systemTime = *converted;
        return true;
      },
      fileTime, systemTime);
}

BOOL SystemTimeToFileTime(const SYSTEMTIME* systemTime, FILETIME* fileTime) {
  return call<&::SystemTimeToFileTime>(
      [&](Device& device) {
        const auto ticks = emulator::ticksOf(*systemTime);
        if (!ticks) return device.lastError.fail(ERROR_INVALID_PARAMETER);
        *fileTime = emulator::fileTimeOf(*ticks);
        return true;
      },
      systemTime, fileTime);
}

LONG CompareFileTime(const FILETIME* left, const FILETIME* right) {
  return call<&::CompareFileTime>([&](Device&) { return emulator::compareFileTimes(*left, *right); }, left,
                                  right);
}

DWORD GetTickCount() {
  return call<&::GetTickCount>([](Device& device) { return device.clock.tickCount(); });
}

void Sleep(DWORD milliseconds) {
  call<&::Sleep>([&](Device& device) { device.clock.sleep(milliseconds); }, milliseconds);
}
