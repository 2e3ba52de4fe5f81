#include <gtest/gtest.h>

#include "mail/address_list.h"
#include "mail/recipients.h"
#include "tests/support/agent_test.h"

namespace qorv {
namespace {

using namespace test;
using Addresses = std::vector<std::u16string_view>;

struct RecipientText {
  std::u16string_view text;
  Addresses addresses;
  std::size_t most;  ///< one for a text, and one for each ";" and ","
};

class SplitText : public testing::TestWithParam<RecipientText> {};

TEST_P(SplitText, givesItsAddresses) {
  EXPECT_EQ(splitRecipients(GetParam().text), GetParam().addresses);
  EXPECT_EQ(mostRecipients(GetParam().text), GetParam().most);
  EXPECT_LE(GetParam().addresses.size(), GetParam().most);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, SplitText,
    testing::Values(RecipientText{u"", {}, 0}, RecipientText{u"a", {u"a"}, 1},
                    RecipientText{u"alpha;  beta ;gamma", {u"alpha", u"beta ", u"gamma"}, 3},
                    RecipientText{u"one, two", {u"one, two"}, 2}, RecipientText{u"a,b;c", {u"a,b", u"c"}, 3},
                    RecipientText{u"a;;b", {u"a", u"b"}, 3}, RecipientText{u";", {}, 2},
                    RecipientText{u"a;", {u"a"}, 2}, RecipientText{u"a; ", {u"a"}, 2},
                    RecipientText{u"   ", {}, 1}, RecipientText{u" ;  ;\ta", {u"\ta"}, 3},
                    RecipientText{u"a b", {u"a b"}, 1}, RecipientText{u"\u00A0a", {u"\u00A0a"}, 1}));

class AddressLists : public AgentTest {
 protected:
  /// The text of a list of these addresses, and what became of its memory.
  std::u16string joined(const std::vector<std::u16string>& addresses) {
    std::u16string text = u"(none)";
    observeCalls();
    perform([&] {
      AddressList list;
      for (const auto& address : addresses) list.append(address);
      if (list.text()) text = list.text();
    });
    return text;
  }
  std::vector<int> sizes() {
    std::vector<int> asked;
    for (const auto& call : calls("LocalAlloc")) {
      EXPECT_EQ(call["args"][0], 0x40) << "zeroed";
      asked.push_back(call["args"][1]);
    }
    return asked;
  }
};

TEST_F(AddressLists, withoutAddressesTakeNoMemory) {
  EXPECT_EQ(joined({u"", u""}), u"(none)");
  EXPECT_TRUE(calls("Local").empty());
}

TEST_F(AddressLists, thatFitTakeOneBlockOf1000Bytes) {
  // 249 characters, a semicolon and 249 more are 499, and with the terminator 1000 bytes.
  const std::u16string half(249, u'a');
  EXPECT_EQ(joined({half, u"", half}), half + u";" + half);
  EXPECT_EQ(callNames("Local"), (std::vector<std::string>{"LocalAlloc", "LocalFree"}));
  EXPECT_EQ(sizes(), std::vector<int>{1000});
}

TEST_F(AddressLists, thatDoNotFitMoveIntoALargerBlock) {
  const std::u16string half(249, u'a');
  EXPECT_EQ(joined({half, half + u"b"}), half + u";" + half + u"b");
  EXPECT_EQ(callNames("Local"),
            (std::vector<std::string>{"LocalAlloc", "LocalAlloc", "LocalFree", "LocalFree"}));
  EXPECT_EQ(sizes(), (std::vector<int>{1000, 2000}));
}

TEST_F(AddressLists, growAsFarAsTheirAddressesNeed) {
  const std::u16string large(60000, u'x');
  EXPECT_EQ(joined({large, u"y"}), large + u";y");
  EXPECT_EQ(sizes(), std::vector<int>{128000});
}

TEST_F(AddressLists, areGivenUpWhole) {
  fault("LocalAlloc#2=8");
  const std::u16string half(249, u'a');
  EXPECT_EQ(joined({half, half + u"b", u"c"}), u"(none)") << "nor does a later address begin it anew";
  EXPECT_EQ(sizes(), (std::vector<int>{1000, 2000}));
}

}  // namespace
}  // namespace qorv
