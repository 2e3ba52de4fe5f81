#include "emulator/system/os_version.h"

#include <charconv>
#include <system_error>

namespace emulator {
namespace {

constexpr DWORD kPlatformWindowsCe = 3;

/// Takes a number off the front; false when there is none or it is too large.
bool takeNumber(std::string_view& text, DWORD& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return error == std::errc();
}

bool takeDot(std::string_view& text) {
  if (!text.starts_with('.')) return false;
  text.remove_prefix(1);
  return true;
}

}  // namespace

std::optional<OsVersion> parseOsVersion(std::string_view text) {
  OsVersion version;
  const bool parsed = takeNumber(text, version.major) && takeDot(text) && takeNumber(text, version.minor) &&
                      takeDot(text) && takeNumber(text, version.build) && text.empty();
  return parsed ? std::optional(version) : std::nullopt;
}

std::string toText(const OsVersion& version) {
  return std::to_string(version.major) + '.' + std::to_string(version.minor) + '.' +
         std::to_string(version.build);
}

bool describe(const OsVersion& version, OSVERSIONINFOW* information) {
  if (information->dwOSVersionInfoSize != sizeof *information) return false;
  *information = {sizeof *information, version.major, version.minor, version.build, kPlatformWindowsCe, {}};
  return true;
}

}  // namespace emulator
