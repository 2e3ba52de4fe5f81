// A folder that goes with its contents.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <stdlib.h>
#include <string>

namespace bench {

class TemporaryFolder {
 public:
  TemporaryFolder() : path_((std::filesystem::temp_directory_path() / "qorv-bench-XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("no temporary folder");
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  [[nodiscard]] std::filesystem::path path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace bench
