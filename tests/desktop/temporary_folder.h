// A folder that is gone at the end of a test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "qorv-test-XXXXXX").string();
    path_ = ::mkdtemp(name.data());
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() { std::filesystem::remove_all(path_); }

  std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
  const std::filesystem::path& path() const { return path_; }

  std::filesystem::path write(const std::string& name, const std::string& content) const {
    std::filesystem::create_directories((path_ / name).parent_path());
    std::ofstream(path_ / name, std::ios::binary) << content;
    return path_ / name;
  }

  std::string read(const std::string& name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  std::set<std::string> names() const {
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
      found.insert(entry.path().filename());
    return found;
  }

 private:
  std::filesystem::path path_;
};
