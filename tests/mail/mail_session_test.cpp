// Log-on, store, folders and scan: what every mail request does first and last.
#include <gtest/gtest.h>

#include "mail/mailbox.h"
#include "tests/mail/mail_test.h"

namespace qorv {
namespace {

using namespace test;
using Json = nlohmann::json;
using Names = std::vector<std::string>;

constexpr const char* kOneInEach = R"({"mail": {
    "Deleted Items": [{"Id": 10}], "Drafts": [{"Id": 20}], "Sent Items": [{"Id": 30}], "Outbox": [{"Id": 40}],
    "Inbox": [{"Id": 50}]}})";

class MailSession : public MailTest {
 protected:
  std::size_t openFolders() {
    return device().messaging.liveObjects().count(emulator::ModelClass::MailFolder);
  }
  /// The boxes that were shown, each its text; caption and style are the same for all.
  Names boxes() {
    Names shown;
    for (const auto& call : calls("MessageBoxW")) {
      shown.push_back(call["args"][1]);
      EXPECT_EQ(call["args"][0], nullptr);
      EXPECT_EQ(call["args"][2], "ERROR");
      EXPECT_EQ(call["args"][3], 0);
    }
    return shown;
  }
  Bytes list() { return reply(request(13, kMail)); }
};

/// The calls between the request's arrival and its reply, without the look-up of each function.
Names without(Names names, const std::string& name) {
  std::erase(names, name);
  return names;
}

TEST_F(MailSession, callsInItsFixedOrder) {
  load(R"({"mail": {"Sent Items": [{"Id": 20}]}})");
  observeCalls();
  reply(request(20, kMail));  // a command that has no use for messages
  const Names all = without(callNames(), "GetProcAddressW");
  const auto first = std::ranges::find(all, "LoadLibraryW");
  const auto last = std::ranges::find(all, "IMAPISession.Release");

  const Names open{"IMsgStore.GetProps", "IMsgStore.OpenEntry", "MAPIFreeBuffer"};
  const Names table{"IMAPIFolder.GetContentsTable", "IMAPITable.SetColumns", "IMAPITable.GetRowCount",
                    "IMAPITable.SeekRow"};
  Names expected{"LoadLibraryW", "MAPILogonEx", "IMAPISession.OpenMsgStore"};
  const auto append = [&](const Names& names) {
    expected.insert(expected.end(), names.begin(), names.end());
  };
  for (int folder = 0; folder < 5; ++folder) {
    append(open);
    if (folder > 0) append({"IMAPITable.Release"});
    append(table);
    if (folder == 2) append({"IMAPITable.WaitForCompletion", "IMAPITable.QueryRows", "FreeProws"});
  }
  append({"GetVersionExW", "IRAPIStream.Write", "IRAPIStream.Write"});
  append({"IMAPITable.Release", "IMAPIFolder.Release", "IMAPIFolder.Release", "IMAPIFolder.Release",
          "IMsgStore.Release", "IMAPISession.Release"});
  EXPECT_EQ(Names(first, last + 1), expected);
}

TEST_F(MailSession, asksForTheFoldersInTheirOrder) {
  load(kOneInEach);
  observeCalls();
  reply(request(20, kMail));
  EXPECT_EQ(calls("MAPILogonEx")[0]["args"], Json::parse("[0, null, null, 0]"));
  EXPECT_EQ(calls("IMAPISession.OpenMsgStore")[0]["args"], Json::parse("[0, 0, null, null, 0]"));
  std::vector<unsigned> tags;
  for (const auto& call : calls("IMsgStore.GetProps")) {
    tags.push_back(call["args"][0]["aulPropTag"][0]);
    EXPECT_EQ(call["args"][1], 0x80000000u);
  }
  EXPECT_EQ(tags, (std::vector<unsigned>{0x35E30102, 0x81040102, 0x35E40102, 0x35E20102, 0x81060102}));
  std::vector<unsigned> flags;
  for (const auto& call : calls("IMAPIFolder.GetContentsTable")) flags.push_back(call["args"][0]);
  EXPECT_EQ(flags, (std::vector<unsigned>{0, 0, 0, 0, 1}));
  for (const auto& call : calls("IMsgStore.OpenEntry")) {
    EXPECT_EQ(call["args"], Json::parse(R"([20, {"bytes": 20}, null, 1])"));
  }
  for (const auto& call : calls("IMAPITable.SetColumns")) {
    EXPECT_EQ(call["args"], Json::parse(R"([{"aulPropTag": [268370178], "cValues": 1}, 0])"));  // 0x0FFF0102
  }
  for (const auto& call : calls("IMAPITable.WaitForCompletion")) {
    EXPECT_EQ(call["args"], Json::parse("[0, 2000]"));
  }
  EXPECT_EQ(callNames("IMAPITable.QueryRows").size(), 5u);
  EXPECT_TRUE(boxes().empty());
}

