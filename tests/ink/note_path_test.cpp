#include "ink/note_path.h"

#include <gtest/gtest.h>

namespace qorv {
namespace {

TEST(NotePath, aNameIsTheFileNameWithoutItsExtension) {
  EXPECT_EQ(noteNameOf(u"\\My Documents\\Plan.pwi"), u"Plan");
  EXPECT_EQ(noteNameOf(u"\\My Documents\\a.b.pwi"), u"a.b");
  EXPECT_EQ(noteNameOf(u"\\My.Documents\\Plan"), u"Plan") << "to the end when there is no dot";
  EXPECT_EQ(noteNameOf(u"Plan.pwi"), u"Plan");
  EXPECT_EQ(noteNameOf(u"\\My Documents\\.pwi"), u"");
  EXPECT_EQ(noteNameOf(u""), u"");
}

TEST(NotePath, charactersThatNoFileNameHasAreReplaced) {
  EXPECT_EQ(fileNameFor(u"a\\b/c\"d<e>f.g:h|i?j*k\rl\nm\tn"), u"a_b_c_d_e_f_g_h_i_j_k_l_m_n");
  EXPECT_EQ(fileNameFor(u"a/b.c"), u"a_b_c");
  EXPECT_EQ(fileNameFor(u"..."), u"___");
  EXPECT_EQ(fileNameFor(u"\u00FCber [all] & sundry; 100%"), u"\u00FCber [all] & sundry; 100%");
}

TEST(NotePath, namedUnnamedAndNumbered) {
  EXPECT_EQ(notePath(u"Plan"), u"\\My Documents\\Plan.pwi");
  EXPECT_EQ(unnamedNotePath(1), u"\\My Documents\\Note1.pwi");
  EXPECT_EQ(numberedNotePath(u"Plan", 3), u"\\My Documents\\Plan_3.pwi");
  EXPECT_EQ(numberedNotePath(u"", 12), u"\\My Documents\\Note_12.pwi");
  EXPECT_EQ(numberedNotePath(u"x", 4294967295), u"\\My Documents\\x_4294967295.pwi");
}

TEST(NotePath, aFilesPathHas259CharactersAtMostAndNoControlCharacter) {
  // 14 characters of folder and 4 of extension.
  EXPECT_TRUE(canBeFile(notePath(std::u16string(241, u'x'))));
  EXPECT_FALSE(canBeFile(notePath(std::u16string(242, u'x'))));
  EXPECT_FALSE(canBeFile(notePath(u"a\u0001b")));
}

}  // namespace
}  // namespace qorv
