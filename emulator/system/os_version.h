// The version of the device's operating system.
#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

#include "platform/system.h"

namespace emulator {

/// Pocket PC 2003 Second Edition unless somebody says otherwise.
struct OsVersion {
  DWORD major = 4;
  DWORD minor = 20;
  DWORD build = 14053;

  /// Older is less.
  friend auto operator<=>(const OsVersion&, const OsVersion&) = default;
};

/// "4.20.14053"; nothing for any other form.
std::optional<OsVersion> parseOsVersion(std::string_view text);
std::string toText(const OsVersion& version);

/// Fills what GetVersionExW gives. False, and nothing written, when the caller's size is not the structure's.
bool describe(const OsVersion& version, OSVERSIONINFOW* information);

}  // namespace emulator
