// Lists, counts and deletions.
#include <gtest/gtest.h>

#include "tests/mail/mail_test.h"

namespace qorv {
namespace {

using namespace test;
using Json = nlohmann::json;

class MailListing : public MailTest {
 protected:
  static Json messages(std::initializer_list<std::uint32_t> ids) {
    Json list = Json::array();
    for (const auto id : ids) list.push_back({{"Id", id}});
    return list;
  }
  void load(const Json& mail) { MailTest::load(Json{{"mail", mail}}.dump()); }
  Bytes list() { return reply(request(13, kMail)); }
  Bytes count() { return reply(request(6, kMail)); }
};

TEST_F(MailListing, anEmptyStoreIsAnEmptyList) {
  observeCalls();
  EXPECT_EQ(list(), hex("01 00 00000000 00"));
  EXPECT_TRUE(calls("MessageBoxW").empty());
  EXPECT_EQ(count(), hex("01 00 00000000"));
}

TEST_F(MailListing, isInAscendingOrderOfUnsignedNumbers) {
  load({{"Inbox", messages({0x80000001, 7})},
        {"Drafts", messages({0xFFFFFFFF, 300})},
        {"Outbox", messages({8})}});
  EXPECT_EQ(list(), hex("01 00 05000000 00  07000000 08000000 2C010000 01000080 FFFFFFFF"));
}

TEST_F(MailListing, deletedItemsAreNeverListed) {
  load({{"Deleted Items", messages({5, 6})}, {"Inbox", messages({6})}});
  EXPECT_EQ(list(), hex("01 00 01000000 00  06000000"));
}

TEST_F(MailListing, theOutboxIsListedButNotCounted) {
  load({{"Outbox", messages({5, 6})}});
  EXPECT_EQ(count(), hex("01 00 00000000"));
  EXPECT_EQ(list().dwordAt(2), 2u);
}

TEST_F(MailListing, countsInboxDraftsAndSentItems) {
  load({{"Inbox", messages({1, 2, 3})},
        {"Drafts", messages({4, 1})},
        {"Sent Items", messages({5})},
        {"Outbox", messages({6})},
        {"Deleted Items", messages({7})}});
  observeCalls();
  EXPECT_EQ(count(), hex("01 00 06000000")) << "one that lies in two folders counts twice";
  const auto tables = calls("IMAPIFolder.GetContentsTable");
  ASSERT_EQ(tables.size(), 5u + 3u);
  for (std::size_t i = 5; i < 8; ++i) EXPECT_EQ(tables[i]["args"], Json::parse("[1]"));
  EXPECT_EQ(callNames("IMAPITable.SeekRow").size(), 5u);
  EXPECT_EQ(callNames("IMAPITable.GetRowCount").size(), 8u);
  EXPECT_EQ(callNames("IMAPITable.SetColumns").size(), 8u);
}

TEST_F(MailListing, aTableThatDoesNotCountIsLeftOut) {
  load({{"Inbox", messages({1, 2, 3})}, {"Drafts", messages({4})}, {"Sent Items", messages({5})}});
  fault("IMAPITable.GetRowCount#7=0x80004005*1");  // five of the scan, Inbox, Drafts
  EXPECT_EQ(count(), hex("01 00 04000000"));
  clearFaults();
  fault("IMAPIFolder.GetContentsTable#6=0x80004005*1");
  EXPECT_EQ(count(), hex("01 00 02000000"));
}

TEST_F(MailListing, aNumberInTwoFoldersIsListedOnceAndReadFromTheLaterOne) {
  MailTest::load(
      R"({"mail": {"Drafts": [{"Id": 5, "Subject": "draft"}], "Sent Items": [{"Id": 5, "Subject": "sent"}],
                              "Outbox": [{"Id": 5, "Subject": "outbox"}], "Inbox": [{"Id": 5, "Subject": "inbox"}]}})");
  EXPECT_EQ(list(), hex("01 00 01000000 00  05000000"));
  EXPECT_EQ(read(5).text(kSubject), u"inbox");
  MailTest::load(
      R"({"mail": {"Drafts": [{"Id": 6, "Subject": "draft"}], "Sent Items": [{"Id": 6, "Subject": "sent"}],
                              "Outbox": [{"Id": 6, "Subject": "outbox"}]}})");
  EXPECT_EQ(read(6).text(kSubject), u"outbox");
  MailTest::load(
      R"({"mail": {"Drafts": [{"Id": 7, "Subject": "draft"}], "Sent Items": [{"Id": 7, "Subject": "sent"}]}})");
  EXPECT_EQ(read(7).text(kSubject), u"sent");
}

TEST_F(MailListing, numbersAtTheEndsOfTheirRangeAreMessagesToo) {
  load({{"Inbox", messages({0, 0x80000000, 0xFFFFFFFF})}});
  EXPECT_EQ(list(), hex("01 00 03000000 00  00000000 00000080 FFFFFFFF"));
  EXPECT_EQ(read(0xFFFFFFFF).header.dwordAt(2), 0xFFFFFFFFu);
  EXPECT_EQ(read(0).header.slice(0, 6), hex("01 00 00000000"));
  EXPECT_EQ(reply(request(17, kMail).u32(2).u32(0xFFFFFFFF).u32(0)), hex("FFFFFFFF 00000000"));
  EXPECT_EQ(list(), hex("01 00 01000000 00  00000080"));
}

