#include "mail/attachment_list.h"

#include <gtest/gtest.h>

#include "mail/decimal_prefix.h"
#include "tests/support/agent_test.h"

namespace qorv {
namespace {

using namespace test;

class AttachmentLists : public AgentTest {
 protected:
  /// "path=name" for each.
  std::vector<std::u16string> attachments(const std::u16string& text) {
    std::vector<std::u16string> found;
    perform([&] {
      // A heap copy of exactly the text's size lets a sanitizer see every read behind it.
      const std::vector<WCHAR> exact(text.c_str(), text.c_str() + text.size() + 1);
      AttachmentList list(exact.data());
      while (auto listed = list.next()) found.push_back(listed->path + u"=" + listed->name);
      EXPECT_FALSE(list.next()) << "the end stays the end";
    });
    return found;
  }
};

struct ListText {
  std::u16string text;
  std::vector<std::u16string> attachments;
};

class ReadList : public AttachmentLists, public testing::WithParamInterface<ListText> {};

TEST_P(ReadList, givesItsAttachments) {
  EXPECT_EQ(attachments(GetParam().text), GetParam().attachments);
}

using Found = std::vector<std::u16string>;

INSTANTIATE_TEST_SUITE_P(WellFormed, ReadList,
                         testing::Values(ListText{u"1 6 \\a.txt5 a.txt", {u"\\a.txt=a.txt"}},
                                         ListText{u"2 2 \\a1 b2 \\c1 d", {u"\\a=b", u"\\c=d"}},
                                         ListText{u" +1\n\t6x\\a.txt  5ya.txt", {u"\\a.txt=a.txt"}},
                                         ListText{u"1 8 \\a b c;15 1 2 3", {u"\\a b c;1=1 2 3"}},
                                         ListText{u"1 0 0 ", {u"="}}, ListText{u"0 ", {}},
                                         ListText{u"1 2 \\a1 b and what follows", {u"\\a=b"}}));

INSTANTIATE_TEST_SUITE_P(Absurd, ReadList,
                         testing::Values(ListText{u"", {}}, ListText{u" ", {}}, ListText{u"1", {}},
                                         ListText{u"1 ", {}}, ListText{u"x", {}},
                                         ListText{u"-1 2 \\a1 b", {}},
                                         ListText{u"99999999999999999999 2 \\a1 b", {u"\\a=b"}},
                                         ListText{u"2147483647 2 \\a1 b", {u"\\a=b"}},
                                         ListText{u"3 2 \\a1 b-2 \\c1 d", {u"\\a=b"}},
                                         ListText{u"2 2 \\a1 b2147483647 \\c1 d", {u"\\a=b"}},
                                         ListText{u"2 2 \\a1 b99999999999 \\c1 d", {u"\\a=b"}},
                                         ListText{u"2 2 \\a1 b-2147483648 \\c1 d", {u"\\a=b"}},
                                         ListText{u"1 6 \\a.txt", {}}, ListText{u"1 6 \\a.txt5", {}},
                                         ListText{u"1 6 \\a.txt5 a.tx", {}}, ListText{u"1 6 \\a.tx", {}},
                                         ListText{u"1 2 \\aname", {}}, ListText{u"1 6", {}},
                                         ListText{u"1 1", {}}));

INSTANTIATE_TEST_SUITE_P(
    TooLong, ReadList,
    testing::Values(ListText{u"2 259 " + std::u16string(259, u'p') + u"1 n2 \\a1 b",
                             {std::u16string(259, u'p') + u"=n", u"\\a=b"}},
                    ListText{u"2 260 " + std::u16string(260, u'p') + u"1 n2 \\a1 b", {u"\\a=b"}},
                    ListText{u"2 2 \\p260 " + std::u16string(260, u'n') + u"2 \\a1 b", {u"\\a=b"}}));

TEST_F(AttachmentLists, cutAnywhereGiveOnlyWholeAttachments) {
  const std::u16string text = u"2 6 \\a.txt5 a.txt2 \\b1 c";
  const std::u16string first = u"2 6 \\a.txt5 a.txt";
  for (std::size_t size = 0; size < text.size(); ++size) {
    EXPECT_EQ(attachments(text.substr(0, size)), size < first.size() ? Found() : Found{u"\\a.txt=a.txt"})
        << size;
  }
}

TEST_F(AttachmentLists, decimalPrefixTellsWhereItEnds) {
  const auto parse = [&](LPCWSTR text) {
    LONG number = 4711;
    std::ptrdiff_t length = -1;
    perform([&] { length = ParseDecimalPrefix(text, number) - text; });
    return std::pair(number, length);
  };
  EXPECT_EQ(parse(u"12 x"), std::pair(LONG{12}, std::ptrdiff_t{2}));
  EXPECT_EQ(parse(u" \t-7;"), std::pair(LONG{-7}, std::ptrdiff_t{4}));
  EXPECT_EQ(parse(u"0x10"), std::pair(LONG{0}, std::ptrdiff_t{1}));
  EXPECT_EQ(parse(u"  +"), std::pair(LONG{0}, std::ptrdiff_t{0}));
  EXPECT_EQ(parse(u""), std::pair(LONG{0}, std::ptrdiff_t{0}));
}

}  // namespace
}  // namespace qorv
