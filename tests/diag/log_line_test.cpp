#include "diag/log_line.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <string>

namespace qorv {
namespace {

/// What stands behind the text of a line that was full of '#', as far as the buffer goes.
std::string endBehind(std::size_t length) {
  std::array<char, kLogLineSize> line;
  line.fill('#');
  const std::size_t end = endLogLine(line, length);
  EXPECT_TRUE(std::all_of(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(length),
                          [](char c) { return c == '#'; }));
  std::string behind(line.begin() + static_cast<std::ptrdiff_t>(length),
                     line.begin() + static_cast<std::ptrdiff_t>(std::min(end + 1, kLogLineSize)));
  return behind + " of " + std::to_string(end);
}

TEST(LogLine, endsWithCarriageReturnLineFeedAndNul) {
  EXPECT_EQ(endBehind(0), std::string("\r\n\0 of 2", 8));
  EXPECT_EQ(endBehind(1021), std::string("\r\n\0 of 1023", 11));
}

TEST(LogLine, loosesTheCarriageReturnAt1022) {
  EXPECT_EQ(endBehind(1022), std::string("\n\0 of 1023", 10));
}

TEST(LogLine, loosesTheLineFeedAt1023) {
  EXPECT_EQ(endBehind(1023), std::string("\0 of 1023", 9));
}

TEST(LogLine, hasNoEndAt1024) {
  EXPECT_EQ(endBehind(1024), " of 1024");
}

}  // namespace
}  // namespace qorv
