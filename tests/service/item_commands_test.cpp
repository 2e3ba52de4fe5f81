#include <gtest/gtest.h>

#include "tests/support/agent_test.h"
#include "tests/support/appointments.h"

namespace qorv {
namespace {

using namespace test;

class ItemCommands : public AgentTest {
 protected:
  DWORD add(std::u16string_view subject) {
    return reply(request(2, kAppointment).u32(7).append(simpleAppointment(subject))).dwordAt(2);
  }
  DWORD makeContact() {
    qorv::ComPtr<IDispatch> item;
    outlook().CreateItem(olContactItem, item.put());
    LONG oid = 0;
    const auto properties = qorv::queryInterface<IItem>(*item);
    properties->Save();
    properties->get_Oid(&oid);
    return static_cast<DWORD>(oid);
  }
};

TEST_F(ItemCommands, addAnswersTheHeaderWithTheNewOidAndTenZeroBytes) {
  // 42 bytes: 2 command and type, 4 reference, 4 count, 4+4+4 subject "Hi", 4+16 start.
  const Bytes bytes =
      hex("02 02 07000000 02000000 01000000 04000000 4800 6900 10000000"
          "D507 0300 0000 0E00 0900 0000 0000 0000");
  ASSERT_EQ(bytes.size(), 42u);
  const Bytes answer = reply(bytes);
  ASSERT_EQ(answer.size(), 20u);
  const DWORD oid = answer.dwordAt(2);
  EXPECT_NE(oid, 0u);
  EXPECT_EQ(answer, Bytes().u8(1).u8(0).u32(oid).u32(7).zeros(10));
  const auto item = appointment(oid);
  ASSERT_TRUE(item);
  EXPECT_EQ(textOf(outlook(), *item, &IAppointment::get_Subject), u"Hi");
}

TEST_F(ItemCommands, changeAnswersTheOidTwice) {
  const DWORD oid = add(u"before");
  const Bytes answer = reply(request(3, kAppointment).u32(oid).append(simpleAppointment(u"after")));
  EXPECT_EQ(answer, Bytes().u8(1).u8(0).u32(oid).u32(oid).zeros(10));
  EXPECT_EQ(textOf(outlook(), *appointment(oid), &IAppointment::get_Subject), u"after");
}

TEST_F(ItemCommands, changeOfAnUnknownItemIsRefusedWithoutAReference) {
  EXPECT_EQ(reply(request(3, kAppointment).u32(12345).append(simpleAppointment(u"x"))),
            hex("00 03 00000000 00000000 00000000000000000000"));
}

TEST_F(ItemCommands, failedCreateIsRefusedWithoutAReference) {
  fault("IPOutlookApp.CreateItem=0x80004005");
  EXPECT_EQ(reply(request(2, kAppointment).u32(7).append(simpleAppointment(u"x"))),
            hex("00 03 00000000 00000000 00000000000000000000"));
}

TEST_F(ItemCommands, anItemOfAnotherTypeCountsAsNotFound) {
  const DWORD contact = makeContact();
  const auto replies = session({request(3, kAppointment).u32(contact).append(simpleAppointment(u"x")),
                                request(4, kAppointment).u32(contact), request(7, kAppointment).u32(contact),
                                request(17, kAppointment).u32(1).u32(contact), request(6, kContact)});
  EXPECT_EQ(replies[0], hex("00 03 00000000 00000000 00000000000000000000"));
  EXPECT_EQ(replies[1], hex("00 03"));
  EXPECT_EQ(replies[2], hex("00 03"));
  EXPECT_EQ(replies[3], Bytes());
  EXPECT_EQ(replies[4], hex("01 00 01000000")) << "the contact is still there";
}

TEST_F(ItemCommands, deleteRemovesTheItemOnce) {
  const DWORD oid = add(u"x");
  const auto replies = session({request(4, kAppointment).u32(oid), request(4, kAppointment).u32(oid)});
  EXPECT_EQ(replies, (std::vector<Bytes>{hex("01 00"), hex("00 03")}));
}

TEST_F(ItemCommands, failedDeleteIsRefused) {
  const DWORD oid = add(u"x");
  fault("IAppointment.Delete=0x80004005");
  EXPECT_EQ(reply(request(4, kAppointment).u32(oid)), hex("00 03"));
  EXPECT_EQ(reply(request(17, kAppointment).u32(1).u32(oid)), Bytes());
}

TEST_F(ItemCommands, deleteOfATypeWithoutItemsAsksTheObjectModelOnly) {
  const DWORD oid = add(u"x");
  const auto replies =
      session({request(4, kInkNote).u32(oid), request(4, kInkNote).u32(4711), request(6, kAppointment)});
  EXPECT_EQ(replies, (std::vector<Bytes>{hex("01 00"), hex("00 03"), hex("01 00 01000000")}));
}

TEST_F(ItemCommands, countIsOneWordBehindTheStatus) {
  for (const auto* subject : {u"a", u"b", u"c"}) add(subject);
  EXPECT_EQ(reply(request(6, kAppointment)), hex("01 00 03000000"));
  EXPECT_EQ(reply(request(6, kTask)), hex("01 00 00000000"));
}

class FailingFolder : public ItemCommands, public testing::WithParamInterface<const char*> {};

TEST_P(FailingFolder, countsAndEmptiesNothing) {
  add(u"x");
  fault(GetParam());
  EXPECT_EQ(reply(request(6, kAppointment)), hex("00 03 00000000"));
  EXPECT_EQ(reply(request(5, kAppointment)), hex("00 03"));
  clearFaults();
  EXPECT_EQ(reply(request(6, kAppointment)), hex("01 00 01000000"));
}

INSTANTIATE_TEST_SUITE_P(Calls, FailingFolder,
                         testing::Values("IPOutlookApp.GetDefaultFolder=0x80004005",
                                         "IFolder.get_Items=0x80004005",
                                         "IPOutlookItemCollection.get_Count=0x80004005"));

TEST_F(ItemCommands, deleteAllEmptiesTheFolderFromItsEnd) {
  for (const auto* subject : {u"a", u"b", u"c"}) add(subject);
  observeCalls();
  EXPECT_EQ(reply(request(5, kAppointment)), hex("01 00"));
  std::vector<nlohmann::json> indices;
  for (const auto& call : calls("IPOutlookItemCollection.Remove")) indices.push_back(call["args"][0]);
  EXPECT_EQ(indices, (std::vector<nlohmann::json>{3, 2, 1}));
  EXPECT_EQ(calls("IPOutlookApp.GetDefaultFolder")[0]["args"], nlohmann::json::parse("[9]"));
  EXPECT_EQ(reply(request(6, kAppointment)), hex("01 00 00000000"));
}

TEST_F(ItemCommands, deleteAllOfAnEmptyFolderRemovesNothing) {
  observeCalls();
  EXPECT_EQ(reply(request(5, kAppointment)), hex("01 00"));
  EXPECT_TRUE(calls("IPOutlookItemCollection.Remove").empty());
}

TEST_F(ItemCommands, deleteAllPassesOverWhatCannotBeRemoved) {
  add(u"a");
  add(u"b");
  fault("IPOutlookItemCollection.Remove=0x80004005*1");
  EXPECT_EQ(reply(request(5, kAppointment)), hex("01 00"));
  clearFaults();
  EXPECT_EQ(reply(request(6, kAppointment)), hex("01 00 01000000"));
}

TEST_F(ItemCommands, readOfAnUnknownItemIsRefused) {
  EXPECT_EQ(reply(request(7, kAppointment).u32(4711)), hex("00 03"));
}

TEST_F(ItemCommands, everyRequestThatEndsTooEarlyChangesNothing) {
  const DWORD oid = add(u"kept");
  const Bytes change = request(3, kAppointment).u32(oid).append(simpleAppointment(u"changed"));
  for (std::size_t size = 2; size < change.size(); ++size) {
    const Bytes answer = reply(change.slice(0, size));
    ASSERT_EQ(answer.size(), 20u) << size;
    EXPECT_EQ(answer.vector()[0], 0) << size;
    EXPECT_EQ(textOf(outlook(), *appointment(oid), &IAppointment::get_Subject), u"kept") << size;
  }
  const Bytes addition = request(2, kAppointment).u32(7).append(simpleAppointment(u"new"));
  for (std::size_t size = 2; size < addition.size(); ++size) {
    EXPECT_EQ(reply(addition.slice(0, size)).vector()[0], 0) << size;
  }
  for (std::size_t size = 2; size < 6; ++size) {
    EXPECT_EQ(reply(request(4, kAppointment).u32(oid).slice(0, size)), hex("00 03")) << size;
  }
  EXPECT_EQ(reply(request(6, kAppointment)), hex("01 00 01000000"));
}

}  // namespace
}  // namespace qorv
