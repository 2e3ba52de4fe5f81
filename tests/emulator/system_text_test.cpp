// Folding of names, and conversion between UTF-16 and UTF-8.
#include <gtest/gtest.h>

#include "emulator/system/case_fold.h"
#include "emulator/system/utf16.h"

namespace emulator {
namespace {

TEST(CaseFolding, coversAllScripts) {
  EXPECT_TRUE(equalFolded(u"QorvApiMgr.DLL", u"qorvapimgr.dll"));
  EXPECT_TRUE(equalFolded(u"Ärger", u"äRGER"));
  EXPECT_TRUE(equalFolded(u"Жук", u"жУК"));
  EXPECT_TRUE(equalFolded(u"Ωmega", u"ωMEGA"));
}

TEST(CaseFolding, tellsDifferentNamesApart) {
  EXPECT_FALSE(equalFolded(u"note", u"note1"));
  EXPECT_FALSE(equalFolded(u"note", u"nota"));
  EXPECT_FALSE(equalFolded(u"a", u"ä"));
}

TEST(CaseFolding, keepsLoneSurrogates) {
  const std::u16string lone{char16_t{0xD800}, u'a', char16_t{0xDFFF}};
  EXPECT_EQ(foldCase(lone), (std::u16string{char16_t{0xD800}, u'A', char16_t{0xDFFF}}));
}

TEST(Utf16, travelsToUtf8AndBack) {
  // One character of each length: a (61), ü (C3 BC), € (E2 82 AC), U+1F600 (F0 9F 98 80).
  EXPECT_EQ(toUtf8(u"aü€\U0001F600"), "a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80");
  EXPECT_EQ(toUtf16("a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80"), u"aü€\U0001F600");
}

TEST(Utf16, replacesWhatIsNotWellFormed) {
  EXPECT_EQ(toUtf8(std::u16string{u'a', char16_t{0xD800}}), "a\xEF\xBF\xBD");
  EXPECT_EQ(toUtf8(std::u16string{char16_t{0xDC00}, u'b'}),
            "\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(toUtf8(std::u16string{char16_t{0xD800}, u'b'}),
            "\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(toUtf16("a\xFFz"), u"a\uFFFDz");
  EXPECT_EQ(toUtf16("\xE2\x82"), u"\uFFFD\uFFFD");                      // cut short
  EXPECT_EQ(toUtf16("\xC1\x81"), u"\uFFFD\uFFFD");                      // an A in two bytes
  EXPECT_EQ(toUtf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");            // a surrogate
  EXPECT_EQ(toUtf16("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");  // past U+10FFFF
}

}  // namespace
}  // namespace emulator
