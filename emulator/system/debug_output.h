// What programs on the device send to the debugger: kept, and reported to whoever runs the device.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace emulator {

class DebugOutput {
 public:
  explicit DebugOutput(std::ostream& report) : report_(report) {}

  /// Writes one line, `debugger: TEXT`, with line ends within the text shown as \n and one at its end left
  /// out.
  void send(std::u16string_view text);

  const std::vector<std::u16string>& sent() const { return sent_; }

 private:
  std::ostream& report_;
  std::vector<std::u16string> sent_;
};

}  // namespace emulator
