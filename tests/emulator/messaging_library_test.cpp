// The messaging library as a module of the device: its entries, a log-on, the table of stores.
#include "tests/emulator/messaging_test.h"

namespace emulator::test {
namespace {

class MessagingLibraryTest : public MessagingTest {};

TEST_F(MessagingLibraryTest, isFoundByItsNameWithItsEntries) {
  ASSERT_NE(library_, nullptr);
  for (const WCHAR* entry :
       {u"FreeProws", u"MAPIFreeBuffer", u"MAPIInitialize", u"MAPILogonEx", u"MAPIUninitialize"}) {
    EXPECT_NE(GetProcAddressW(library_, entry), nullptr);
  }
  EXPECT_EQ(GetProcAddressW(library_, u"MAPIAllocateBuffer"), nullptr);
  EXPECT_EQ(GetLastError(), ERROR_PROC_NOT_FOUND);
}

TEST_F(MessagingLibraryTest, logsOnWithoutBeingInitialised) {
  EXPECT_TRUE(logon());
}

TEST_F(MessagingLibraryTest, scansAFolder) {
  load(R"({"mail": {"Inbox": [{"Id": 20, "Subject": "Hi"}, {"Id": 7, "Subject": "Lo"}]}})");
  EXPECT_EQ(ids(PR_CE_IPM_INBOX_ENTRYID), (std::vector<Oid>{20, 7}));
  EXPECT_TRUE(ids(PR_IPM_OUTBOX_ENTRYID).empty());
}

}  // namespace
}  // namespace emulator::test
