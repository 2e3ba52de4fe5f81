#include "apps/qorv_sync/report.h"

#include <algorithm>
#include <iostream>
#include <unistd.h>

#include "desktop/text.h"

namespace qorv_sync {

namespace {

/// Often enough to see it move; a terminal is slow.
constexpr std::chrono::milliseconds kProgressStep{100};

}  // namespace

void Report::say(std::string_view line) {
  clearProgress();
  if (!isJson_) std::cout << desktop::onOneLine(line) << '\n';
}

void Report::flush() {
  std::cout.flush();
}

void Report::print(std::string_view text) {
  clearProgress();
  if (!isJson_) std::cout << text;
}

void Report::fail(std::string_view what, ExitStatus status) {
  remark(what);
  failures_.push_back(what);
  status_ = std::max(status_, status);
}

void Report::remark(std::string_view what) {
  clearProgress();
  std::cerr << "qorv-sync: " << desktop::onOneLine(what) << '\n';
}

void Report::progress(const std::string& text) {
  static const bool isTerminal = ::isatty(STDERR_FILENO) == 1;
  const auto now = std::chrono::steady_clock::now();
  if (!isTerminal || now < progressDue_) return;
  progressDue_ = now + kProgressStep;
  clearProgress();
  std::cerr << text << std::flush;
  progressShown_ = true;
}

void Report::clearProgress() {
  if (progressShown_) std::cerr << "\r\x1B[K";
  progressShown_ = false;
}

ExitStatus Report::finish() {
  clearProgress();
  if (isJson_ && status_ != ExitStatus::BadInput) {
    data_["failures"] = failures_;
    constexpr int kIndent = 2;
    // File names needn't be UTF-8.
    std::cout << data_.dump(kIndent, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
  }
  std::cout.flush();
  if (!std::cout) {
    std::cerr << "qorv-sync: standard output can't be written\n";
    status_ = std::max(status_, ExitStatus::SomeFailed);
  }
  return status_;
}

}  // namespace qorv_sync
