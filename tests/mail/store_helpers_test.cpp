#include "mail/store_helpers.h"

#include <gtest/gtest.h>

#include "mail/entry_id.h"
#include "mail/messaging_library.h"
#include "mail/properties.h"
#include "tests/mail/mail_test.h"
#include "tests/mail/named_stores.h"

namespace qorv {
namespace {

using namespace test;
using Json = nlohmann::json;

class StoreHelpers : public MailTest {
 protected:
  /// Runs with a session and its default store.
  void withStore(const std::function<void(IMAPISession&, IMsgStore&)>& use) {
    perform([&] {
      ComPtr<IMAPISession> session;
      ComPtr<IMsgStore> store;
      ASSERT_EQ(MAPILogonEx(0, nullptr, nullptr, 0, session.put()), 0);
      ASSERT_EQ(session->OpenMsgStore(0, 0, nullptr, nullptr, 0, store.put()), 0);
      use(*session, *store);
    });
  }
  /// A folder's number, by which the device tells which it is; 0 for none. Releases it.
  static DWORD numberOf(IMAPIFolder* folder) {
    const ComPtr<IMAPIFolder> owned(folder);
    if (!owned) return 0;
    const PropertyValues values(*owned, TagArray<1>{.tags = {PR_ENTRYID}});
    const SBinary* entryId = values.findBinary(PR_ENTRYID);
    return entryId ? objectId(*entryId).value_or(0) : 0;
  }
  struct Found {
    HRESULT result;
    DWORD number;
    bool operator==(const Found&) const = default;
  };
  Found byPath(LPCWSTR path, ULONG tag = PR_IPM_SUBTREE_ENTRYID) {
    Found found{};
    withStore([&](IMAPISession&, IMsgStore& store) {
      auto* folder = reinterpret_cast<IMAPIFolder*>(std::uintptr_t{1});
      found.result = OpenFolderByPath(store, tag, path, nullptr, &folder);
      found.number = numberOf(folder);
    });
    return found;
  }
};

constexpr DWORD number(emulator::MailFolder folder) {
  return static_cast<DWORD>(folder);
}

TEST_F(StoreHelpers, findsTheStoreByItsName) {
  observeCalls();
  withStore([](IMAPISession& session, IMsgStore&) {
    ComPtr<IMsgStore> store;
    EXPECT_EQ(FindActiveSyncStore(session, store.put()), 0);
    EXPECT_TRUE(store);
  });
  EXPECT_EQ(calls("IMAPISession.GetMsgStoresTable")[0]["args"], Json::array({0x80000000u}));
  EXPECT_EQ(calls("IMAPITable.SetColumns")[0]["args"][0]["aulPropTag"],
            Json::array({0x3001001F, 0x0FFF0102}));
  EXPECT_EQ(calls("IMAPITable.QueryRows")[0]["args"], Json::array({255, 0}));
  EXPECT_EQ(calls("IMAPISession.OpenMsgStore")[1]["args"],
            Json::parse(R"([0, 20, {"bytes": 20}, null, 17])"));
}

TEST_F(StoreHelpers, withoutATableTheDefaultStoreIsOpened) {
  observeCalls();
  for (const char* rule : {"IMAPISession.GetMsgStoresTable=0x80004005", "IMAPITable.QueryRows=0x80004005"}) {
    clearFaults();
    fault(rule);
    withStore([](IMAPISession& session, IMsgStore&) {
      ComPtr<IMsgStore> store;
      EXPECT_EQ(FindActiveSyncStore(session, store.put()), 0);
      EXPECT_TRUE(store);
    });
    EXPECT_EQ(calls("IMAPISession.OpenMsgStore")[1]["args"], Json::array({0, 0, nullptr, nullptr, 0}));
  }
}

struct StoreNames {
  std::vector<std::u16string> names;
  int opened;
};

std::vector<std::u16string> manyNames(std::size_t others) {
  std::vector<std::u16string> names(others, u"SMS");
  names.push_back(u"ActiveSync");
  return names;
}

class StoreByName : public StoreHelpers, public testing::WithParamInterface<StoreNames> {};

TEST_P(StoreByName, isTheFirstOfThatNameAmong255) {
  NamedStores session(device().memory, GetParam().names);
  perform([&] {
    auto* store = reinterpret_cast<IMsgStore*>(std::uintptr_t{1});
    EXPECT_EQ(FindActiveSyncStore(session, &store), MAPI_E_NOT_FOUND);
    EXPECT_EQ(store, nullptr);
  });
  EXPECT_EQ(session.opened, GetParam().opened);
  EXPECT_EQ(session.table.references, 0u);
}

INSTANTIATE_TEST_SUITE_P(
    Names, StoreByName,
    testing::Values(StoreNames{{u"SMS", u"ActiveSync", u"ActiveSync"}, 1},
                    StoreNames{{u"", u"ACTIVESYNC"}, 1}, StoreNames{{u"activesync"}, 0},
                    StoreNames{{u"ActiveSync2", u"Active", u""}, NamedStores::kDefaultStore},
                    StoreNames{{}, NamedStores::kDefaultStore}, StoreNames{manyNames(254), 254},
                    StoreNames{manyNames(255), NamedStores::kDefaultStore}));

TEST_F(StoreHelpers, opensAFolderOfTheStore) {
  observeCalls();
  withStore([&](IMAPISession&, IMsgStore& store) {
    IMAPIFolder* folder = nullptr;
    EXPECT_EQ(OpenStoreFolder(store, &folder, PR_IPM_OUTBOX_ENTRYID), 0);
    EXPECT_EQ(numberOf(folder), number(emulator::MailFolder::Outbox));
  });
  EXPECT_EQ(calls("IMsgStore.GetProps")[0]["args"],
            Json::parse(R"([{"aulPropTag": [904003842], "cValues": 1}, 2147483648])"));
  EXPECT_EQ(calls("IMsgStore.OpenEntry")[0]["args"], Json::parse(R"([20, {"bytes": 20}, null, 1])"));
}

TEST_F(StoreHelpers, tellsWhyAFolderCannotBeOpened) {
  const auto open = [&](ULONG tag) {
    HRESULT result = 1;
    withStore([&](IMAPISession&, IMsgStore& store) {
      auto* folder = reinterpret_cast<IMAPIFolder*>(std::uintptr_t{1});
      result = OpenStoreFolder(store, &folder, tag);
      EXPECT_EQ(folder, nullptr);
    });
    return static_cast<DWORD>(result);
  };
  EXPECT_EQ(open(0x12340102), 0x80004005u) << "no such property";
  fault("IMsgStore.GetProps=0x80040102");
  EXPECT_EQ(open(PR_IPM_OUTBOX_ENTRYID), 0x80040102u);
  clearFaults();
  fault("IMsgStore.OpenEntry=0x8004010F");
  EXPECT_EQ(open(PR_IPM_OUTBOX_ENTRYID), 0x8004010Fu);
}

TEST_F(StoreHelpers, followsAPathWithoutRegardToCase) {
  using emulator::MailFolder;
  EXPECT_EQ(byPath(u"inBOX"), (Found{0, number(MailFolder::Inbox)}));
  EXPECT_EQ(byPath(u"Sent Items\\"), (Found{0, number(MailFolder::SentItems)}));
  EXPECT_EQ(byPath(u"\\\\Drafts\\\\"), (Found{0, number(MailFolder::Drafts)}));
  EXPECT_EQ(byPath(u""), (Found{0, number(MailFolder::Subtree)}));
  EXPECT_EQ(byPath(u"", PR_IPM_OUTBOX_ENTRYID), (Found{0, number(MailFolder::Outbox)}));
}

TEST_F(StoreHelpers, aPathThatLeadsNowhereIsNotFound) {
  for (const std::u16string& path :
       {std::u16string(u"Inbo"), std::u16string(u"Inboxx"), std::u16string(u"Inbox\\Sub"),
        std::u16string(300, u'x'), std::u16string(70000, u'x')}) {
    EXPECT_EQ(byPath(path.c_str()), (Found{MAPI_E_NOT_FOUND, 0}));
  }
}

TEST_F(StoreHelpers, startsFromTheParentThatIsGivenAndKeepsItsReference) {
  withStore([&](IMAPISession&, IMsgStore& store) {
    ComPtr<IMAPIFolder> root;
    ASSERT_EQ(OpenStoreFolder(store, root.put(), PR_IPM_SUBTREE_ENTRYID), 0);
    IMAPIFolder* folder = nullptr;
    EXPECT_EQ(OpenFolderByPath(store, 0, u"Outbox", root.get(), &folder), 0);
    EXPECT_EQ(numberOf(folder), number(emulator::MailFolder::Outbox));
    EXPECT_EQ(OpenFolderByPath(store, 0, u"", root.get(), &folder), 0);
    EXPECT_EQ(folder, root.get());
    EXPECT_EQ(numberOf(folder), number(emulator::MailFolder::Subtree));
    EXPECT_EQ(OpenFolderByPath(store, 0, u"Nowhere", root.get(), &folder), MAPI_E_NOT_FOUND);
    EXPECT_EQ(root->AddRef(), 2u);
    root->Release();
  });
  EXPECT_EQ(device().messaging.liveObjects().total(), 0u);
}

TEST_F(StoreHelpers, everyFailureOnThePathIsTold) {
  struct Step {
    const char* rule;
    HRESULT result;
  };
  const auto failure = [](DWORD bits) { return static_cast<HRESULT>(bits); };
  for (const Step& step : {Step{"IMsgStore.GetProps=0x80040102", failure(0x80040102)},
                           Step{"IMsgStore.OpenEntry=0x80040107", failure(0x80040107)},
                           Step{"IMAPIFolder.GetHierarchyTable=0x80040102", failure(0x80040102)},
                           Step{"IMAPITable.QueryRows=0x80004005", MAPI_E_NOT_FOUND},
                           Step{"IMAPIFolder.OpenEntry=0x80040107", failure(0x80040107)}}) {
    clearFaults();
    fault(step.rule);
    EXPECT_EQ(byPath(u"Inbox"), (Found{step.result, 0})) << step.rule;
    EXPECT_EQ(device().messaging.liveObjects().total(), 0u) << step.rule;
  }
}

}  // namespace
}  // namespace qorv
