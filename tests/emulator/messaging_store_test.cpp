// Sessions, the store, its folders, and how they are named and opened.
#include "emulator/messaging/entry_id.h"
#include "tests/emulator/messaging_test.h"

namespace emulator::test {
namespace {

class MessagingStoreTest : public MessagingTest {};

constexpr PropertyTag kFolderTags[] = {PR_IPM_SUBTREE_ENTRYID,   PR_CE_IPM_INBOX_ENTRYID,
                                       PR_IPM_OUTBOX_ENTRYID,    PR_IPM_SENTMAIL_ENTRYID,
                                       PR_CE_IPM_DRAFTS_ENTRYID, PR_IPM_WASTEBASKET_ENTRYID};

TEST_F(MessagingStoreTest, isOneAndHasANameAndAnIdentifier) {
  auto session = logon();
  ComReference<IMAPITable> table;
  ASSERT_EQ(session->GetMsgStoresTable(MAPI_UNICODE, table.out()), S_OK);
  EXPECT_EQ(rowCount(*table.get()), 1u);
  ASSERT_EQ(table->SetColumns(Tags{PR_DISPLAY_NAME_W, PR_ENTRYID}, 0), S_OK);
  const Rows stores = rows(*table.get(), 255);
  ASSERT_EQ(stores.size(), 1u);
  EXPECT_EQ(stores.at(0, 0).ulPropTag, PR_DISPLAY_NAME_W);
  EXPECT_EQ(std::u16string(stores.at(0, 0).Value.lpszW), u"ActiveSync");
  EntryBytes id = entryOf(stores.at(0, 1));
  ASSERT_EQ(id.size(), 20u);
  ComReference<IMsgStore> store;
  ASSERT_EQ(session->OpenMsgStore(0, 20, id.data(), nullptr, MDB_NO_DIALOG | MAPI_BEST_ACCESS, store.out()),
            S_OK);
  EXPECT_EQ(entryProperty(*store.get(), PR_ENTRYID), id);
}

TEST_F(MessagingStoreTest, isNotOpenedByAnotherIdentifier) {
  auto session = logon();
  EntryBytes id = entryProperty(*store().get(), PR_CE_IPM_INBOX_ENTRYID);
  for (const ULONG size : {20u, 19u}) {
    IMsgStore* store = poison<IMsgStore>();
    EXPECT_EQ(session->OpenMsgStore(0, size, id.data(), nullptr, 0, &store), MAPI_E_INVALID_ENTRYID);
    EXPECT_EQ(store, nullptr);
  }
}

TEST_F(MessagingStoreTest, namesItsFoldersEachByItsOwnIdentifier) {
  auto opened = store();
  std::vector<std::uint32_t> numbers;
  for (const PropertyTag tag : kFolderTags) {
    const EntryBytes id = entryProperty(*opened.get(), tag);
    ASSERT_EQ(id.size(), 20u) << std::hex << tag;
    numbers.push_back(wordOf(id, 4));
    auto folder = open<IMAPIFolder>(*opened.get(), id, MAPI_MODIFY, MAPI_FOLDER);
    EXPECT_EQ(entryProperty(*folder.get(), PR_ENTRYID), id);
  }
  std::ranges::sort(numbers);
  EXPECT_EQ(std::ranges::adjacent_find(numbers), numbers.end());
}

TEST_F(MessagingStoreTest, hasItsFoldersInItsRoot) {
  auto root = folder(PR_IPM_SUBTREE_ENTRYID);
  ComReference<IMAPITable> table;
  ASSERT_EQ(root->GetHierarchyTable(1, table.out()), S_OK);
  ASSERT_EQ(table->SetColumns(Tags{PR_ENTRYID, PR_DISPLAY_NAME_W}, 0), S_OK);
  const Rows folders = rows(*table.get(), 255);
  std::vector<std::u16string> names;
  for (std::size_t row = 0; row < folders.size(); ++row) names.emplace_back(folders.at(row, 1).Value.lpszW);
  EXPECT_EQ(names,
            (std::vector<std::u16string>{u"Inbox", u"Outbox", u"Sent Items", u"Drafts", u"Deleted Items"}));
  EntryBytes inbox = entryOf(folders.at(0, 0));
  IUnknown* object = nullptr;
  ULONG type = kPoison;
  ASSERT_EQ(root->OpenEntry(20, inbox.data(), nullptr, MAPI_MODIFY, &type, &object), S_OK);
  EXPECT_EQ(type, MAPI_FOLDER);
  object->Release();
  EXPECT_EQ(inbox, entryProperty(*store().get(), PR_CE_IPM_INBOX_ENTRYID));
}

TEST_F(MessagingStoreTest, hasNoFoldersInFoldersAndNoMessagesInItsRoot) {
  auto inbox = folder(PR_CE_IPM_INBOX_ENTRYID);
  ComReference<IMAPITable> table;
  ASSERT_EQ(inbox->GetHierarchyTable(0, table.out()), S_OK);
  EXPECT_EQ(rowCount(*table.get()), 0u);
  auto root = folder(PR_IPM_SUBTREE_ENTRYID);
  IMAPITable* contents = poison<IMAPITable>();
  EXPECT_EQ(root->GetContentsTable(0, &contents), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(contents, nullptr);
  IMessage* message = poison<IMessage>();
  EXPECT_EQ(root->CreateMessage(nullptr, 0, &message), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(message, nullptr);
}

TEST_F(MessagingStoreTest, opensMessagesOfAnyFolderThroughAnyFolder) {
  load(R"({"mail": {"Drafts": [{"Id": 3000000000, "Subject": "Draft"}]}})");
  EntryBytes id = entries(PR_CE_IPM_DRAFTS_ENTRYID).at(0);
  EXPECT_EQ(wordOf(id, 4), 3000000000u);
  auto inbox = folder(PR_CE_IPM_INBOX_ENTRYID);
  auto session = logon();
  for (const bool bySession : {false, true}) {
    IUnknown* object = nullptr;
    ULONG type = kPoison;
    const HRESULT result = bySession ? session->OpenEntry(20, id.data(), nullptr, 0, &type, &object)
                                     : inbox->OpenEntry(20, id.data(), nullptr, 0, &type, &object);
    ASSERT_EQ(result, S_OK);
    EXPECT_EQ(type, MAPI_MESSAGE);
    EXPECT_EQ(entryProperty(*static_cast<IMessage*>(object), PR_PARENT_ENTRYID),
              entryProperty(*store().get(), PR_CE_IPM_DRAFTS_ENTRYID));
    object->Release();
  }
}

TEST_F(MessagingStoreTest, tellsApartMessagesOfOneIdentifierInTwoFolders) {
  load(R"({"mail": {"Inbox": [{"Id": 20, "Subject": "In"}], "Outbox": [{"Id": 20, "Subject": "Out"}]}})");
  Values values;
  auto out = message(PR_IPM_OUTBOX_ENTRYID);
  ASSERT_EQ(out->GetProps(Tags{PR_SUBJECT_W}, MAPI_UNICODE, values.count(), values.out()), S_OK);
  EXPECT_EQ(std::u16string(values[0].Value.lpszW), u"Out");
  EXPECT_NE(entries(PR_CE_IPM_INBOX_ENTRYID), entries(PR_IPM_OUTBOX_ENTRYID));
}

TEST_F(MessagingStoreTest, opensNothingForIdentifiersThatItDidNotMake) {
  load(R"({"mail": {"Inbox": [{"Id": 20}]}})");
  auto opened = store();
  const EntryBytes good = entries(PR_CE_IPM_INBOX_ENTRYID).at(0);
  const auto result = [&](EntryBytes id, bool isNull = false) {
    IUnknown* object = poison<IUnknown>();
    ULONG type = kPoison;
    const HRESULT opening = opened->OpenEntry(static_cast<ULONG>(id.size()), isNull ? nullptr : id.data(),
                                              nullptr, MAPI_MODIFY, &type, &object);
    EXPECT_EQ(object, nullptr);
    EXPECT_EQ(type, kPoison);
    return opening;
  };
  EXPECT_EQ(result(good, true), MAPI_E_INVALID_ENTRYID);
  EXPECT_EQ(result({}), MAPI_E_INVALID_ENTRYID);
  EXPECT_EQ(result(EntryBytes(19, 1)), MAPI_E_INVALID_ENTRYID);
  EXPECT_EQ(result(EntryBytes(20, 0)), MAPI_E_INVALID_ENTRYID);
  EXPECT_EQ(result(EntryBytes(20, 0xFF)), MAPI_E_INVALID_ENTRYID);
  EXPECT_EQ(result(entryProperty(*opened.get(), PR_ENTRYID)), MAPI_E_INVALID_ENTRYID);
  // Any byte that is not the message's number makes it another device's, or another folder's.
  for (std::size_t place = 0; place < good.size(); ++place) {
    EntryBytes changed = good;
    changed[place] ^= 0x40;
    const bool isNumber = place >= 4 && place < 8;
    EXPECT_EQ(result(changed), isNumber ? MAPI_E_NOT_FOUND : MAPI_E_INVALID_ENTRYID) << place;
  }
}

TEST_F(MessagingStoreTest, opensUnderTheInterfacesThatAnObjectHas) {
  auto opened = store();
  EntryBytes id = entryProperty(*opened.get(), PR_CE_IPM_INBOX_ENTRYID);
  const auto result = [&](const IID& iid) {
    ComReference<IUnknown> object;
    return opened->OpenEntry(20, id.data(), &iid, 0, nullptr, object.out());
  };
  EXPECT_EQ(result(IMAPIFolder::kIid), S_OK);
  EXPECT_EQ(result(IMAPIContainer::kIid), S_OK);
  EXPECT_EQ(result(IMAPIProp::kIid), S_OK);
  EXPECT_EQ(result(IUnknown::kIid), S_OK);
  EXPECT_EQ(result(IMessage::kIid), E_NOINTERFACE);
}

TEST_F(MessagingStoreTest, comparesIdentifiers) {
  auto session = logon();
  EntryBytes inbox = entryProperty(*store().get(), PR_CE_IPM_INBOX_ENTRYID);
  EntryBytes same = inbox;
  EntryBytes outbox = entryProperty(*store().get(), PR_IPM_OUTBOX_ENTRYID);
  ULONG equal = kPoison;
  EXPECT_EQ(session->CompareEntryIDs(20, inbox.data(), 20, same.data(), 0, &equal), S_OK);
  EXPECT_EQ(equal, 1u);
  EXPECT_EQ(session->CompareEntryIDs(20, inbox.data(), 20, outbox.data(), 0, &equal), S_OK);
  EXPECT_EQ(equal, 0u);
  EXPECT_EQ(session->CompareEntryIDs(20, inbox.data(), 4, outbox.data(), 0, &equal), MAPI_E_INVALID_ENTRYID);
}

TEST_F(MessagingStoreTest, tellsNoInterfaces) {
  load(R"({"mail": {"Inbox": [{"Id": 20}]}})");
  auto session = logon();
  auto opened = store();
  auto inbox = folder(PR_CE_IPM_INBOX_ENTRYID);
  auto table = contents(PR_CE_IPM_INBOX_ENTRYID);
  auto message = this->message(PR_CE_IPM_INBOX_ENTRYID);
  for (IUnknown* object : std::initializer_list<IUnknown*>{session.get(), opened.get(), inbox.get(),
                                                           table.get(), message.get()}) {
    void* found = poison<void>();
    EXPECT_EQ(object->QueryInterface(IUnknown::kIid, &found), E_NOTIMPL);
    EXPECT_EQ(found, nullptr);
  }
}

TEST_F(MessagingStoreTest, refusesWhatTheDeviceHasNoSupportFor) {
  load(R"({"mail": {"Inbox": [{"Id": 20}]}})");
  auto session = logon();
  EXPECT_EQ(session->OpenAddressBook(0, nullptr, 0, nullptr), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(session->GetStatusTable(0, nullptr), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(session->SetDefaultStore(0, 0, nullptr), MAPI_E_NO_SUPPORT);
  auto opened = store();
  EXPECT_EQ(opened->GetLastError(0, 0, nullptr), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(opened->GetPropList(0, nullptr), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(opened->StoreLogoff(nullptr), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(opened->CompareEntryIDs(0, nullptr, 0, nullptr, 0, nullptr), MAPI_E_NO_SUPPORT);
  auto inbox = folder(PR_CE_IPM_INBOX_ENTRYID);
  EXPECT_EQ(inbox->SetReadFlags(nullptr, 0, nullptr, 0), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(inbox->GetMessageStatus(0, nullptr, 0, nullptr), MAPI_E_NO_SUPPORT);
  auto table = contents(PR_CE_IPM_INBOX_ENTRYID);
  EXPECT_EQ(table->QueryColumns(0, nullptr), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(table->FindRow(nullptr, 0, 0), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(table->CreateBookmark(nullptr), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(table->WaitForCompletion(0, 2000, nullptr), MAPI_E_NO_SUPPORT);
  auto message = this->message(PR_CE_IPM_INBOX_ENTRYID);
  EXPECT_EQ(message->SetReadFlag(0), MAPI_E_NO_SUPPORT);
  EXPECT_EQ(message->SubmitMessage(0), MAPI_E_NO_SUPPORT);
}

TEST_F(MessagingStoreTest, makesAndDeletesMessagesInFoldersThatWereOpenedForThat) {
  auto drafts = folder(PR_CE_IPM_DRAFTS_ENTRYID);
  ComReference<IMessage> made;
  ASSERT_EQ(drafts->CreateMessage(nullptr, 0, made.out()), S_OK);
  const EntryBytes id = entryProperty(*made.get(), PR_ENTRYID);
  EXPECT_EQ(entries(PR_CE_IPM_DRAFTS_ENTRYID), std::vector<EntryBytes>{id});
  EXPECT_EQ(device().store.kindOf(wordOf(id, 4)), ObjectKind::Message);

  auto reading = folder(PR_CE_IPM_DRAFTS_ENTRYID, 0);
  IMessage* refused = poison<IMessage>();
  EXPECT_EQ(reading->CreateMessage(nullptr, 0, &refused), MAPI_E_NO_ACCESS);
  EXPECT_EQ(refused, nullptr);
  EntryBytes bytes = id;
  SBinary entry{20, bytes.data()};
  ENTRYLIST list{1, &entry};
  EXPECT_EQ(reading->DeleteMessages(&list, 0, nullptr, 0), MAPI_E_NO_ACCESS);
  EXPECT_EQ(drafts->DeleteMessages(&list, 0, nullptr, 0), S_OK);
  EXPECT_TRUE(entries(PR_CE_IPM_DRAFTS_ENTRYID).empty());
  EXPECT_FALSE(device().store.kindOf(wordOf(id, 4)));
  // What is still open of it has nothing to say any more.
  Values values;
  EXPECT_EQ(made->GetProps(Tags{PR_ENTRYID}, 0, values.count(), values.out()), MAPI_E_NOT_FOUND);
  EXPECT_EQ(values.get(), nullptr);
  EXPECT_EQ(made->SaveChanges(0), S_OK);
}

TEST_F(MessagingStoreTest, deletesMessagesOfAnyFolderAndSkipsWhatIsNone) {
  load(R"({"mail": {"Inbox": [{"Id": 20}, {"Id": 21}], "Outbox": [{"Id": 20}]}})");
  EntryBytes inInbox = entries(PR_CE_IPM_INBOX_ENTRYID).at(0);
  EntryBytes root = entryProperty(*store().get(), PR_IPM_SUBTREE_ENTRYID);
  SBinary entries[] = {{20, nullptr}, {20, root.data()}, {20, inInbox.data()}, {20, inInbox.data()}};
  ENTRYLIST list{4, entries};
  auto drafts = folder(PR_CE_IPM_DRAFTS_ENTRYID);
  EXPECT_EQ(drafts->DeleteMessages(&list, 0, nullptr, 0), MAPI_W_PARTIAL_COMPLETION);
  EXPECT_EQ(ids(PR_CE_IPM_INBOX_ENTRYID), std::vector<Oid>{21});
  EXPECT_EQ(ids(PR_IPM_OUTBOX_ENTRYID), std::vector<Oid>{20});
  EXPECT_EQ(device().store.kindOf(20), ObjectKind::Message);
  list = {0, nullptr};
  EXPECT_EQ(drafts->DeleteMessages(&list, 0, nullptr, 0), S_OK);
  list = {0x7FFFFFFF, entries};
  EXPECT_EQ(drafts->DeleteMessages(&list, 0, nullptr, 0), E_INVALIDARG);
  EXPECT_EQ(drafts->DeleteMessages(nullptr, 0, nullptr, 0), E_INVALIDARG);
}

TEST_F(MessagingStoreTest, leavesNothingOfADeletedMessageBehind) {
  load(R"({"mail": {"Inbox": [{"Id": 20, "Body": "Text", "To": ["a"],
                               "Attachments": [{"Name": "a", "Data": "aGk="}]}]}})");
  EXPECT_TRUE(device().messaging.mailbox().removeEverywhere(20));
  for (const char* table : {"message", "message_recipient", "attachment", "mail_content", "mail_chunk"}) {
    Cursor rows = device().store.connection().query(std::string("SELECT COUNT(*) FROM ") + table);
    ASSERT_TRUE(rows.next());
    EXPECT_EQ(rows.get<int>(0), 0) << table;
  }
}

}  // namespace
}  // namespace emulator::test
