// Messages: body, recipients, attachments.
#include "tests/emulator/messaging_message_test.h"

namespace emulator::test {
namespace {

using MessagingPartsTest = MessagingMessageTest;

TEST_F(MessagingPartsTest, hasItsBodyInAStream) {
  auto body = stream(*full_.get(), PR_BODY_W, MAPI_UNICODE);
  EXPECT_EQ(readAll(*body.get()), bytesOf(u"Text"));
  char buffer[4] = {'?', '?', '?', '?'};
  ULONG moved = kPoison;
  EXPECT_EQ(body->Read(buffer, 4, &moved), S_OK);
  EXPECT_EQ(moved, 0u);
  EXPECT_EQ(body->Write("x", 1, &moved), STG_E_ACCESSDENIED);
  IUnknown* none = poison<IUnknown>();
  EXPECT_EQ(bare_->OpenProperty(PR_BODY_W, nullptr, 0, MAPI_UNICODE, &none), MAPI_E_NOT_FOUND);
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(bare_->OpenProperty(PR_SUBJECT_W, nullptr, 0, 0, &none), MAPI_E_NOT_FOUND);
  EXPECT_EQ(bare_->OpenProperty(PR_BODY_W, nullptr, 0, MAPI_CREATE, &none), E_INVALIDARG);
  EXPECT_EQ(bare_->OpenProperty(PR_BODY_W, &IMessage::kIid, 0, 0, &none), E_NOINTERFACE);
  EXPECT_EQ(bare_->OpenProperty(PR_BODY_W, nullptr, 0, 0, nullptr), E_INVALIDARG);
}

TEST_F(MessagingPartsTest, keepsABodyAsTheBytesThatWereWritten) {
  const std::string bytes("a\0b\0\0\0tail\0", 11);
  for (IMessage* each : {full_.get(), bare_.get()}) {
    // What was there before goes.
    auto writing = stream(*each, PR_BODY_W, MAPI_CREATE | MAPI_MODIFY);
    write(*writing.get(), bytes.substr(0, 3));
    write(*writing.get(), bytes.substr(3));
    EXPECT_EQ(readAll(*stream(*each, PR_BODY_W, 0).get()), bytes);
  }
}

TEST_F(MessagingPartsTest, changesABodyInPlace) {
  auto body = stream(*full_.get(), PR_BODY_W, MAPI_MODIFY);
  ULARGE_INTEGER position{};
  EXPECT_EQ(body->Seek(std::int64_t{-2}, STREAM_SEEK_END, &position), S_OK);
  EXPECT_EQ(static_cast<std::uint64_t>(position), 6u);
  write(*body.get(), bytesOf(u"ed"));
  EXPECT_EQ(body->Seek(std::int64_t{0}, STREAM_SEEK_SET, nullptr), S_OK);
  EXPECT_EQ(readAll(*body.get()), bytesOf(u"Texed"));
  EXPECT_EQ(body->Seek(std::int64_t{-1}, STREAM_SEEK_SET, nullptr), STG_E_INVALIDFUNCTION);
  EXPECT_EQ(body->Seek(std::int64_t{0}, 3, nullptr), STG_E_INVALIDFUNCTION);
  EXPECT_EQ(body->Seek(std::numeric_limits<std::int64_t>::max(), STREAM_SEEK_CUR, nullptr),
            STG_E_INVALIDFUNCTION);
  EXPECT_EQ(body->Read(nullptr, 1, nullptr), E_POINTER);
  EXPECT_EQ(body->Write(nullptr, 1, nullptr), E_POINTER);
  EXPECT_EQ(body->Stat(nullptr, 0), E_POINTER);
  EXPECT_EQ(body->Commit(0), S_OK);
}

TEST_F(MessagingPartsTest, doesNotLetAStreamFillTheDevice) {
  auto body = stream(*full_.get(), PR_BODY_W, MAPI_MODIFY);
  EXPECT_EQ(body->Seek(std::int64_t{1} << 30, STREAM_SEEK_SET, nullptr), S_OK);
  ULONG moved = kPoison;
  EXPECT_EQ(body->Write("x", 1, &moved), E_OUTOFMEMORY);
  EXPECT_EQ(moved, 0u);
}

TEST_F(MessagingPartsTest, writesNothingThroughAStreamOfADeletedMessage) {
  auto body = stream(*full_.get(), PR_BODY_W, MAPI_MODIFY);
  device().messaging.mailbox().remove(MailFolder::Inbox, 20);
  EXPECT_EQ(body->Write("x", 1, nullptr), E_FAIL);
  EXPECT_EQ(readAll(*body.get()), "");
}

/// A list of recipients as programs lay it out.
class Recipients {
 public:
  void add(std::vector<SPropValue> values) { values_.push_back(std::move(values)); }
  operator ADRLIST*() {
    block_.assign(sizeof(ADRLIST) + values_.size() * sizeof(ADRENTRY), 0);
    auto* list = reinterpret_cast<ADRLIST*>(block_.data());
    list->cEntries = static_cast<ULONG>(values_.size());
    for (std::size_t i = 0; i < values_.size(); ++i) {
      static_cast<ADRENTRY*>(list->aEntries)[i] = {0, static_cast<ULONG>(values_[i].size()),
                                                   values_[i].data()};
    }
    return list;
  }