TEST_F(MailSession, asksForAllRowsAtOnce) {
  load(R"({"mail": {"Inbox": [{"Id": 1}, {"Id": 2}, {"Id": 3}]}})");
  observeCalls();
  list();
  ASSERT_EQ(callNames("IMAPITable.QueryRows").size(), 1u);
  EXPECT_EQ(calls("IMAPITable.QueryRows")[0]["args"], Json::parse("[3, 0]"));
}

TEST_F(MailSession, everyRequestLeavesTwoFoldersOpenAndNothingElse) {
  load(kOneInEach);
  list();
  EXPECT_EQ(openFolders(), 2u);
  session({request(6, kMail), request(7, kMail).u32(50), request(20, kMail)});
  EXPECT_EQ(openFolders(), 8u);
  EXPECT_EQ(device().messaging.liveObjects().total(), 8u);
}

TEST_F(MailSession, theLibraryIsLoadedOnce) {
  observeCalls();
  session({request(6, kMail), request(13, kMail)});
  EXPECT_EQ(callNames("LoadLibraryW").size(), 1u);
  EXPECT_EQ(callNames("MAPILogonEx").size(), 2u);
  EXPECT_TRUE(callNames("IMAPISession.Logoff").empty());
  EXPECT_TRUE(calls("MAPIInitialize").empty());
  EXPECT_TRUE(calls("MAPIUninitialize").empty());
}

TEST_F(MailSession, deletedItemsAreIndexedButNotAmongTheMessages) {
  load(kOneInEach);
  perform([] {
    Mailbox mailbox;
    EXPECT_EQ(mailbox.deletedItems().size(), 1u);
    EXPECT_NE(mailbox.deletedItems().find(10), nullptr);
    EXPECT_EQ(mailbox.messages().size(), 4u);
    EXPECT_EQ(mailbox.messages().find(10), nullptr);
  });
}

TEST_F(MailSession, folderNumbersAreThoseOfTheirIdentifiers) {
  perform([] {
    const FolderIds ids = Mailbox().folderIds();
    EXPECT_EQ(ids.drafts, static_cast<DWORD>(emulator::MailFolder::Drafts));
    EXPECT_EQ(ids.sentItems, static_cast<DWORD>(emulator::MailFolder::SentItems));
    EXPECT_EQ(ids.outbox, static_cast<DWORD>(emulator::MailFolder::Outbox));
    EXPECT_EQ(ids.inbox, static_cast<DWORD>(emulator::MailFolder::Inbox));
  });
}

class WithoutStore : public MailSession, public testing::WithParamInterface<const char*> {};

TEST_P(WithoutStore, answersTheFailureForms) {
  load(kOneInEach);
  fault(GetParam());
  const Bytes record = mailRecord(1).append(mailText(kSubject, u"x"));
  const auto replies =
      session({request(2, kMail).u32(7).append(record), request(3, kMail).u32(50).append(record),
               request(4, kMail).u32(50), request(5, kMail), request(6, kMail), request(7, kMail).u32(50),
               request(13, kMail), request(15, kMail).u32(1).u8(2).u8(4).u32(9).append(record),
               request(16, kMail).u32(1).u32(50), request(17, kMail).u32(2).u32(50).u32(60)});
  EXPECT_EQ(replies[0], hex("00 03 00000000 07000000 00000000000000000000"));
  EXPECT_EQ(replies[1], hex("00 03 32000000 32000000 00000000000000000000"));
  EXPECT_EQ(replies[2], hex("01 00"));
  EXPECT_EQ(replies[3], hex("01 00"));
  EXPECT_EQ(replies[4], hex("00 03 00000000"));
  EXPECT_EQ(replies[5], hex("00 00 00000000 00"));
  EXPECT_EQ(replies[6], hex("00 03 00000000 00"));
  EXPECT_EQ(replies[7], hex("00 03 00000000 09000000"));
  EXPECT_EQ(replies[8], hex("01 00 01000000 00  01 00 00000000 00"));
  EXPECT_EQ(replies[9], hex("32000000 3C000000"));
  clearFaults();
  EXPECT_EQ(list(), hex("01 00 04000000 00 14000000 1E000000 28000000 32000000")) << "nothing was changed";
  EXPECT_EQ(openFolders(), 2u) << "those of the list";
}

INSTANTIATE_TEST_SUITE_P(Calls, WithoutStore,
                         testing::Values("LoadLibraryW=126", "GetProcAddressW=127", "MAPILogonEx=0x80040111",
                                         "IMAPISession.OpenMsgStore=0x80040111"));

struct MissingFolder {
  int number;  ///< in the order of the scan
  const char* listed;
  const char* counted;
};

class WithoutFolder : public MailSession, public testing::WithParamInterface<MissingFolder> {
 protected:
  void expectListAndCount() {
    EXPECT_EQ(list(), hex(std::string("01 00 ") + GetParam().listed));
    EXPECT_EQ(reply(request(6, kMail)), hex(std::string("01 00 ") + GetParam().counted));
  }
  std::string nth(const std::string& call) {
    return call + "#" + std::to_string(GetParam().number) + "=0x80004005*1";
  }
};

TEST_P(WithoutFolder, leavesItOutOfListsAndCounts) {
  load(kOneInEach);
  fault(nth("IMsgStore.OpenEntry"));
  expectListAndCount();
}

