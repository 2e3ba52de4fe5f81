// A device of a test that snapshots are loaded into.
#pragma once

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "emulator/snapshot/snapshot.h"
#include "emulator/snapshot/snapshot_error.h"
#include "tests/emulator/temporary_folder.h"

namespace emulator::test {

using Json = nlohmann::ordered_json;

class SnapshotDevice {
 public:
  /// Changes are recorded only by a device that is made so.
  explicit SnapshotDevice(bool isRecorded = false)
      : device_((Device::create(folder_.file("device"), {}), folder_.file("device"))) {
    if (!isRecorded) device_.objectModel.items().setListener({});
  }

  void load(const std::string& snapshot) { loadSnapshot(device_, snapshot); }

  /// Why the snapshot is refused; empty when it is not.
  std::string refusal(const std::string& snapshot) {
    try {
      load(snapshot);
    } catch (const SnapshotError& error) {
      return error.what();
    }
    return "";
  }

  std::string dumpText() {
    std::ostringstream out;
    dumpSnapshot(device_, out);
    return out.str();
  }
  Json dump() { return Json::parse(dumpText()); }

  /// The only entry of a list of the dump.
  Json only(const std::string& section) {
    const Json list = dump().at(section);
    EXPECT_EQ(list.size(), 1U) << section;
    return list.at(0);
  }

  Device& device() { return device_; }

 private:
  TemporaryFolder folder_;
  Device device_;
};

/// A dump, loaded into a fresh device and dumped again.
inline std::string reload(const std::string& dump) {
  SnapshotDevice fresh;
  fresh.load(dump);
  return fresh.dumpText();
}

}  // namespace emulator::test
