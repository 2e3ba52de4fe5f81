// Messages: properties and names.
#include "tests/emulator/messaging_message_test.h"

namespace emulator::test {
namespace {

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

TEST_F(MessagingMessageTest, isUnsentInDrafts) {
  load(R"({"mail": {"Drafts": [{"Id": 5}]}})");
  EXPECT_EQ(number(*message(PR_CE_IPM_DRAFTS_ENTRYID).get(), PR_MESSAGE_FLAGS), MSGFLAG_UNSENT);
}

}  // namespace
}  // namespace emulator::test
