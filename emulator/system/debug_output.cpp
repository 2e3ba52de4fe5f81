#include "emulator/system/debug_output.h"

#include "emulator/system/one_line.h"

namespace emulator {

void DebugOutput::send(std::u16string_view text) {
  sent_.emplace_back(text);
  if (text.ends_with(u'\n')) text.remove_suffix(1);
  report_ << "debugger: " << onOneLine(text) << std::endl;
}

}  // namespace emulator
