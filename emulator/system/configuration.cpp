#include "emulator/system/configuration.h"

#include <cstring>

namespace emulator {
namespace {

constexpr const char* kModuleSetting = "module";
constexpr const char* kOsVersionSetting = "os_version";
constexpr const char* kTimeZoneSetting = "time_zone";

}  // namespace

std::u16string Configuration::modulePath() const {
  return settings_.get<std::u16string>(kModuleSetting).value_or(std::u16string(kDefaultModulePath));
}

void Configuration::setModulePath(std::u16string_view path) {
  settings_.put(kModuleSetting, path);
}

OsVersion Configuration::osVersion() const {
  const auto text = settings_.get<std::string>(kOsVersionSetting);
  return (text ? parseOsVersion(*text) : std::nullopt).value_or(OsVersion());
}

void Configuration::setOsVersion(const OsVersion& version) {
  settings_.put(kOsVersionSetting, toText(version));
}

TimeZone Configuration::timeZone() const {
  // Kept as the platform lays the structure out.
  TIME_ZONE_INFORMATION zone = utcZone();
  const auto bytes = settings_.get<Bytes>(kTimeZoneSetting);
  if (bytes && bytes->size() == sizeof zone) std::memcpy(&zone, bytes->data(), sizeof zone);
  return TimeZone(zone);
}

void Configuration::setTimeZone(const TIME_ZONE_INFORMATION& zone) {
  settings_.put(kTimeZoneSetting, ByteView(reinterpret_cast<const BYTE*>(&zone), sizeof zone));
}

}  // namespace emulator
