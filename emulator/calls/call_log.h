// The file with one line of JSON for every call that was made of the platform.
#pragma once

#include <deque>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "emulator/calls/json_line.h"

namespace emulator {

/// One line: the file and why it can't be written.
class CallLogError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Lines stand in the order in which the calls began: a call that is made while another one runs, by a
/// window procedure, say, comes after it.
class CallLog {
 public:
  class Line {
   public:
    /// For the arguments, one value after another.
    JsonLine& json() { return json_; }
    void endArguments();

   private:
    friend class CallLog;
    JsonLine json_;
    bool complete_ = false;
  };

  /// Overwrites the file. Throws CallLogError.
  explicit CallLog(const std::string& file);

  Line& begin(std::string_view call);
  /// The result, one value, stands in the line.
  void end(Line& line);
  /// Throws CallLogError when not everything could be written.
  void check() const;

 private:
  std::string file_;
  std::ofstream out_;
  std::deque<Line> open_;
};

}  // namespace emulator
