// The messaging library as a module of the device: its entries, log-on, buffers, and what is logged of it.
#include <fstream>
#include <gmock/gmock.h>

#include "emulator/calls/call_monitor.h"
#include "tests/emulator/messaging_test.h"

namespace emulator::test {
namespace {

class MessagingLibraryTest : public MessagingTest {
 protected:
  template <typename Entry>
  Entry entry(const WCHAR* name) {
    const FARPROC found = GetProcAddressW(library_, name);
    EXPECT_NE(found, nullptr);
    return reinterpret_cast<Entry>(found);
  }
};

TEST_F(MessagingLibraryTest, isFoundByItsNameWithItsEntries) {
  ASSERT_NE(library_, nullptr);
  EXPECT_EQ(LoadLibraryW(u"\\Windows\\cemapi.dll"), library_);
  for (const WCHAR* name :
       {u"FreeProws", u"MAPIFreeBuffer", u"MAPIInitialize", u"MAPILogonEx", u"MAPIUninitialize"}) {
    EXPECT_NE(GetProcAddressW(library_, name), nullptr);
  }
  EXPECT_EQ(GetProcAddressW(library_, u"MAPIAllocateBuffer"), nullptr);
  EXPECT_EQ(GetLastError(), ERROR_PROC_NOT_FOUND);
}

TEST_F(MessagingLibraryTest, logsOnAnyProfileWithOrWithoutPreparation) {
  const auto logonEx = entry<MAPILogonEx_t>(u"MAPILogonEx");
  EXPECT_TRUE(logon());
  EXPECT_EQ(entry<MAPIInitialize_t>(u"MAPIInitialize")(nullptr), S_OK);
  std::u16string profile = u"somebody";
  ComReference<IMAPISession> session;
  EXPECT_EQ(logonEx(0, profile.data(), profile.data(), 0, session.out()), S_OK);
  EXPECT_EQ(session->Logoff(0, 0, 0), S_OK);
  ComReference<IMsgStore> store;
  EXPECT_EQ(session->OpenMsgStore(0, 0, nullptr, nullptr, 0, store.out()), S_OK);
  entry<MAPIUninitialize_t>(u"MAPIUninitialize")();
  EXPECT_EQ(logonEx(0, nullptr, nullptr, 0, nullptr), E_INVALIDARG);
}

TEST_F(MessagingLibraryTest, freesBuffersAndRowSetsEachWithItsCall) {
  const auto freeBuffer = entry<MAPIFreeBuffer_t>(u"MAPIFreeBuffer");
  const auto freeRows = entry<FreeProws_t>(u"FreeProws");
  EXPECT_EQ(freeBuffer(nullptr), 0u);
  freeRows(nullptr);
  auto opened = store();
  ULONG count = kPoison;
  SPropValue* values = nullptr;
  ASSERT_EQ(opened->GetProps(Tags{PR_ENTRYID}, 0, &count, &values), S_OK);
  auto inbox = contents(PR_CE_IPM_INBOX_ENTRYID);
  SRowSet* rows = nullptr;
  ASSERT_EQ(inbox->QueryRows(1, 0, &rows), S_OK);
  EXPECT_EQ(device().memory.liveBlocks(), 2u);
  EXPECT_EQ(freeBuffer(rows), static_cast<ULONG>(E_INVALIDARG));
  freeRows(reinterpret_cast<SRowSet*>(values));
  EXPECT_EQ(device().memory.liveBlocks(), 2u);
  EXPECT_EQ(freeBuffer(values), 0u);
  freeRows(rows);
  EXPECT_EQ(device().memory.liveBlocks(), 0u);
  EXPECT_EQ(freeBuffer(values), static_cast<ULONG>(E_INVALIDARG));
}

/// Calls observed from the construction on.
class Observed {
 public:
  Observed(Device& device, const std::string& log, std::initializer_list<const char*> faults = {})
      : log_(log),
        monitor_(CallLog(log), Faults(rules(faults)),
                 [&device](DWORD error) { device.lastError.set(error); }),
        current_(device, &monitor_) {}

