// Messages: properties, body, recipients, attachments.
#include "tests/emulator/messaging_test.h"

namespace emulator::test {
namespace {

constexpr const char* kMail = R"({"mail": {"Inbox": [
  {"Id": 20, "Sender": "ann@example.org", "To": ["bo@example.org", "cy@example.org"], "Cc": ["di@example.org"],
   "Subject": "Hi", "Delivered": "2005-03-14T13:35:10.000Z", "Read": true, "Body": "Text",
   "Where": "Room 1", "Start": "2005-03-15T09:00:00.000Z", "End": "2005-03-15T10:00:00.000Z",
   "Attachments": [{"Name": "a.txt", "Data": "aGk="}, {"Name": "b.bin", "Data": ""}]},
  {"Id": 21}]}})";

/// UTF-16 as it lies in the store.
std::string bytesOf(std::u16string_view text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

SPropValue textValue(PropertyTag tag, std::u16string& text) {
  SPropValue value{tag, 0, {}};
  value.Value.lpszW = text.data();
  return value;
}
SPropValue numberValue(PropertyTag tag, LONG number) {
  SPropValue value{tag, 0, {}};
  value.Value.l = number;
  return value;
}
SPropValue timeValue(PropertyTag tag, const FILETIME& time) {
  SPropValue value{tag, 0, {}};
  value.Value.ft = time;
  return value;
}

class MessagingMessageTest : public MessagingTest {
 protected:
  MessagingMessageTest() : MessagingTest(kMail) {}

  std::u16string text(IMAPIProp& object, PropertyTag tag) {
    Values values;
    object.GetProps(Tags{tag}, MAPI_UNICODE, values.count(), values.out());
    const bool isText = values.size() == 1 && values[0].ulPropTag == tag;
    return isText ? std::u16string(values[0].Value.lpszW) : u"(none)";
  }
  LONG number(IMAPIProp& object, PropertyTag tag) {
    Values values;
    EXPECT_EQ(object.GetProps(Tags{tag}, 0, values.count(), values.out()), S_OK);
    return values[0].Value.l;
  }
  /// The tag by which the device knows a name; 0 when it does not.
  PropertyTag namedTag(std::u16string name, ULONG flags, PropertyTag type = PT_UNICODE) {
    GUID set = PS_MAPI;
    MAPINAMEID id{&set, MNID_STRING, {}};
    id.Kind.lpwstrName = name.data();
    MAPINAMEID* ids[] = {&id};
    SPropTagArray* tags = poison<SPropTagArray>();
    const HRESULT result = store()->GetIDsFromNames(1, ids, flags, &tags);
    EXPECT_GE(result, 0);
    EXPECT_EQ(tags->cValues, 1u);
    const PropertyTag tag = result == S_OK ? tags->aulPropTag[0] | type : 0;
    EXPECT_EQ(entries::MAPIFreeBuffer(tags), 0u);
    return tag;
  }
  std::vector<std::pair<LONG, std::u16string>> recipients(IMessage& message) {
    ComReference<IMAPITable> table;
    EXPECT_EQ(message.GetRecipientTable(MAPI_UNICODE, table.out()), S_OK);
    EXPECT_EQ(table->SetColumns(Tags{PR_RECIPIENT_TYPE, PR_EMAIL_ADDRESS_W}, 0), S_OK);
    const Rows all = rows(*table.get(), 255);
    std::vector<std::pair<LONG, std::u16string>> found;
    for (std::size_t i = 0; i < all.size(); ++i) {
      found.emplace_back(all.at(i, 0).Value.l, all.at(i, 1).Value.lpszW);
    }
    return found;
  }

  ComReference<IMessage> full_ = message(PR_CE_IPM_INBOX_ENTRYID, 0, MAPI_MODIFY);
  ComReference<IMessage> bare_ = message(PR_CE_IPM_INBOX_ENTRYID, 1, MAPI_MODIFY);
};

TEST_F(MessagingMessageTest, givesPropertiesInTheOrderAsked) {
  const PropertyTag where = namedTag(u"PR_SPLUS_WHERE", MAPI_CREATE);
  Values values;
  EXPECT_EQ(
      full_->GetProps(Tags{PR_ENTRYID, PR_MESSAGE_SIZE, PR_MESSAGE_DELIVERY_TIME, PR_SUBJECT_W,
                           PR_MESSAGE_FLAGS, PR_SENDER_EMAIL_ADDRESS_W, PR_START_DATE, PR_END_DATE, where},
                      MAPI_UNICODE, values.count(), values.out()),
      S_OK);
  ASSERT_EQ(values.size(), 9u);
  EXPECT_EQ(wordOf(entryOf(values[0]), 4), 20u);
  // 15 and 2 characters of sender and subject, a body of 4, an attachment of 2 bytes.
  EXPECT_EQ(values[1].Value.l, 2 * (15 + 2 + 4) + 2);
  EXPECT_EQ(values[2].ulPropTag, PR_MESSAGE_DELIVERY_TIME);
  EXPECT_EQ(ticksOf(values[2].Value.ft), ticksOf(SYSTEMTIME{2005, 3, 0, 14, 13, 35, 10, 0}));
  EXPECT_EQ(std::u16string(values[3].Value.lpszW), u"Hi");
  EXPECT_EQ(values[4].Value.l, MSGFLAG_READ | MSGFLAG_HASATTACH);
  EXPECT_EQ(std::u16string(values[5].Value.lpszW), u"ann@example.org");
  EXPECT_EQ(ticksOf(values[6].Value.ft), ticksOf(SYSTEMTIME{2005, 3, 0, 15, 9, 0, 0, 0}));
  EXPECT_EQ(ticksOf(values[7].Value.ft), ticksOf(SYSTEMTIME{2005, 3, 0, 15, 10, 0, 0, 0}));
  EXPECT_EQ(values[8].ulPropTag, where);
  EXPECT_EQ(std::u16string(values[8].Value.lpszW), u"Room 1");
}

TEST_F(MessagingMessageTest, marksWhatAMessageLacks) {
  const PropertyTag where = namedTag(u"PR_SPLUS_WHERE", MAPI_CREATE);
  Values values;
  EXPECT_EQ(bare_->GetProps(Tags{PR_SUBJECT_W, PR_MESSAGE_DELIVERY_TIME, PR_START_DATE, where, PR_BODY_W,
                                 0x12340003, 0x0037001E},
                            MAPI_UNICODE, values.count(), values.out()),
            MAPI_W_ERRORS_RETURNED);
  ASSERT_EQ(values.size(), 7u);
  EXPECT_EQ(std::u16string(values[0].Value.lpszW), u"");
  for (std::size_t i = 1; i < 7; ++i) {
    EXPECT_EQ(values[i].ulPropTag & 0xFFFF, PT_ERROR) << i;
    EXPECT_EQ(values[i].Value.err, MAPI_E_NOT_FOUND) << i;
  }
  EXPECT_EQ(values[5].ulPropTag, 0x1234000Au);
}

TEST_F(MessagingMessageTest, givesAllPropertiesThatThereAre) {
  namedTag(u"PR_SPLUS_WHERE", MAPI_CREATE);
  Values all;
  EXPECT_EQ(full_->GetProps(nullptr, MAPI_UNICODE, all.count(), all.out()), S_OK);
  EXPECT_EQ(all.size(), 10u);
  Values few;
  EXPECT_EQ(bare_->GetProps(nullptr, MAPI_UNICODE, few.count(), few.out()), S_OK);
  EXPECT_EQ(few.size(), 6u);
  // A body is for a stream.
  Values body;
  EXPECT_EQ(full_->GetProps(Tags{PR_BODY_W}, 0, body.count(), body.out()), MAPI_W_ERRORS_RETURNED);
  EXPECT_EQ(body[0].Value.err, MAPI_E_NOT_ENOUGH_MEMORY);
}

TEST_F(MessagingMessageTest, refusesArraysThatAreNone) {
  ULONG count = kPoison;
  SPropValue* values = poison<SPropValue>();
  ULONG many[] = {0xFFFFFFFF, PR_ENTRYID};
  EXPECT_EQ(full_->GetProps(reinterpret_cast<SPropTagArray*>(many), 0, &count, &values), E_INVALIDARG);
  EXPECT_EQ(values, nullptr);
  EXPECT_EQ(full_->GetProps(nullptr, 0, nullptr, &values), E_INVALIDARG);
  EXPECT_EQ(full_->GetProps(nullptr, 0, &count, nullptr), E_INVALIDARG);
  SPropValue noText{PR_SUBJECT_W, 0, {}};
  noText.Value.lpszW = nullptr;
  SPropValue both[] = {numberValue(PR_MESSAGE_FLAGS, 0), noText};
  EXPECT_EQ(full_->SetProps(2, both, nullptr), E_INVALIDARG);
  EXPECT_EQ(full_->SetProps(1, nullptr, nullptr), E_INVALIDARG);
  EXPECT_EQ(full_->SetProps(0xFFFFFFFF, both, nullptr), E_INVALIDARG);
  EXPECT_EQ(number(*full_.get(), PR_MESSAGE_FLAGS) & MSGFLAG_READ, MSGFLAG_READ);
  EXPECT_EQ(full_->DeleteProps(nullptr, nullptr), E_INVALIDARG);
}

TEST_F(MessagingMessageTest, hasWhatIsSetAtOnce) {
  std::u16string subject = u"Новое";
  std::u16string sender = u"eve@example.org";
  const FILETIME time = fileTimeOf(ticksOf(SYSTEMTIME{2006, 1, 0, 2, 3, 4, 5, 6}).value());
  SPropValue values[] = {numberValue(PR_MESSAGE_FLAGS, 1), textValue(PR_SUBJECT_W, subject),
                         timeValue(PR_MESSAGE_DELIVERY_TIME, time),
                         textValue(PR_SENDER_EMAIL_ADDRESS_W, sender)};
  SPropProblemArray* problems = poison<SPropProblemArray>();
  EXPECT_EQ(bare_->SetProps(4, values, &problems), S_OK);
  EXPECT_EQ(problems, nullptr);
  auto again = message(PR_CE_IPM_INBOX_ENTRYID, 1);
  EXPECT_EQ(text(*again.get(), PR_SUBJECT_W), subject);
  EXPECT_EQ(text(*again.get(), PR_SENDER_EMAIL_ADDRESS_W), sender);
  EXPECT_EQ(number(*again.get(), PR_MESSAGE_FLAGS), MSGFLAG_READ);
  EXPECT_EQ(bare_->SaveChanges(0), S_OK);
  const auto stored = device().messaging.mailbox().find(MailFolder::Inbox, 21);
  EXPECT_EQ(stored->delivered, ticksOf(time));
}

TEST_F(MessagingMessageTest, skipsValuesWithoutATag) {
  SPropValue values[] = {numberValue(0, 0x55), numberValue(PR_MESSAGE_FLAGS, 0), numberValue(0, 0x55)};
  EXPECT_EQ(full_->SetProps(3, values, nullptr), S_OK);
  EXPECT_EQ(text(*full_.get(), PR_SUBJECT_W), u"Hi");
  EXPECT_EQ(number(*full_.get(), PR_MESSAGE_FLAGS), MSGFLAG_HASATTACH);
}

TEST_F(MessagingMessageTest, saysThatItDidNotTakeWhatItComputesOrDoesNotKnow) {
  const FILETIME tooLate{0, 0x7FFFFFFF};
  std::u16string name = u"x";
  for (const SPropValue& value :
       {numberValue(PR_MESSAGE_SIZE, 1), numberValue(0x00170003, 2), timeValue(PR_START_DATE, tooLate),
        timeValue(PR_MESSAGE_DELIVERY_TIME, {0, 0x80000000}), textValue(0x8ABC001F, name)}) {
    SPropValue values[] = {value, textValue(PR_SUBJECT_W, name)};
    EXPECT_EQ(full_->SetProps(2, values, nullptr), MAPI_W_ERRORS_RETURNED) << std::hex << value.ulPropTag;
    EXPECT_EQ(text(*full_.get(), PR_SUBJECT_W), name);
  }
  EXPECT_EQ(device().messaging.mailbox().find(MailFolder::Inbox, 20)->start,
            ticksOf(SYSTEMTIME{2005, 3, 0, 15, 9, 0, 0, 0}));
}

TEST_F(MessagingMessageTest, losesWhatIsDeleted) {
  const PropertyTag where = namedTag(u"PR_SPLUS_WHERE", MAPI_CREATE);
  EXPECT_EQ(full_->DeleteProps(Tags{where, PR_START_DATE, PR_SUBJECT_W, PR_BODY_W, PR_MESSAGE_DELIVERY_TIME},
                               nullptr),
            S_OK);
  EXPECT_EQ(text(*full_.get(), where), u"(none)");
  EXPECT_EQ(text(*full_.get(), PR_SUBJECT_W), u"");
  const auto stored = device().messaging.mailbox().find(MailFolder::Inbox, 20);
  EXPECT_FALSE(stored->start);
  EXPECT_FALSE(stored->delivered);
  EXPECT_FALSE(stored->body);
  EXPECT_EQ(full_->DeleteProps(Tags{PR_ENTRYID}, nullptr), MAPI_W_ERRORS_RETURNED);
}

TEST_F(MessagingMessageTest, isNotChangedWhenItWasOpenedForReading) {
  auto reading = message(PR_CE_IPM_INBOX_ENTRYID, 0);
  SPropValue value = numberValue(PR_MESSAGE_FLAGS, 0);
  EXPECT_EQ(reading->SetProps(1, &value, nullptr), MAPI_E_NO_ACCESS);
  EXPECT_EQ(reading->DeleteProps(Tags{PR_SUBJECT_W}, nullptr), MAPI_E_NO_ACCESS);
  ADRLIST none{0, {}};
  EXPECT_EQ(reading->ModifyRecipients(0, &none), MAPI_E_NO_ACCESS);
  ULONG number = kPoison;
  IAttach* attachment = poison<IAttach>();
  EXPECT_EQ(reading->CreateAttach(nullptr, 0, &number, &attachment), MAPI_E_NO_ACCESS);
  EXPECT_EQ(attachment, nullptr);
  EXPECT_EQ(reading->OpenAttach(0, nullptr, MAPI_MODIFY, &attachment), MAPI_E_NO_ACCESS);
  EXPECT_EQ(reading->DeleteAttach(0, 0, nullptr, 0), MAPI_E_NO_ACCESS);
  IUnknown* body = poison<IUnknown>();
  EXPECT_EQ(reading->OpenProperty(PR_BODY_W, nullptr, 0, MAPI_MODIFY, &body), MAPI_E_NO_ACCESS);
  EXPECT_EQ(body, nullptr);
  auto best = message(PR_CE_IPM_INBOX_ENTRYID, 0, MAPI_BEST_ACCESS);
  EXPECT_EQ(best->SetProps(1, &value, nullptr), S_OK);
}

TEST_F(MessagingMessageTest, knowsNamesAcrossSessions) {
  EXPECT_EQ(namedTag(u"PR_SPLUS_WHERE", 0), 0u);
  const PropertyTag where = namedTag(u"PR_SPLUS_WHERE", MAPI_CREATE);
  EXPECT_EQ(where, 0x8000001Fu);
  EXPECT_EQ(namedTag(u"PR_OTHER", MAPI_CREATE), 0x8001001Fu);
  EXPECT_EQ(namedTag(u"PR_SPLUS_WHERE", 0), where);
  std::u16string room = u"Room 2";
  SPropValue value = textValue(where, room);
  EXPECT_EQ(bare_->SetProps(1, &value, nullptr), S_OK);
  EXPECT_EQ(text(*bare_.get(), where), room);
  EXPECT_EQ(text(*bare_.get(), 0x8001001F), u"(none)");
}

TEST_F(MessagingMessageTest, keepsNamesOutOfTheStoresOwnNumbers) {
  PropertyTag last = 0;
  for (int i = 0; i < 257; ++i) {
    last = namedTag(u"Name" + std::u16string(1, static_cast<char16_t>(0x4E00 + i)), MAPI_CREATE);
    EXPECT_TRUE(last >> 16 < 0x8100 || last >> 16 >= 0x8200);
  }
  EXPECT_EQ(last, 0x8200001Fu);
}

TEST_F(MessagingMessageTest, refusesNamesThatAreNone) {
  auto opened = store();
  GUID set = PS_MAPI;
  MAPINAMEID nothing{&set, MNID_STRING, {}};
  nothing.Kind.lpwstrName = nullptr;
  MAPINAMEID noSet{nullptr, MNID_ID, {}};
  MAPINAMEID wild{&set, 9, {}};
  for (MAPINAMEID* name : std::initializer_list<MAPINAMEID*>{nullptr, &nothing, &noSet, &wild}) {
    SPropTagArray* tags = poison<SPropTagArray>();
    EXPECT_EQ(opened->GetIDsFromNames(1, &name, MAPI_CREATE, &tags), E_INVALIDARG);
    EXPECT_EQ(tags, nullptr);
  }
  SPropTagArray* tags = poison<SPropTagArray>();
  EXPECT_EQ(opened->GetIDsFromNames(5, nullptr, MAPI_CREATE, &tags), E_INVALIDARG);
  MAPINAMEID* none = nullptr;
  EXPECT_EQ(opened->GetIDsFromNames(0, &none, MAPI_CREATE, &tags), E_INVALIDARG);
}

TEST_F(MessagingMessageTest, hasItsBodyInAStream) {
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

TEST_F(MessagingMessageTest, keepsABodyAsTheBytesThatWereWritten) {
  const std::string bytes("a\0b\0\0\0tail\0", 11);
  for (IMessage* each : {full_.get(), bare_.get()}) {
    // What was there before goes.
    auto writing = stream(*each, PR_BODY_W, MAPI_CREATE | MAPI_MODIFY);
    write(*writing.get(), bytes.substr(0, 3));
    write(*writing.get(), bytes.substr(3));
    EXPECT_EQ(readAll(*stream(*each, PR_BODY_W, 0).get()), bytes);
  }
}

TEST_F(MessagingMessageTest, changesABodyInPlace) {
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

TEST_F(MessagingMessageTest, doesNotLetAStreamFillTheDevice) {
  auto body = stream(*full_.get(), PR_BODY_W, MAPI_MODIFY);
  EXPECT_EQ(body->Seek(std::int64_t{1} << 30, STREAM_SEEK_SET, nullptr), S_OK);
  ULONG moved = kPoison;
  EXPECT_EQ(body->Write("x", 1, &moved), E_OUTOFMEMORY);
  EXPECT_EQ(moved, 0u);
}

TEST_F(MessagingMessageTest, writesNothingThroughAStreamOfADeletedMessage) {
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

TEST_F(MessagingMessageTest, listsItsRecipients) {
  EXPECT_EQ(recipients(*full_.get()),
            (List{{MAPI_TO, u"bo@example.org"}, {MAPI_TO, u"cy@example.org"}, {MAPI_CC, u"di@example.org"}}));
  EXPECT_TRUE(recipients(*bare_.get()).empty());
}

TEST_F(MessagingMessageTest, showsRecipientsWithoutColumnsBeingSet) {
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

TEST_F(MessagingMessageTest, changesItsRecipientsAtOnce) {
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

TEST_F(MessagingMessageTest, refusesRecipientsWhole) {
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

TEST_F(MessagingMessageTest, takesAnAddressOfAnyLength) {
  std::u16string address(100000, u'a');
  Recipients list;
  list.add({numberValue(PR_RECIPIENT_TYPE, MAPI_TO), textValue(PR_EMAIL_ADDRESS_W, address)});
  EXPECT_EQ(bare_->ModifyRecipients(MODRECIP_ADD, list), S_OK);
  EXPECT_EQ(recipients(*bare_.get()), (List{{MAPI_TO, address}}));
}

TEST_F(MessagingMessageTest, listsAndOpensItsAttachments) {
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

TEST_F(MessagingMessageTest, getsAttachmentsThatStayWithoutASave) {
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

TEST_F(MessagingMessageTest, losesAttachmentsThatAreDeleted) {
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

TEST_F(MessagingMessageTest, isUnsentInDrafts) {
  load(R"({"mail": {"Drafts": [{"Id": 5}]}})");
  EXPECT_EQ(number(*message(PR_CE_IPM_DRAFTS_ENTRYID).get(), PR_MESSAGE_FLAGS), MSGFLAG_UNSENT);
}

}  // namespace
}  // namespace emulator::test
