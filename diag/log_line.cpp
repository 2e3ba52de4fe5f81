#include "diag/log_line.h"

namespace qorv {

std::size_t endLogLine(std::span<char, kLogLineSize> line, std::size_t length) {
  if (length < kLogLineSize - 2) line[length++] = '\r';
  if (length < kLogLineSize - 1) line[length++] = '\n';
  if (length < kLogLineSize) line[length] = '\0';
  return length;
}

}  // namespace qorv
