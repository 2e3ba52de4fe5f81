#include "apps/qorv_device/load_command.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include "emulator/snapshot/snapshot.h"
#include "emulator/snapshot/snapshot_error.h"

namespace qorv_device {
namespace {

constexpr const char* kStandardInput = "-";

struct Options {
  std::string device;
  std::string snapshot;
  bool noRecord = false;
};

/// What messages call the snapshot.
std::string nameOf(const std::string& snapshot) {
  return snapshot == kStandardInput ? "standard input" : snapshot;
}

std::string readAll(std::istream& in, const std::string& name) {
  std::ostringstream text;
  errno = 0;
  text << in.rdbuf();
  if (in.bad() || errno != 0) throw Unusable(name + ": " + std::strerror(errno));
  return std::move(text).str();
}

std::string readSnapshot(const std::string& snapshot) {
  if (snapshot == kStandardInput) return readAll(std::cin, nameOf(snapshot));
  std::ifstream file(snapshot, std::ios::binary);
  if (!file) throw Unusable(snapshot + ": " + std::strerror(errno));
  return readAll(file, snapshot);
}

int load(const Options& options) {
  emulator::Device device(options.device);
  const std::string text = readSnapshot(options.snapshot);
  if (options.noRecord) device.stopRecording();
  try {
    emulator::loadSnapshot(device, text);
  } catch (const emulator::SnapshotError& error) {
    throw Unusable(nameOf(options.snapshot) + ": " + error.what());
  }
  return kSuccess;
}

}  // namespace

Action defineLoad(CLI::App& command) {
  const auto options = std::make_shared<Options>();
  command.add_option("DEVICE", options->device, "Device file")->required();
  command.add_option("SNAPSHOT", options->snapshot, "Snapshot in JSON, or - for standard input")->required();
  command.add_flag("--no-record", options->noRecord, "Keep the changes out of the device's change logs");
  return [options] { return load(*options); };
}

}  // namespace qorv_device
