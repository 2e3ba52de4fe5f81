#include "desktop/text.h"

#include <gtest/gtest.h>

#include "desktop/input_error.h"

namespace {

using namespace desktop;

TEST(Text, goesBothWaysThroughUtf8) {
  // One character for each length: A, e acute, euro, a smile (U+1F600 = F0 9F 98 80).
  const std::u16string wide = u"A\u00E9\u20AC\U0001F600";
  const std::string narrow = "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
  EXPECT_EQ(toUtf8(wide), narrow);
  EXPECT_EQ(toUtf16(narrow), wide);
}

TEST(Text, replacesHalfAPair) {
  const char16_t lone[] = {u'a', 0xD83D, u'b', 0xDE00, 0xD83D, 0};
  EXPECT_EQ(toUtf8(lone),
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD\xEF\xBF\xBD");
}

TEST(Text, refusesWhatIsNoUtf8) {
  for (const char* bytes : {"\x80", "\xC3", "\xC3(", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80",
                            "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xFF"}) {
    EXPECT_THROW(toUtf16(bytes), InputError);
  }
}

TEST(Text, cannotRunATerminal) {
  EXPECT_EQ(onOneLine("a\x1B[2Jb\nc\x7F"), "a [2Jb c ");
  EXPECT_EQ(quoted(u"a\x1B\"\\\r\n\tb"), "\"a\\x1B\\\"\\\\\\r\\n\\tb\"");
}

}  // namespace
