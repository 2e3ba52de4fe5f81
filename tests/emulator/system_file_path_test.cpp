// Paths and wildcards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "emulator/system/file_path.h"

namespace emulator {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(FilePath, isTakenApart) {
  FilePath path;
  EXPECT_EQ(splitPath(u"\\My Documents\\Plans\\a.pwi", path), 0u);
  EXPECT_THAT(path.folders, ElementsAre(u"My Documents", u"Plans"));
  EXPECT_EQ(path.name, u"a.pwi");
}

TEST(FilePath, ofTheRootHasNoName) {
  FilePath path{{u"poison"}, u"poison"};
  EXPECT_EQ(splitPath(u"\\", path), 0u);
  EXPECT_THAT(path.folders, IsEmpty());
  EXPECT_EQ(path.name, u"");
}

TEST(FilePath, thatNothingCanHaveIsRefused) {
  FilePath path;
  EXPECT_EQ(splitPath(u"", path), 123u);
  EXPECT_EQ(splitPath(u"relative.txt", path), 3u);
  EXPECT_EQ(splitPath(u".", path), 3u);
  for (const std::u16string_view text :
       {u"\\\\server", u"\\a\\", u"\\a\\\\b", u"\\a:b", u"\\a/b", u"\\a*", u"\\a?b", u"\\<a>", u"\\a|b",
        u"\\\"a\"", u"\\a\nb", u"\\.", u"\\Temp\\..\\a", u"\\a*\\b"}) {
    EXPECT_EQ(splitPath(text, path), 123u) << std::string(text.begin(), text.end());
  }
}

TEST(FilePath, isAtMost259CharactersLong) {
  FilePath path;
  EXPECT_EQ(splitPath(u'\\' + std::u16string(258, u'a'), path), 0u);
  EXPECT_EQ(splitPath(u'\\' + std::u16string(259, u'a'), path), 206u);
}

TEST(FilePattern, mayHoldWildcardsInItsNameOnly) {
  FilePath path;
  EXPECT_EQ(splitPattern(u"\\My Documents\\*.pwi", path), 0u);
  EXPECT_EQ(path.name, u"*.pwi");
  EXPECT_EQ(splitPattern(u"\\My*\\a.pwi", path), 123u);
}

struct Match {
  std::u16string_view name;
  std::u16string_view pattern;
  bool matches;
};

TEST(Wildcards, matchWithoutRegardToCase) {
  for (const Match& fact : {Match{u"Plan.pwi", u"*.pwi", true},
                            Match{u"PLAN.PWI", u"*.pwi", true},
                            Match{u"Plan.pwi.txt", u"*.pwi", false},
                            Match{u"pwi", u"*.pwi", false},
                            Match{u".pwi", u"*.pwi", true},
                            Match{u"a.b.pwi", u"*.pwi", true},
                            Match{u"folder", u"*.*", true},
                            Match{u"folder", u"*", true},
                            Match{u"abc", u"a?c", true},
                            Match{u"ac", u"a?c", false},
                            Match{u"abbc", u"a?c", false},
                            Match{u"abc", u"abc", true},
                            Match{u"abcd", u"abc", false},
                            Match{u"abc", u"abcd", false},
                            Match{u"aXbXc", u"a*b*c", true},
                            Match{u"aabab", u"*ab", true},
                            Match{u"mississippi", u"m*iss*pi", true},
                            Match{u"mississippi", u"m*iss*pq", false},
                            Match{u"a", u"a**", true},
                            Match{u"", u"*", true},
                            Match{u"", u"?", false}}) {
    EXPECT_EQ(matchesWildcards(fact.name, fact.pattern), fact.matches)
        << std::string(fact.name.begin(), fact.name.end()) << " against "
        << std::string(fact.pattern.begin(), fact.pattern.end());
  }
}

}  // namespace
}  // namespace emulator
