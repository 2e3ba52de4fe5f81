// The whole way: from qorv-sync through the agent onto an emulated device and back.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>
#include <string>
#include <sys/wait.h>

#include "tests/apps/agent_option.h"
#include "tests/emulator/temporary_folder.h"

/// A fresh emulated device in a folder of its own, in a zone with summer time.
class Journey : public testing::Test {
 protected:
  Journey() {
    setenv("TZ", "Europe/Berlin", 1);
    create("device");
  }

  /// Runs a shell command in the test's folder; its exit status. What it prints is kept.
  int run(const std::string& command) {
    const int status = std::system(
        ("cd '" + folder_.file("") + "' && { " + command + "\n} > out 2> err < /dev/null").c_str());
    out_ = read(folder_.file("out"));
    err_ = read(folder_.file("err"));
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  void create(const std::string& device) {
    ASSERT_EQ(run("'" QORV_DEVICE "' create " + device + " --time-zone Europe/Berlin"), 0) << err_;
  }
  int sync(const std::string& arguments, const std::string& device = "device") {
    std::string serve = "'" QORV_DEVICE "' serve " + device + " --stdio";
    for (const std::string& option : agentOption()) serve += " '" + option + "'";
    return run("'" QORV_SYNC "' --exec \"" + serve + "\" " + arguments);
  }

  static std::string read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  /// The files of a pulled folder, without what depends on the device's own numbers.
  std::multiset<std::string> files(const std::string& pulled) {
    std::multiset<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.file(pulled))) {
      files.insert(std::regex_replace(read(entry.path()), std::regex("UID[:;][^\r]*\r\n"), ""));
    }
    return files;
  }

  emulator::test::TemporaryFolder folder_;
  std::string out_;
  std::string err_;
};

inline std::string sample(const std::string& name) {
  return "'" QORV_SAMPLES "/" + name + "'";
}
