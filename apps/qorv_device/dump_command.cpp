#include "apps/qorv_device/dump_command.h"

#include <cerrno>
#include <cstring>
#include <iostream>
#include <memory>

#include "emulator/snapshot/snapshot.h"

namespace qorv_device {
namespace {

int dump(const std::string& path) {
  emulator::Device device(path);
  errno = 0;
  emulator::dumpSnapshot(device, std::cout);
  if (!std::cout.flush()) throw Unusable(std::string("standard output: ") + std::strerror(errno));
  return kSuccess;
}

}  // namespace

Action defineDump(CLI::App& command) {
  const auto device = std::make_shared<std::string>();
  command.add_option("DEVICE", *device, "Device file")->required();
  return [device] { return dump(*device); };
}

}  // namespace qorv_device
