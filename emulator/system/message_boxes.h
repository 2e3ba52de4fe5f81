// Message boxes: nobody sits at the emulated device, so each is answered at once, kept and reported.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/windows.h"

namespace emulator {

struct MessageBox {
  std::u16string text;
  std::u16string caption;
  UINT style = MB_OK;
};

class MessageBoxes {
 public:
  explicit MessageBoxes(std::ostream& report) : report_(report) {}

  /// Writes one line, `message box "CAPTION": TEXT`, with line ends in either shown as \n. The number of the
  /// button that agrees: Yes, OK, or Retry.
  int show(std::u16string_view text, std::u16string_view caption, UINT style);

  const std::vector<MessageBox>& shown() const { return shown_; }

 private:
  std::ostream& report_;
  std::vector<MessageBox> shown_;
};

}  // namespace emulator
