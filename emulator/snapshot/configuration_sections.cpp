// "module" and "os_version".
#include "emulator/snapshot/section_handlers.h"
#include "emulator/snapshot/values.h"
#include "emulator/system/path_folders.h"

namespace emulator {

void loadModule(Device& device, const JsonNode& node) {
  const std::u16string path = node.isNull() ? std::u16string(kDefaultModulePath) : readText(node);
  if (const auto reason = makeModuleFolder(device.fileTree, path)) node.refuse(*reason);
  device.configuration.setModulePath(path);
}

Json dumpModule(Device& device) {
  return textToJson(device.configuration.modulePath());
}

void loadOsVersion(Device& device, const JsonNode& node) {
  const auto version = node.isNull() ? OsVersion() : parseOsVersion(node.text());
  if (!version) node.refuse("not a version of the form MAJOR.MINOR.BUILD");
  device.configuration.setOsVersion(*version);
}

Json dumpOsVersion(Device& device) {
  return toText(device.configuration.osVersion());
}

}  // namespace emulator