  std::vector<std::string> lines(const std::string& prefix) const {
    std::vector<std::string> found;
    std::ifstream file(log_);
    for (std::string line; std::getline(file, line);) {
      if (line.starts_with("{\"call\": \"" + prefix)) found.push_back(line);
    }
    return found;
  }

 private:
  static std::vector<FaultRule> rules(std::initializer_list<const char*> texts) {
    std::vector<FaultRule> rules;
    for (const char* text : texts) rules.push_back(parseFaultRule(text));
    return rules;
  }

  std::string log_;
  CallMonitor monitor_;
  CurrentDevice current_;
};

TEST_F(MessagingLibraryTest, logsObjectsUnderTheirOwnInterfaces) {
  load(R"({"mail": {"Inbox": [{"Id": 20, "Body": "Hi"}]}})");
  const Observed observed(device(), folder_.file("calls"));
  auto opened = message(PR_CE_IPM_INBOX_ENTRYID);
  stream(*opened.get(), PR_BODY_W, MAPI_UNICODE);
  EXPECT_THAT(observed.lines("MAPILogonEx"),
              testing::Contains(R"({"call": "MAPILogonEx", "args": [0, null, null, 0], "result": 0})"));
  EXPECT_THAT(observed.lines("IMsgStore.OpenEntry"),
              testing::Contains(
                  R"({"call": "IMsgStore.OpenEntry", "args": [20, {"bytes": 20}, null, 0], "result": 0})"));
  EXPECT_THAT(observed.lines("IMAPIFolder.GetContentsTable"),
              testing::ElementsAre(R"({"call": "IMAPIFolder.GetContentsTable", "args": [0], "result": 0})"));
  EXPECT_THAT(
      observed.lines("IMAPITable.SetColumns"),
      testing::ElementsAre(
          R"({"call": "IMAPITable.SetColumns", "args": [{"cValues": 1, "aulPropTag": [268370178]}, 0], "result": 0})"));
  EXPECT_THAT(
      observed.lines("IMessage.OpenProperty"),
      testing::ElementsAre(
          R"({"call": "IMessage.OpenProperty", "args": [268435487, null, 0, 2147483648], "result": 0})"));
  EXPECT_EQ(observed.lines("FreeProws").size(), 1u);
}

TEST_F(MessagingLibraryTest, failsAsFaultsSay) {
  load(R"({"mail": {"Inbox": [{"Id": 20}]}})");
  auto inbox = folder(PR_CE_IPM_INBOX_ENTRYID);
  const Observed observed(
      device(), folder_.file("calls"),
      {"IMAPITable.WaitForCompletion=0x80040401*2", "IMAPITable.QueryRows#2=0x8004010B*1"});
  auto table = contents(PR_CE_IPM_INBOX_ENTRYID);
  EXPECT_EQ(table->WaitForCompletion(0, 2000, nullptr), MAPI_E_TIMEOUT);
  EXPECT_EQ(table->WaitForCompletion(0, 2000, nullptr), MAPI_E_TIMEOUT);
  EXPECT_EQ(table->WaitForCompletion(0, 2000, nullptr), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(rows(*table.get(), 1).size(), 1u);
  EXPECT_EQ(table->SeekRow(BOOKMARK_BEGINNING, 0, nullptr), S_OK);
  SRowSet* set = poison<SRowSet>();
  EXPECT_EQ(table->QueryRows(1, 0, &set), MAPI_E_BUSY);
  EXPECT_EQ(set, nullptr);
  EXPECT_EQ(rows(*table.get(), 1).size(), 1u);
}

TEST_F(MessagingLibraryTest, failsALogOnAsFaultsSay) {
  const Observed observed(device(), folder_.file("calls"), {"MAPILogonEx=0x80040111"});
  IMAPISession* session = poison<IMAPISession>();
  EXPECT_EQ(entry<MAPILogonEx_t>(u"MAPILogonEx")(0, nullptr, nullptr, 0, &session),
            static_cast<HRESULT>(0x80040111));
  EXPECT_EQ(session, nullptr);
}

}  // namespace
}  // namespace emulator::test
