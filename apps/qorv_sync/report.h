// The account of one run: for people on standard output, or as JSON for scripts; failures on standard error.
#pragma once

#include <chrono>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace qorv_sync {

enum class ExitStatus : int {
  Done = 0,
  SomeFailed = 1,  ///< each is named on standard error, the rest went on
  BadInput = 2,    ///< wrong command line or unreadable input
  NoDevice = 3,
  BrokenProtocol = 4,
};

class Report {
 public:
  explicit Report(bool json) : isJson_(json) {}
  Report(const Report&) = delete;
  Report& operator=(const Report&) = delete;
  ~Report() { clearProgress(); }

  /// A line of the account for people.
  void say(std::string_view line);

  /// Shows what was said at once, also where standard output is no terminal.
  void flush();

  /// Text of the account for people, as it stands.
  void print(std::string_view text);

  /// The account for scripts, an object to be filled; printed by `finish`.
  nlohmann::json& data() { return data_; }

  /// One item failed, the rest goes on.
  void fail(std::string_view what) { fail(what, ExitStatus::SomeFailed); }
  /// The run ends here.
  void fail(std::string_view what, ExitStatus status);

  /// A line on standard error that is no failure.
  void remark(std::string_view what);

  /// What is going on, when standard error is a terminal; shown now and then, and replaced by whatever is
  /// said next.
  void progress(const std::string& text);

  /// Prints what is still to be printed.
  ExitStatus finish();

 private:
  void clearProgress();

  bool isJson_;
  nlohmann::json data_ = nlohmann::json::object();
  nlohmann::json failures_ = nlohmann::json::array();
  ExitStatus status_ = ExitStatus::Done;
  bool progressShown_ = false;
  std::chrono::steady_clock::time_point progressDue_{};
};

}  // namespace qorv_sync
