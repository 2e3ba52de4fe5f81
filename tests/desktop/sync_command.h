// Runs qorv-sync as a person would, with a scripted device.
#pragma once

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>

#include "tests/desktop/temporary_folder.h"

class SyncCommand : public testing::Test {
 protected:
  /// Runs it in the test's folder; says its exit status and keeps what it prints.
  int runPlain(const std::string& arguments) {
    const std::string command = "cd '" + folder.path().string() + "' && '" QORV_SYNC "' " + arguments +
                                " > standard_output 2> standard_error < /dev/null";
    const int status = std::system(command.c_str());
    out = folder.read("standard_output");
    err = folder.read("standard_error");
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  /// The same with a device that follows the script.
  int run(const std::string& arguments, const std::string& script) {
    folder.write("script", script);
    return runPlain("--exec '\"" QORV_SCRIPTED_DEVICE "\" script' " + arguments);
  }

  TemporaryFolder folder;
  std::string out;
  std::string err;
};
