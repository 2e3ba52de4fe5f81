#include "diag/trace_format.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace qorv {
namespace {

template <typename... Arguments>
std::u16string formatted(std::u16string_view format, const Arguments&... arguments) {
  std::array<WCHAR, 200> message;
  message.fill(u'#');
  const std::size_t length = formatTrace(
      message, format, std::array<TraceArgument, sizeof...(Arguments)>{TraceArgument(arguments)...});
  EXPECT_EQ(message[length], u'\0');
  return {message.data(), length};
}

TEST(TraceFormat, plainTextStaysAsItIs) {
  EXPECT_EQ(formatted(u""), u"");
  EXPECT_EQ(formatted(u"session \u00FC"), u"session \u00FC");
  EXPECT_EQ(formatted(u"100 %%"), u"100 %");
}

TEST(TraceFormat, numbersAreDecimalOctalOrHexadecimal) {
  EXPECT_EQ(formatted(u"%d %i %u", 7, -7, 7u), u"7 -7 7");
  EXPECT_EQ(formatted(u"%o %x %X", 64, 0xBEEF, 0xBEEF), u"100 beef BEEF");
  EXPECT_EQ(formatted(u"%d", 0), u"0");
}

TEST(TraceFormat, numbersHaveTheWidthOfTheirType) {
  EXPECT_EQ(formatted(u"%u %d", LONG{-1}, DWORD{0xFFFFFFFF}), u"4294967295 -1");
  EXPECT_EQ(formatted(u"%x", SHORT{-1}), u"ffffffff") << "as in any argument list, a short is an int";
  EXPECT_EQ(formatted(u"%I64d %llu", std::numeric_limits<std::int64_t>::min(),
                      std::numeric_limits<std::uint64_t>::max()),
            u"-9223372036854775808 18446744073709551615");
  EXPECT_EQ(formatted(u"%d", true), u"1");
  EXPECT_EQ(formatted(u"%hd %ld %I32u", 1, 2, 3), u"1 2 3");
}

TEST(TraceFormat, flagsWidthAndPrecision) {
  EXPECT_EQ(formatted(u"[%5d] [%-5d] [%05d]", 42, 42, -42), u"[   42] [42   ] [-0042]");
  EXPECT_EQ(formatted(u"%+d % d %+d", 1, 1, -1), u"+1  1 -1");
  EXPECT_EQ(formatted(u"%.3d [%6.3d] [%06.3d] [%.0d]", 7, 7, 7, 0), u"007 [   007] [   007] []");
  EXPECT_EQ(formatted(u"%#x %#X %#x %#o", 255, 255, 0, 8), u"0xff 0XFF 0 010");
  EXPECT_EQ(formatted(u"%#06x", 255), u"0x00ff");
  EXPECT_EQ(formatted(u"[%*d] [%*d] [%.*s]", 4, 7, -4, 7, 2, u"abc"), u"[   7] [7   ] [ab]");
}

TEST(TraceFormat, textsAndCharacters) {
  EXPECT_EQ(formatted(u"%s %S %ls", u"wide", "narrow", u"wide"), u"wide narrow wide");
  EXPECT_EQ(formatted(u"[%6s] [%-6s] [%.2s]", u"abc", u"abc", u"abc"), u"[   abc] [abc   ] [ab]");
  EXPECT_EQ(formatted(u"%s%s", static_cast<LPCWSTR>(nullptr), static_cast<const char*>(nullptr)),
            u"(null)(null)");
  EXPECT_EQ(formatted(u"%S", "\xFC"), u"\u00FC");
  EXPECT_EQ(formatted(u"%c%C[%3c]", u'a', 'b', u'c'), u"ab[  c]");
}

TEST(TraceFormat, addresses) {
  EXPECT_EQ(formatted(u"%p", reinterpret_cast<const void*>(std::uintptr_t{0x1E00})), u"00001E00");
}

TEST(TraceFormat, anArgumentOfAnotherKindIsShownAsWhatItIs) {
  EXPECT_EQ(formatted(u"%d", u"text"), u"text");
  EXPECT_EQ(formatted(u"%s", 7), u"7");
}

TEST(TraceFormat, whatCannotBeConvertedStaysAsItIs) {
  EXPECT_EQ(formatted(u"%d and %s"), u"%d and %s");
  EXPECT_EQ(formatted(u"%f %n %d", 7), u"%f %n 7");
  EXPECT_EQ(formatted(u"%"), u"%");
  EXPECT_EQ(formatted(u"%-08."), u"%-08.");
}

TEST(TraceFormat, whatHasNoRoomIsCutOff) {
  std::array<WCHAR, 6> message;
  message.fill(u'#');
  const TraceArgument arguments[] = {TraceArgument(12345678)};
  EXPECT_EQ(formatTrace(message, u"%d!", arguments), 5u);
  EXPECT_EQ(std::u16string_view(message.data()), u"12345");
  EXPECT_EQ(formatted(u"%999999999d", 7), std::u16string(199, u' '));
  EXPECT_EQ(formatted(u"%.999999999d", 7), std::u16string(199, u'0'));
  EXPECT_EQ(formatTrace({}, u"abc", {}), 0u);
}

}  // namespace
}  // namespace qorv
