#include "apps/qorv_device/create_command.h"

#include <chrono>
#include <memory>
#include <optional>

#include "emulator/device.h"
#include "emulator/system/utf16.h"
#include "emulator/system/zone_rules.h"

namespace qorv_device {
namespace {

struct Options {
  std::string device;
  std::optional<std::string> osVersion;
  std::optional<std::string> timeZone;
  std::optional<std::string> module;
};

int currentYear() {
  const auto today = std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now());
  return int(std::chrono::year_month_day(today).year());
}

emulator::OsVersion osVersion(const std::string& text) {
  const auto version = emulator::parseOsVersion(text);
  if (!version) throw Unusable("--os-version: \"" + text + "\" is not of the form MAJOR.MINOR.BUILD");
  return *version;
}

TIME_ZONE_INFORMATION timeZone(const std::string& name) {
  try {
    return emulator::zoneNamed(name, currentYear());
  } catch (const std::invalid_argument& error) {
    throw Unusable(std::string("--time-zone: ") + error.what());
  }
}

int create(const Options& options) {
  emulator::NewDevice description;
  if (options.osVersion) description.osVersion = osVersion(*options.osVersion);
  if (options.timeZone) description.timeZone = timeZone(*options.timeZone);
  if (options.module) description.modulePath = emulator::toUtf16(*options.module);
  try {
    emulator::Device::create(options.device, description);
  } catch (const std::invalid_argument& error) {
    throw Unusable(std::string("--module: ") + error.what());
  }
  return kSuccess;
}

}  // namespace

Action defineCreate(CLI::App& command) {
  const auto options = std::make_shared<Options>();
  command.add_option("DEVICE", options->device, "Device file to make")->required();
  command.add_option("--os-version", options->osVersion,
                     "MAJOR.MINOR.BUILD of the operating system [4.20.14053]");
  command.add_option("--time-zone", options->timeZone, "IANA name of the device's time zone [UTC]");
  command.add_option("--module", options->module, "Where the agent is installed [\\Windows\\QORVAPIMGR.dll]");
  return [options] { return create(*options); };
}

}  // namespace qorv_device