TEST_P(WithoutFolder, isTheSameWhenTheStoreDoesNotNameIt) {
  load(kOneInEach);
  fault(nth("IMsgStore.GetProps"));
  expectListAndCount();
}

INSTANTIATE_TEST_SUITE_P(
    Folders, WithoutFolder,
    testing::Values(MissingFolder{1, "04000000 00 14000000 1E000000 28000000 32000000", "03000000"},
                    MissingFolder{2, "03000000 00 1E000000 28000000 32000000", "02000000"},
                    MissingFolder{3, "03000000 00 14000000 28000000 32000000", "02000000"},
                    MissingFolder{4, "03000000 00 14000000 1E000000 32000000", "03000000"},
                    MissingFolder{5, "03000000 00 14000000 1E000000 28000000", "02000000"}));

TEST_F(MailSession, writesIntoAFolderThatCannotBeOpenedAreRefused) {
  const auto write = [&](unsigned flags) {
    return reply(request(2, kMail).u32(7).append(mailRecord(0, flags))).slice(0, 2);
  };
  fault("IMsgStore.OpenEntry#2=0x80004005*1");  // Drafts
  EXPECT_EQ(write(kDraft), hex("00 03"));
  clearFaults();
  fault("IMsgStore.OpenEntry#3=0x80004005*1");  // Sent Items
  EXPECT_EQ(write(kSent), hex("00 03"));
  clearFaults();
  fault("IMsgStore.OpenEntry#5=0x80004005*1");  // Inbox
  EXPECT_EQ(write(kInbox), hex("00 03")) << "and not written into the Outbox, which lay in its place";
  EXPECT_EQ(write(kDraft), hex("01 00"));
  EXPECT_EQ(folder("Outbox"), Json::array());
  EXPECT_EQ(folder("Inbox"), Json::array());
}

TEST_F(MailSession, deletionsWithoutAnInboxAreAnsweredAsAlways) {
  load(kOneInEach);
  fault("IMsgStore.OpenEntry#5=0x80004005*1");
  EXPECT_EQ(reply(request(4, kMail).u32(20)), hex("01 00"));
  EXPECT_EQ(reply(request(5, kMail)), hex("01 00"));
  EXPECT_EQ(folder("Drafts").size(), 1u);
}

TEST_F(MailSession, aBusyTableShowsABoxForEachWait) {
  load(kOneInEach);
  observeCalls();
  fault("IMAPITable.WaitForCompletion#2=0x80040401*4");
  EXPECT_EQ(list().dwordAt(2), 4u) << "the fifth wait succeeds";
  EXPECT_EQ(boxes(), Names(4, "Drafts table is busy -- cannot retrieve records."));
  EXPECT_EQ(callNames("IMAPITable.QueryRows").size(), 5u) << "rows of a busy table are not asked for";
}

TEST_F(MailSession, aTableThatStaysBusyIsGivenUpAfterFiveWaits) {
  load(kOneInEach);
  observeCalls();
  fault("IMAPITable.WaitForCompletion=0x80040401");
  EXPECT_EQ(list(), hex("01 00 00000000 00"));
  Names expected;
  for (const char* name : {"Deleted Items", "Drafts", "Sent Items", "Outbox", "Inbox"}) {
    for (int i = 0; i < 5; ++i) {
      expected.push_back(std::string(name) + " table is busy -- cannot retrieve records.");
    }
  }
  EXPECT_EQ(boxes(), expected);
}

TEST_F(MailSession, aFailedQueryIsRepeatedUpToFiveTimes) {
  load(kOneInEach);
  observeCalls();
  fault("IMAPITable.QueryRows#5=0x80004005*4");
  EXPECT_EQ(list().dwordAt(2), 4u);
  EXPECT_EQ(callNames("IMAPITable.WaitForCompletion").size(), 9u) << "each query after a wait of its own";
  EXPECT_TRUE(boxes().empty());
  clearFaults();
  fault("IMAPITable.QueryRows#5=0x80004005*5");
  EXPECT_EQ(list(), hex("01 00 03000000 00 14000000 1E000000 28000000"));
}

TEST_F(MailSession, anyOtherWaitResultLetsTheScanGoOn) {
  load(kOneInEach);
  fault("IMAPITable.WaitForCompletion=0x80004005");
  EXPECT_EQ(list().dwordAt(2), 4u);
}

TEST_F(MailSession, tablesThatFailMakeTheListShorter) {
  load(kOneInEach);
  for (const char* rule : {"IMAPIFolder.GetContentsTable#2=0x80004005*1",
                           "IMAPITable.GetRowCount#2=0x80004005*1", "IMAPITable.SetColumns#2=0x80004005*1"}) {
    clearFaults();
    fault(rule);
    // Without its columns a table gives what it has, the identifier first.
    const bool isShorter = std::string(rule).find("SetColumns") == std::string::npos;
    EXPECT_EQ(list().dwordAt(2), isShorter ? 3u : 4u) << rule;
  }
}

}  // namespace
}  // namespace qorv
