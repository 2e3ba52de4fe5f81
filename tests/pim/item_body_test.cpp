// Bodies of contacts and tasks: short ones are put, long ones written into the item's stream after the save.
#include <gtest/gtest.h>

#include "tests/pim/item_test.h"
#include "tests/support/appointments.h"

namespace qorv {
namespace {

using namespace test;
using Names = std::vector<std::string>;

struct Kind {
  unsigned type;
  const char* section;
  unsigned bodyTag;
  std::string interface;
};

void PrintTo(const Kind& kind, std::ostream* out) {
  *out << kind.section;
}

class ItemBody : public ItemTest, public testing::WithParamInterface<Kind> {
 protected:
  ItemBody() : ItemTest(GetParam().type, GetParam().section) {}

  static std::string call(const char* method) { return GetParam().interface + method; }
  static Bytes bodyRecord(const std::u16string& body) {
    return record(1).append(textField(GetParam().bodyTag, body));
  }
  DWORD addWithBody(const std::u16string& body) { return add(bodyRecord(body)); }
};

INSTANTIATE_TEST_SUITE_P(Kinds, ItemBody,
                         testing::Values(Kind{kContact, "contacts", 50, "IContact."},
                                         Kind{kTask, "tasks", 11, "ITask."}),
                         [](const auto& kind) { return std::string(kind.param.section); });

TEST_P(ItemBody, of4095CharactersIsPut) {
  observeCalls();
  const DWORD oid = addWithBody(std::u16string(4095, u'b'));
  EXPECT_EQ(callNames(call("put_Body")).size(), 1u);
  EXPECT_TRUE(callNames("IItem.").empty());
  EXPECT_EQ(stored(oid)["Body"], std::string(4095, 'b'));
}

TEST_P(ItemBody, of4096CharactersIsWrittenThroughTheStreamAfterTheSave) {
  observeCalls();
  const DWORD oid = addWithBody(std::u16string(4096, u'b'));
  EXPECT_TRUE(callNames(call("put_Body")).empty());
  EXPECT_EQ(
      callsOf({call("Save"), call("get_Oid"), "WideCharToMultiByte", "IPOutlookApp.GetItemFromOid",
               "IItem.OpenProperty", "IItem.Save", "IStream."}),
      (Names{call("Save"), call("get_Oid"), "WideCharToMultiByte", "IPOutlookApp.GetItemFromOid",
             "IItem.OpenProperty", "IStream.Write", "IStream.Commit", "IItem.Save", "IStream.Release"}));
  // 0x001E0064 and GENERIC_WRITE.
  EXPECT_EQ(argumentsOf("IItem.OpenProperty"), Json::parse("[[1966180, 1073741824]]"));
  EXPECT_EQ(argumentsOf("IStream.Write"), Json::parse(R"([[{"bytes": 4096}, 4096]])"));
  EXPECT_EQ(stored(oid)["Body"], std::string(4096, 'b'));
}

TEST_P(ItemBody, ofAnyLengthComesBackAsItIs) {
  for (const std::size_t length :
       {std::size_t{0}, std::size_t{4095}, std::size_t{4096}, std::size_t{20000}}) {
    const std::u16string body(length, u'b');
    const Bytes answer = read(addWithBody(body));
    // The body is the last field of both records.
    const Bytes expected = Bytes().u32(GetParam().bodyTag).terminatedText(body);
    EXPECT_EQ(answer.slice(answer.size() - expected.size(), expected.size()), expected) << length;
  }
}

TEST_P(ItemBody, whenLongArrivesAsAnsiText) {
  // The euro sign is in code page 1252. A Greek letter is not, and becomes a question mark; so do both halves of a
  // character outside the first plane.
  std::u16string body(4096, u'x');
  body.replace(0, 4, u"\u20AC\u03A9\U0001F600");
  EXPECT_EQ(stored(addWithBody(body))["Body"], "\u20AC???" + std::string(4092, 'x'));
}

TEST_P(ItemBody, whenShortKeepsEveryCharacter) {
  EXPECT_EQ(stored(addWithBody(u"\u20AC\u03A9\U0001F600"))["Body"], "\u20AC\u03A9\U0001F600");
}

TEST_P(ItemBody, replacesTheOneThatIsThere) {
  const DWORD oid = addWithBody(std::u16string(5000, u'a'));
  changeReply(oid, bodyRecord(std::u16string(4096, u'b')));
  EXPECT_EQ(stored(oid)["Body"], std::string(4096, 'b'));
  changeReply(oid, bodyRecord(u"short"));
  EXPECT_EQ(stored(oid)["Body"], "short");
  changeReply(oid, record(0));
  EXPECT_EQ(stored(oid)["Body"], "short") << "no body in the record leaves it";
}

TEST_P(ItemBody, thatComesLastCounts) {
  const Bytes longBody = textField(GetParam().bodyTag, std::u16string(4096, u'b'));
  const Bytes shortBody = textField(GetParam().bodyTag, u"short");
  EXPECT_EQ(stored(add(record(2).append(longBody).append(shortBody)))["Body"], "short");
  EXPECT_EQ(stored(add(record(2).append(shortBody).append(longBody)))["Body"], std::string(4096, 'b'));
}

TEST_P(ItemBody, ofAnItemThatIsNotSavedIsNotWritten) {
  load({{"Oid", 17}, {"Body", "old"}});
  fault(call("Save") + "=0x80004005");
  observeCalls();
  EXPECT_EQ(changeReply(17, bodyRecord(std::u16string(4096, u'b'))), hex("00 00 11000000 11000000"));
  EXPECT_TRUE(callNames("IItem.").empty());
  EXPECT_EQ(stored(17)["Body"], "old");
}

TEST_P(ItemBody, thatCannotBeWrittenLeavesTheItemSaved) {
  for (const char* rule :
       {"WideCharToMultiByte=1113", "IItem.OpenProperty=0x80004005", "IStream.Write=0x80030005",
        "IStream.Commit=0x80030005", "IItem.Save=0x80004005"}) {
    load({{"Oid", 17}, {"Body", "old"}});
    clearFaults();
    fault(rule);
    EXPECT_EQ(changeReply(17, bodyRecord(std::u16string(4096, u'b'))), hex("01 00 11000000 11000000"))
        << rule;
    EXPECT_EQ(stored(17)["Body"], "old") << rule;
  }
}

}  // namespace
}  // namespace qorv
