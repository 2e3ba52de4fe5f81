#include "emulator/system/one_line.h"

#include "emulator/system/utf16.h"

namespace emulator {

std::string onOneLine(std::u16string_view text) {
  std::string line;
  for (const char c : toUtf8(text)) {
    if (c == '\n') {
      line += "\\n";
    } else if (c != '\r') {
      line += c;
    }
  }
  return line;
}

}  // namespace emulator