TEST_F(MailListing, aListThatJustFitsTheBufferIsWhole) {
  // (0x36000 - 7) / 4 = 55294 numbers fit.
  auto& mailbox = device().messaging.mailbox();
  for (int i = 0; i < 55294; ++i) mailbox.add(emulator::MailFolder::Inbox);
  const Bytes answer = list();
  EXPECT_EQ(answer.slice(0, 7), Bytes().u8(1).u8(0).u32(55294).u8(0));
  EXPECT_EQ(answer.size(), 7u + 4u * 55294u);
}

TEST_F(MailListing, aListThatDoesNotFitTheBufferEndsWithResultZero) {
  // (0x36000 - 7) / 4 = 55294 numbers fit.
  auto& mailbox = device().messaging.mailbox();
  for (int i = 0; i < 55295; ++i) mailbox.add(emulator::MailFolder::Inbox);
  const Bytes answer = list();
  EXPECT_EQ(answer.slice(0, 7), Bytes().u8(0).u8(0).u32(55294).u8(0));
  EXPECT_EQ(answer.size(), 7u + 4u * 55294u);
}

TEST_F(MailListing, deletesThroughTheInboxWhereverTheMessageLies) {
  load({{"Inbox", messages({1, 2})}, {"Drafts", messages({3})}, {"Outbox", messages({4})}});
  observeCalls();
  EXPECT_EQ(reply(request(4, kMail).u32(3)), hex("01 00"));
  ASSERT_EQ(calls("IMAPIFolder.DeleteMessages").size(), 1u);
  EXPECT_EQ(calls("IMAPIFolder.DeleteMessages")[0]["args"],
            Json::parse(R"([{"cValues": 1, "lpbin": [{"bytes": 20}]}, 0, null, 0])"));
  EXPECT_EQ(list(), hex("01 00 03000000 00  01000000 02000000 04000000"));
}

TEST_F(MailListing, deletingAnUnknownMessageSucceeds) {
  load({{"Inbox", messages({1})}, {"Deleted Items", messages({9})}});
  observeCalls();
  EXPECT_EQ(reply(request(4, kMail).u32(9)), hex("01 00"));
  EXPECT_EQ(calls("IMAPIFolder.DeleteMessages")[0]["args"],
            Json::parse(R"([{"cValues": 1, "lpbin": [null]}, 0, null, 0])"));
  EXPECT_EQ(folder("Deleted Items").size(), 1u);
  EXPECT_EQ(folder("Inbox").size(), 1u);
}

TEST_F(MailListing, aDeletionThatTheStoreRefusesIsAnsweredAsDone) {
  load({{"Inbox", messages({1})}});
  fault("IMAPIFolder.DeleteMessages=0x80004005");
  EXPECT_EQ(reply(request(4, kMail).u32(1)), hex("01 00"));
  EXPECT_EQ(reply(request(5, kMail)), hex("01 00"));
  EXPECT_EQ(reply(request(17, kMail).u32(1).u32(1)), hex("01000000"));
  clearFaults();
  EXPECT_EQ(folder("Inbox").size(), 1u);
}

TEST_F(MailListing, aCutDeletionDeletesNothing) {
  load({{"Inbox", messages({1})}});
  for (std::size_t size = 2; size < 6; ++size) {
    EXPECT_EQ(reply(request(4, kMail).u32(1).slice(0, size)), hex("00 03")) << size;
  }
  EXPECT_EQ(folder("Inbox").size(), 1u);
}

TEST_F(MailListing, deletesSeveralAndEchoesEveryNumber) {
  load({{"Inbox", messages({1, 2, 3})}});
  EXPECT_EQ(reply(request(17, kMail).u32(3).u32(2).u32(77).u32(2)), hex("02000000 4D000000 02000000"));
  EXPECT_EQ(list(), hex("01 00 02000000 00  01000000 03000000"));
}

TEST_F(MailListing, deletesAllButDeletedItems) {
  load({{"Inbox", messages({1, 2})},
        {"Drafts", messages({3, 1})},
        {"Outbox", messages({4})},
        {"Sent Items", messages({5})},
        {"Deleted Items", messages({6})}});
  observeCalls();
  EXPECT_EQ(reply(request(5, kMail)), hex("01 00"));
  EXPECT_EQ(callNames("IMAPIFolder.DeleteMessages").size(), 5u);
  EXPECT_EQ(list(), hex("01 00 01000000 00  01000000")) << "the draft that another message hid is left";
  EXPECT_EQ(folder("Deleted Items").size(), 1u);
}

TEST_F(MailListing, deletesAllOfNothing) {
  observeCalls();
  EXPECT_EQ(reply(request(5, kMail)), hex("01 00"));
  EXPECT_TRUE(calls("IMAPIFolder.DeleteMessages").empty());
}

}  // namespace
}  // namespace qorv
