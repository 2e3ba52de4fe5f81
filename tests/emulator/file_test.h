// What tests of files share: opening, writing and reading with few words.
#pragma once

#include <string>
#include <string_view>

#include "tests/emulator/device_test.h"

namespace emulator::test {

class FileTest : public DeviceTest {
 protected:
  static constexpr DWORD kReadWrite = GENERIC_READ | GENERIC_WRITE;
  /// A last error that no call gives.
  static constexpr DWORD kPoison = 0xDEADBEEF;

  FileSystem& files() { return device().files; }
  DWORD lastError() { return device().lastError.value(); }

  HANDLE open(std::u16string_view path, DWORD disposition, DWORD access = kReadWrite, DWORD share = 0,
              DWORD attributes = FILE_ATTRIBUTE_NORMAL) {
    device().lastError.set(kPoison);
    return files().createFile(path, access, share, disposition, attributes);
  }

  bool close(HANDLE file) { return device().handles.close<ClosableObject>(file); }

  /// Makes or replaces a file.
  void make(std::u16string_view path, std::string_view contents, DWORD attributes = FILE_ATTRIBUTE_NORMAL) {
    const HANDLE file = open(path, CREATE_ALWAYS, kReadWrite, 0, attributes);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    write(file, contents);
    close(file);
  }

  void write(HANDLE file, std::string_view text) {
    DWORD written = kPoison;
    ASSERT_TRUE(files().writeFile(file, text.data(), static_cast<DWORD>(text.size()), &written));
    ASSERT_EQ(written, text.size());
  }

  /// What one ReadFile gives.
  std::string read(HANDLE file, DWORD count) {
    std::string text(count, '\xCC');
    DWORD length = kPoison;
    EXPECT_TRUE(files().readFile(file, text.data(), count, &length));
    EXPECT_EQ(text.find_first_not_of('\xCC', length), std::string::npos)
        << "bytes past the count were touched";
    return text.substr(0, length);
  }

  std::string contents(std::u16string_view path) {
    const HANDLE file = open(path, OPEN_EXISTING, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
    EXPECT_NE(file, INVALID_HANDLE_VALUE);
    const std::string text = read(file, 1 << 16);
    close(file);
    return text;
  }

  std::optional<FileNode> node(std::u16string_view path) { return device().fileTree.locate(path).node; }
};

}  // namespace emulator::test
