#include "desktop/local_file.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <sys/stat.h>
#include <system_error>

#include "desktop/input_error.h"

namespace desktop {

namespace {

/// Content that is new has no claim to the marks that let a program run as its owner.
constexpr mode_t kPermissions = 0777;

[[noreturn]] void refuse(const std::filesystem::path& path, const std::string& why) {
  throw InputError(path.string() + ": " + why);
}

mode_t usualMode() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return 0666 & ~mask;
}

/// Where a file of that name is written to: behind a link the file itself, so that the link stays one.
std::filesystem::path writablePlace(const std::filesystem::path& path) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (fs::is_directory(status)) refuse(path, "is a folder");
  if (fs::is_regular_file(status)) return fs::canonical(path);
  if (fs::exists(status)) refuse(path, "not a regular file");
  if (fs::is_symlink(fs::symlink_status(path, error))) refuse(path, "a link that leads to no file");
  return path;
}

}  // namespace

InputFile::InputFile(std::filesystem::path path) : path_(std::move(path)) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path_, error)) {
    refuse(path_, error ? error.message() : "not a regular file");
  }
  size_ = std::filesystem::file_size(path_, error);
  if (error) refuse(path_, error.message());
  stream_.open(path_, std::ios::binary);
  if (!stream_) refuse(path_, std::strerror(errno));
}

void InputFile::readAt(std::uint64_t offset, std::span<std::uint8_t> room) {
  stream_.seekg(static_cast<std::streamoff>(offset));
  stream_.read(reinterpret_cast<char*>(room.data()), static_cast<std::streamsize>(room.size()));
  if (!stream_) refuse(path_, "can't be read to its end");
}

std::string readTextFile(const std::filesystem::path& path) {
  InputFile file(path);
  std::string text(file.size(), '\0');
  file.readAt(0, {reinterpret_cast<std::uint8_t*>(text.data()), text.size()});
  return text;
}

OutputFile::OutputFile(const std::filesystem::path& path)
    : path_(writablePlace(path)), temporary_((path_.parent_path() / ".qorv-XXXXXX").string()) {
  descriptor_ = Descriptor(::mkstemp(temporary_.data()));
  if (!descriptor_) {
    temporary_.clear();
    refuse(path_, std::strerror(errno));
  }
  // mkstemp makes files for their owner alone.
  struct stat old {};
  const bool isThere = ::stat(path_.c_str(), &old) == 0;
  ::fchmod(descriptor_.get(), isThere ? old.st_mode & kPermissions : usualMode());
}

OutputFile::~OutputFile() {
  if (!temporary_.empty()) ::unlink(temporary_.c_str());
}

void OutputFile::fail() const {
  throw std::system_error(errno, std::generic_category(), path_.string());
}

void OutputFile::write(BytesView bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor_.get(), bytes.data(), bytes.size());
    if (written >= 0) {
      bytes = bytes.subspan(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      fail();
    }
  }
}

void OutputFile::commit() {
  if (std::rename(temporary_.c_str(), path_.c_str()) != 0) fail();
  temporary_.clear();
}

bool writeTextFile(const std::filesystem::path& path, const std::string& text) {
  if (std::filesystem::is_regular_file(path) && readTextFile(path) == text) return false;
  OutputFile file(path);
  file.write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
  file.commit();
  return true;
}

}  // namespace desktop
