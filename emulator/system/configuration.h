// What a device is: its operating system, its time zone, and where the agent is installed on it.
#pragma once

#include <string>
#include <string_view>

#include "emulator/store/settings.h"
#include "emulator/system/os_version.h"
#include "emulator/system/time_zone.h"

namespace emulator {

/// Where the agent is installed unless somebody says otherwise.
inline constexpr std::u16string_view kDefaultModulePath = u"\\Windows\\QORVAPIMGR.dll";

class Configuration {
 public:
  explicit Configuration(Settings& settings) : settings_(settings) {}

  /// The full path of the agent's library on the device.
  std::u16string modulePath() const;
  void setModulePath(std::u16string_view path);

  OsVersion osVersion() const;
  void setOsVersion(const OsVersion& version);

  TimeZone timeZone() const;
  void setTimeZone(const TIME_ZONE_INFORMATION& zone);

 private:
  Settings& settings_;
};

}  // namespace emulator
