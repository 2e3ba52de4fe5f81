// Files on this computer: one that is read piece by piece, and one that appears whole or not at all.
#pragma once

#include <filesystem>
#include <fstream>
#include <string>

#include "desktop/descriptor.h"
#include "desktop/wire.h"

namespace desktop {

/// All functions throw InputError, naming the file, when it can't be read.
class InputFile {
 public:
  /// Only regular files have a size that can be relied on.
  explicit InputFile(std::filesystem::path path);

  std::uint64_t size() const { return size_; }
  const std::filesystem::path& path() const { return path_; }

  /// Fills `room`.
  void readAt(std::uint64_t offset, std::span<std::uint8_t> room);

 private:
  std::filesystem::path path_;
  std::ifstream stream_;
  std::uint64_t size_ = 0;
};

/// The whole file as text. Throws InputError when it can't be read.
std::string readTextFile(const std::filesystem::path& path);

/// Written under a name of its own in the same folder; takes its real name, in place of a file of that name,
/// when it is complete. Until then, and when it never gets there, nothing is to be seen of it. A file that is
/// replaced leaves its permissions to the new one; a link stays, the file that it leads to is replaced.
class OutputFile {
 public:
  /// Throws InputError when no file can be made there, and for a name of something else than a regular file.
  explicit OutputFile(const std::filesystem::path& path);
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  ~OutputFile();

  /// Both throw std::system_error, naming the file.
  void write(BytesView bytes);
  void commit();

 private:
  [[noreturn]] void fail() const;

  std::filesystem::path path_;
  std::string temporary_;  ///< empty once the file has its real name
  Descriptor descriptor_;
};

/// Writes the text as an OutputFile, unless the file holds just that already. True when it was written.
bool writeTextFile(const std::filesystem::path& path, const std::string& text);

}  // namespace desktop
