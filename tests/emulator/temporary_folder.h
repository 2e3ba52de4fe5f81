// A folder of the host that a test fills and that goes with the test.
#pragma once

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <stdlib.h>
#include <string>

namespace emulator::test {

class TemporaryFolder {
 public:
  TemporaryFolder() : path_((std::filesystem::temp_directory_path() / "qorv-test-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("cannot make " + path_);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::string file(const std::string& name) const { return path_ + "/" + name; }

  /// A file of the folder with the given contents; its path.
  std::string write(const std::string& name, const std::string& contents) const {
    std::ofstream(file(name), std::ios::binary) << contents;
    return file(name);
  }

  bool isEmpty() const { return std::filesystem::is_empty(path_); }

 private:
  std::string path_;
};

}  // namespace emulator::test