 private:
  std::vector<std::vector<SPropValue>> values_;
  std::vector<BYTE> block_;
};

using List = std::vector<std::pair<LONG, std::u16string>>;

TEST_F(MessagingPartsTest, listsItsRecipients) {
  EXPECT_EQ(recipients(*full_.get()),
            (List{{MAPI_TO, u"bo@example.org"}, {MAPI_TO, u"cy@example.org"}, {MAPI_CC, u"di@example.org"}}));
  EXPECT_TRUE(recipients(*bare_.get()).empty());
}

TEST_F(MessagingPartsTest, showsRecipientsWithoutColumnsBeingSet) {
  ComReference<IMAPITable> table;
  ASSERT_EQ(full_->GetRecipientTable(MAPI_UNICODE, table.out()), S_OK);
  const Rows all = rows(*table.get(), 255);
  ASSERT_EQ(all.size(), 3u);
  std::vector<PropertyTag> tags;
  for (ULONG i = 0; i < all[2].cValues; ++i) tags.push_back(all.at(2, i).ulPropTag);
  EXPECT_EQ(tags, (std::vector<PropertyTag>{PR_ROWID, PR_RECIPIENT_TYPE, PR_ADDRTYPE_W, PR_EMAIL_ADDRESS_W}));
  EXPECT_EQ(all.at(2, 0).Value.l, 2);
  EXPECT_EQ(std::u16string(all.at(2, 2).Value.lpszW), u"SMTP");
}

TEST_F(MessagingPartsTest, changesItsRecipientsAtOnce) {
  std::u16string smtp = u"SMTP";
  std::u16string eve = u"eve@example.org ";
  std::u16string fay = u"";
  Recipients added;
  added.add({numberValue(PR_RECIPIENT_TYPE, MAPI_BCC), textValue(PR_ADDRTYPE_W, smtp),
             textValue(PR_EMAIL_ADDRESS_W, eve)});
  EXPECT_EQ(full_->ModifyRecipients(MODRECIP_ADD, added), S_OK);
  EXPECT_EQ(recipients(*full_.get()).back(), (List::value_type{MAPI_BCC, eve}));
  Recipients removed;
  removed.add({numberValue(PR_ROWID, 2)});
  removed.add({numberValue(PR_ROWID, 0)});
  EXPECT_EQ(full_->ModifyRecipients(MODRECIP_REMOVE, removed), S_OK);
  EXPECT_EQ(recipients(*full_.get()), (List{{MAPI_TO, u"cy@example.org"}, {MAPI_BCC, eve}}));
  Recipients changed;
  changed.add({numberValue(PR_ROWID, 1), textValue(PR_EMAIL_ADDRESS_W, fay)});
  EXPECT_EQ(full_->ModifyRecipients(MODRECIP_MODIFY, changed), S_OK);
  EXPECT_EQ(recipients(*full_.get()), (List{{MAPI_TO, u"cy@example.org"}, {MAPI_TO, u""}}));
  EXPECT_EQ(full_->ModifyRecipients(0, added), S_OK);
  EXPECT_EQ(recipients(*full_.get()), (List{{MAPI_BCC, eve}}));
}

TEST_F(MessagingPartsTest, refusesRecipientsWhole) {
  const List before = recipients(*full_.get());
  std::u16string address = u"x";
  SPropValue noText{PR_EMAIL_ADDRESS_W, 0, {}};
  noText.Value.lpszW = nullptr;
  const std::vector<SPropValue> good{numberValue(PR_RECIPIENT_TYPE, MAPI_TO),
                                     textValue(PR_EMAIL_ADDRESS_W, address)};
  struct Refused {
    ULONG flags;
    std::vector<SPropValue> entry;
    HRESULT result;
  };
  for (const Refused& refused : std::initializer_list<Refused>{
           {MODRECIP_ADD, {numberValue(PR_RECIPIENT_TYPE, MAPI_TO)}, E_INVALIDARG},
           {MODRECIP_ADD, {noText}, E_INVALIDARG},
           {MODRECIP_ADD,
            {numberValue(PR_RECIPIENT_TYPE, 0), textValue(PR_EMAIL_ADDRESS_W, address)},
            E_INVALIDARG},
           {MODRECIP_ADD,
            {numberValue(PR_RECIPIENT_TYPE, 4), textValue(PR_EMAIL_ADDRESS_W, address)},
            E_INVALIDARG},
           {MODRECIP_MODIFY, {numberValue(PR_ROWID, 0)}, MAPI_E_NOT_FOUND},
           {MODRECIP_REMOVE, {numberValue(PR_ROWID, 3)}, MAPI_E_NOT_FOUND},
           {MODRECIP_REMOVE, {numberValue(PR_ROWID, -1)}, MAPI_E_NOT_FOUND},
           {16, good, E_INVALIDARG}}) {
    Recipients list;
    list.add(good);
    list.add(refused.entry);
    EXPECT_EQ(full_->ModifyRecipients(refused.flags, list), refused.result) << refused.flags;
    EXPECT_EQ(recipients(*full_.get()), before);
  }
  EXPECT_EQ(full_->ModifyRecipients(MODRECIP_ADD, nullptr), E_INVALIDARG);
  ADRLIST wild{0xFFFFFFFF, {}};
  EXPECT_EQ(full_->ModifyRecipients(MODRECIP_ADD, &wild), E_INVALIDARG);
  ADRLIST noValues{1, {{0, 2, nullptr}}};
  EXPECT_EQ(full_->ModifyRecipients(MODRECIP_ADD, &noValues), E_INVALIDARG);
}

TEST_F(MessagingPartsTest, takesAnAddressOfAnyLength) {
  std::u16string address(100000, u'a');
  Recipients list;
  list.add({numberValue(PR_RECIPIENT_TYPE, MAPI_TO), textValue(PR_EMAIL_ADDRESS_W, address)});
  EXPECT_EQ(bare_->ModifyRecipients(MODRECIP_ADD, list), S_OK);
  EXPECT_EQ(recipients(*bare_.get()), (List{{MAPI_TO, address}}));
}

TEST_F(MessagingPartsTest, listsAndOpensItsAttachments) {
  ComReference<IMAPITable> table;
  ASSERT_EQ(full_->GetAttachmentTable(MAPI_UNICODE, table.out()), S_OK);
  const Rows all = rows(*table.get(), 255);
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(all.at(0, 0).ulPropTag, PR_ATTACH_NUM);
  EXPECT_EQ(all.at(1, 0).Value.l, 1);
  EXPECT_EQ(std::u16string(all.at(1, 1).Value.lpszW), u"b.bin");
  EXPECT_EQ(all.at(0, 2).Value.l, 2);
  ComReference<IAttach> first;
  ASSERT_EQ(full_->OpenAttach(0, nullptr, 0, first.out()), S_OK);
  EXPECT_EQ(text(*first.get(), PR_ATTACH_FILENAME_W), u"a.txt");
  EXPECT_EQ(readAll(*stream(*first.get(), PR_ATTACH_DATA_BIN, 0).get()), "hi");
  SPropValue value = numberValue(PR_ATTACH_NUM, 5);
  EXPECT_EQ(first->SetProps(1, &value, nullptr), MAPI_E_NO_ACCESS);
  IAttach* none = poison<IAttach>();
  EXPECT_EQ(full_->OpenAttach(2, nullptr, 0, &none), MAPI_E_NOT_FOUND);
  EXPECT_EQ(none, nullptr);
  EXPECT_EQ(full_->OpenAttach(0, &IMessage::kIid, 0, &none), E_NOINTERFACE);
}

TEST_F(MessagingPartsTest, getsAttachmentsThatStayWithoutASave) {
  ULONG place = kPoison;
  {
    ComReference<IAttach> made;
    ASSERT_EQ(full_->CreateAttach(nullptr, 0, &place, made.out()), S_OK);
    EXPECT_EQ(place, 2u);
    IUnknown* data = poison<IUnknown>();
    EXPECT_EQ(made->OpenProperty(PR_ATTACH_DATA_BIN, nullptr, 0, 0, &data), MAPI_E_NOT_FOUND);
    std::u16string name = u"c.dat";
    SPropValue value = textValue(PR_ATTACH_FILENAME_W, name);
    EXPECT_EQ(made->SetProps(1, &value, nullptr), S_OK);
    auto writing = stream(*made.get(), PR_ATTACH_DATA_BIN, MAPI_CREATE | MAPI_MODIFY);
    for (int block = 0; block < 40; ++block) {
      write(*writing.get(), std::string(1024, static_cast<char>('a' + block % 26)));
    }
  }
  ComReference<IAttach> again;
  ASSERT_EQ(message(PR_CE_IPM_INBOX_ENTRYID)->OpenAttach(2, nullptr, 0, again.out()), S_OK);
  EXPECT_EQ(text(*again.get(), PR_ATTACH_FILENAME_W), u"c.dat");
  EXPECT_EQ(number(*again.get(), PR_ATTACH_SIZE), 40 * 1024);
  const std::string bytes = readAll(*stream(*again.get(), PR_ATTACH_DATA_BIN, 0).get());
  EXPECT_EQ(bytes.substr(1023, 2), "ab");
  EXPECT_EQ(bytes.back(), 'n');  // the 40th block: 39 % 26 is 13
}

TEST_F(MessagingPartsTest, losesAttachmentsThatAreDeleted) {
  EXPECT_EQ(full_->DeleteAttach(0, 0, nullptr, 0), S_OK);
  EXPECT_EQ(full_->DeleteAttach(0, 0, nullptr, 0), MAPI_E_NOT_FOUND);
  ULONG number = kPoison;
  ComReference<IAttach> made;
  EXPECT_EQ(full_->CreateAttach(nullptr, 0, &number, made.out()), S_OK);
  EXPECT_EQ(number, 2u);
  EXPECT_EQ(full_->DeleteAttach(2, 0, nullptr, 0), S_OK);
  Values values;
  EXPECT_EQ(made->GetProps(nullptr, 0, values.count(), values.out()), MAPI_E_NOT_FOUND);
}

}  // namespace
}  // namespace emulator::test
