#include <gtest/gtest.h>
#include <set>

#include "tests/support/agent_test.h"
#include "tests/support/appointments.h"

namespace qorv {
namespace {

using namespace test;

class ListingCommands : public AgentTest {
 protected:
  DWORD add(std::u16string_view subject) {
    return reply(request(2, kAppointment).u32(1).append(simpleAppointment(subject))).dwordAt(2);
  }
};

TEST_F(ListingCommands, emptyFolderIsAnEmptyList) {
  EXPECT_EQ(reply(request(13, kAppointment)), hex("01 00 00000000 00"));
}

TEST_F(ListingCommands, listsEveryItemFromTheFoldersEnd) {
  const std::set<DWORD> added{add(u"a"), add(u"b"), add(u"c")};
  observeCalls();
  const Bytes answer = reply(request(13, kAppointment));
  ASSERT_EQ(answer.size(), 7u + 3 * 4u);
  EXPECT_EQ(answer.slice(0, 7), hex("01 00 03000000 00"));
  EXPECT_EQ((std::set<DWORD>{answer.dwordAt(7), answer.dwordAt(11), answer.dwordAt(15)}), added);
  std::vector<nlohmann::json> indices;
  for (const auto& call : calls("IPOutlookItemCollection.Item")) indices.push_back(call["args"][0]);
  EXPECT_EQ(indices, (std::vector<nlohmann::json>{3, 2, 1}));
  EXPECT_EQ(calls("IAppointment.QueryInterface")[0]["args"][0], "{FB8998D0-38F0-4D12-AC56-4EC8FCE9F3D5}");
}

class SkippedItem : public ListingCommands, public testing::WithParamInterface<const char*> {};

TEST_P(SkippedItem, isLeftOutAndTheRestGoesOn) {
  add(u"a");
  add(u"b");
  fault(GetParam());
  const Bytes answer = reply(request(13, kAppointment));
  EXPECT_EQ(answer.slice(0, 7), hex("01 00 01000000 00"));
  EXPECT_EQ(answer.size(), 7u + 4u);
}

INSTANTIATE_TEST_SUITE_P(Calls, SkippedItem,
                         testing::Values("IPOutlookItemCollection.Item=0x80004005*1",
                                         "IAppointment.QueryInterface=0x80004002*1",
                                         "IItem.get_Oid=0x80004005*1"));

class FailingListing : public ListingCommands, public testing::WithParamInterface<const char*> {};

TEST_P(FailingListing, answersResultZero) {
  add(u"a");
  fault(GetParam());
  EXPECT_EQ(reply(request(13, kAppointment)), hex("00 00 00000000 00"));
}

INSTANTIATE_TEST_SUITE_P(Calls, FailingListing,
                         testing::Values("IPOutlookApp.GetDefaultFolder=0x80004005",
                                         "IFolder.get_Items=0x80004005",
                                         "IPOutlookItemCollection.get_Count=0x80004005"));

TEST_F(ListingCommands, listThatDoesNotFitTheBufferEndsWithResultZero) {
  // (0x36000 - 7) / 4 = 55294 identifiers fit.
  auto& items = device().objectModel.items();
  for (int i = 0; i < 55295; ++i) {
    auto item = items.make(emulator::ObjectKind::Task);
    ASSERT_EQ(items.add(item), 0);
  }
  const Bytes answer = reply(request(13, kTask));
  EXPECT_EQ(answer.slice(0, 7), Bytes().u8(0).u8(0).u32(55294).u8(0));
  EXPECT_EQ(answer.size(), 7u + 4u * 55294u);
}

}  // namespace
}  // namespace qorv
