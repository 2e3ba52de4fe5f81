#include "diag/simple_log.h"

#include <algorithm>
#include <array>

#include "diag/log_line.h"
#include "platform/text.h"

namespace qorv {

namespace {

constexpr std::u16string_view kFolder = u"\\temp\\";
constexpr std::u16string_view kExtension = u".log";
constexpr LPCWSTR kUnnamedLog = u"\\temp\\qrvdbg.log";
constexpr std::size_t kMaxName = 12;

/// A character may become two bytes, so longer texts might not fit a line.
constexpr std::size_t kMaxText = kLogLineSize / sizeof(WCHAR);

constexpr std::string_view kUnconvertible = "Unable to convert unicode string for log.";

/// The bytes of the text, without a line end.
std::size_t convert(std::u16string_view text, std::array<char, kLogLineSize>& line) {
  const int length = WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), line.data(),
                                         static_cast<int>(line.size()), nullptr, nullptr);
  if (length > 0) return static_cast<std::size_t>(length);
  std::ranges::copy(kUnconvertible, line.begin());
  return kUnconvertible.size();
}

}  // namespace

CCESimpleLog::CCESimpleLog() {
  open();
}

CCESimpleLog::CCESimpleLog(std::u16string_view name)
    : path_(std::u16string(kFolder).append(name.substr(0, kMaxName)).append(kExtension)) {
  open();
}

CCESimpleLog::~CCESimpleLog() {
  if (file_) CloseHandle(file_);
}

void CCESimpleLog::open() {
  if (path_.empty()) {
    file_ = CreateFileW(kUnnamedLog, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                        FILE_FLAG_WRITE_THROUGH, nullptr);
    return;
  }
  file_ = CreateFileW(path_.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                      nullptr, OPEN_ALWAYS, FILE_FLAG_WRITE_THROUGH, nullptr);
  SetFilePointer(file_, 0, nullptr, FILE_END);
}

void CCESimpleLog::LogThis(LPCWSTR text) {
  if (!text || !*text || !file_) return;
  const std::u16string_view characters(text);
  if (characters.size() > kMaxText) return;
  std::array<char, kLogLineSize> line{};
  const std::size_t length = endLogLine(line, convert(characters, line));
  DWORD written = 0;
  if (!WriteFile(file_, line.data(), static_cast<DWORD>(length), &written, nullptr)) {
    OutputDebugStringW(u"CCESimpleLog::LogThis FAILED!\n");
  }
}

}  // namespace qorv
