// A monitor of its own for each test: a log in a temporary file, and fault rules.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

#include "emulator/calls/call_monitor.h"
#include "emulator/calls/functions.h"
#include "emulator/calls/observe.h"

namespace emulator::testing {

/// A file name that this process alone uses, removed at the end.
class TemporaryFile {
 public:
  TemporaryFile() {
    std::string name = ::testing::TempDir() + "qorv-calls-XXXXXX";
    const int file = mkstemp(name.data());
    EXPECT_GE(file, 0);
    close(file);
    path_ = name;
  }
  ~TemporaryFile() { std::filesystem::remove(path_); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& path() const { return path_; }
  std::vector<std::string> lines() const {
    std::ifstream file(path_);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
  }

 private:
  std::string path_;
};

class MonitorTest : public ::testing::Test {
 protected:
  explicit MonitorTest(std::vector<std::string> rules = {})
      : monitor_(CallLog(file_.path()), Faults(parsed(rules)), [this](DWORD error) { lastError_ = error; }) {}

  /// One observed call of a platform function. `perform` stands in for the device.
  template <auto Function, typename Perform, typename... Given>
  auto call(const Perform& perform, Given&&... given) {
    using Row = RowOf<Function, Functions>;
    const typename Row::Arguments values(std::forward<Given>(given)...);
    const Performer<FormOf<Row>> performer{[](const void* context, const typename Row::Arguments& received) {
                                             return std::apply(*static_cast<const Perform*>(context),
                                                               received);
                                           },
                                           &perform};
    return observe<FormOf<Row>>(monitor_, Row::kName, values, performer);
  }

  std::vector<std::string> log() const { return file_.lines(); }

  TemporaryFile file_;
  DWORD lastError_ = 0;
  CallMonitor monitor_;

 private:
  static std::vector<FaultRule> parsed(const std::vector<std::string>& rules) {
    std::vector<FaultRule> result;
    for (const std::string& rule : rules) result.push_back(parseFaultRule(rule));
    return result;
  }
};

/// A stand-in for the device that answers every call alike.
template <typename Result>
auto answering(Result result) {
  return [result](auto&&...) { return result; };
}

}  // namespace emulator::testing
