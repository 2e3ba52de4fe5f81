// Messages from records.
#include <gtest/gtest.h>

#include "tests/mail/mail_test.h"

namespace qorv {
namespace {

using namespace test;
using Json = nlohmann::json;
using Names = std::vector<std::string>;

class MessageWrite : public MailTest {
 protected:
  Bytes change(DWORD id, const Bytes& record) { return reply(request(3, kMail).u32(id).append(record)); }
  /// The only message of a folder.
  Json only(const std::string& name) {
    const Json messages = folder(name);
    EXPECT_EQ(messages.size(), 1u);
    return messages.empty() ? Json() : messages[0];
  }
};

const Bytes kMonday = Bytes().time(2005, 3, 0, 14, 13, 35, 10, 250);

/// Every field that the device keeps, and the two that it doesn't.
Bytes fullRecord(unsigned flags = kInbox) {
  return mailRecord(10, flags)
      .append(mailText(kSender, u"ann@x"))
      .append(mailText(kTo, u"bo@y; cy@z"))
      .append(Bytes().u32(10).u32(0xFFFFFFFF))
      .append(mailText(kCc, u"di@y"))
      .append(mailText(13, u"dropped"))
      .append(mailText(kBcc, u"ed@y;flo@y"))
      .append(mailText(kSubject, u"Hi"))
      .append(Bytes().u32(kDelivered).append(kMonday))
      .append(mailText(kBody, u"Yo"))
      .append(mailText(kAttachments, u"0 "));
}

TEST_F(MessageWrite, storesEveryField) {
  const DWORD id = add(fullRecord(kInbox | kRead));
  const Json message = only("Inbox");
  EXPECT_EQ(message["Id"], id);
  EXPECT_EQ(message["Sender"], "ann@x");
  EXPECT_EQ(message["To"], Json::array({"bo@y", "cy@z"}));
  EXPECT_EQ(message["Cc"], Json::array({"di@y"}));
  EXPECT_EQ(message["Bcc"], Json::array({"ed@y", "flo@y"}));
  EXPECT_EQ(message["Subject"], "Hi");
  EXPECT_EQ(message["Delivered"], "2005-03-14T13:35:10.250Z");
  EXPECT_EQ(message["Read"], true);
  EXPECT_EQ(message["Body"], "Yo");
  EXPECT_EQ(message["Attachments"], Json::array());
}

TEST_F(MessageWrite, comesBackAsItWasSent) {
  const MailRecord record = read(add(fullRecord()));
  EXPECT_EQ(record.tags(), (std::vector<unsigned>{6, 5, 11, 1, 14, 7, 2, 3, 4}));
  EXPECT_EQ(*record.find(kDelivered), Bytes().time(2005, 3, 1, 14, 13, 35, 10, 250));
  EXPECT_EQ(record.text(kTo), u"bo@y;cy@z");
  EXPECT_EQ(record.text(kBody), u"Yo");
  EXPECT_EQ(record.number(kFlags), 0xFEu);
}

TEST_F(MessageWrite, bytesOfADraftAndOfItsRecord) {
  // Add item, mail, reference 7; one field, a word that nobody uses, Drafts and read; tag 5, 4 bytes, "Hi".
  const Bytes answer = reply(hex("02 04 07000000  01000000 00000000 00005000  05000000 04000000 4800 6900"));
  EXPECT_EQ(answer.slice(0, 2), hex("01 00"));
  const DWORD id = answer.dwordAt(2);
  EXPECT_EQ(answer, Bytes().u8(1).u8(0).u32(id).u32(7).zeros(10));
  // Four fields: the subject with its terminator, flags, a sender that is a terminator alone, no place.
  EXPECT_EQ(
      reply(hex("07 04").u32(id)),
      hex("01 00").u32(id).u8(4).append(hex("05000000 06000000 4800 6900 0000"
                                            "0B000000 00005000  01000000 02000000 0000  0E000000 00000000")));
}

TEST_F(MessageWrite, callsInItsFixedOrder) {
  observeCalls();
  add(fullRecord(kInbox | kRead));
  const Names all = callNames();
  Names names(std::ranges::find(all, "IMAPIFolder.CreateMessage"), all.end());
  names.erase(std::ranges::find(names, "IRAPIStream.Write"), names.end());
  std::erase(names, "GetProcAddressW");
  EXPECT_EQ(names, (Names{"IMAPIFolder.CreateMessage", "SystemTimeToFileTime", "GetTimeZoneInformation",
                          "FileTimeToSystemTime", "IMessage.OpenProperty", "IStream.Write", "IStream.Release",
                          "LocalAlloc", "IMessage.ModifyRecipients", "LocalFree", "IMessage.SetProps",
                          "IMessage.SaveChanges", "IMessage.GetProps", "MAPIFreeBuffer", "wcstol",
                          "IMessage.Release"}));
  EXPECT_EQ(calls("IMAPIFolder.CreateMessage")[0]["args"], Json::array({nullptr, 0}));
  EXPECT_EQ(calls("IMessage.OpenProperty")[0]["args"], Json::array({0x1000001F, nullptr, 0, 3}));
  EXPECT_EQ(calls("IStream.Write")[0]["args"], Json::parse(R"([{"bytes": 6}, 6])"));
  EXPECT_EQ(calls("IMessage.SaveChanges")[0]["args"], Json::array({0}));
  EXPECT_EQ(calls("IMessage.GetProps")[0]["args"][0]["aulPropTag"], Json::array({0x0FFF0102}));

  const Json set = calls("IMessage.SetProps")[0]["args"];
  EXPECT_EQ(set[0], 4);
  std::vector<unsigned> tags;
  for (const auto& value : set[1]) tags.push_back(value["ulPropTag"]);
  EXPECT_EQ(tags, (std::vector<unsigned>{0x0E070003, 0x0037001F, 0x0E060040, 0x0C1F001F}));
  EXPECT_EQ(set[1][0]["Value"], 1) << "read";
}

TEST_F(MessageWrite, recipientsGoInOneListInTheirOrder) {
  observeCalls();
  add(fullRecord());
  const Json list = calls("IMessage.ModifyRecipients")[0]["args"];
  EXPECT_EQ(list[0], 2);
  std::vector<std::string> entries;
  for (const auto& entry : list[1]["aEntries"]) {
    const Json& values = entry["rgPropVals"];
    ASSERT_EQ(entry["cValues"], 3);
    EXPECT_EQ(values[0]["ulPropTag"], 0x0C150003);
    EXPECT_EQ(values[1]["ulPropTag"], 0x3002001F);
    EXPECT_EQ(values[2]["ulPropTag"], 0x3003001F);
    entries.push_back(values[0]["Value"].dump() + values[1]["Value"].get<std::string>() + " " +
                      values[2]["Value"].get<std::string>());
  }
  EXPECT_EQ(entries, (Names{"1SMTP bo@y", "1SMTP cy@z", "2SMTP di@y", "3SMTP ed@y", "3SMTP flo@y"}));
}

struct Target {
  unsigned flags;
  const char* folder;
};

class TargetFolder : public MessageWrite, public testing::WithParamInterface<Target> {};

TEST_P(TargetFolder, isChosenByTheFlags) {
  add(mailRecord(1, GetParam().flags).append(mailText(kSubject, u"x")));
  EXPECT_EQ(folder(GetParam().folder).size(), 1u);
}

INSTANTIATE_TEST_SUITE_P(Flags, TargetFolder,
                         testing::Values(Target{0xFE, "Inbox"}, Target{0xFD, "Inbox"},
                                         Target{0xFC, "Sent Items"}, Target{0x400000, "Drafts"},
                                         Target{0x4000FC, "Drafts"}, Target{0x1000FC, "Sent Items"},
                                         Target{0, "Inbox"}, Target{0x1FC, "Sent Items"},
                                         Target{0xFC00, "Inbox"}));

TEST_F(MessageWrite, theLaterOfTheTwoDatesHolds) {
  const Bytes other = Bytes().time(2006, 1, 0, 2, 3, 4, 5, 6);
  add(mailRecord(2)
          .append(Bytes().u32(kDelivered).append(kMonday))
          .append(Bytes().u32(kDeliveredToo).append(other)));
  EXPECT_EQ(only("Inbox")["Delivered"], "2006-01-02T03:04:05.006Z");
  add(mailRecord(2, kSent)
          .append(Bytes().u32(kDeliveredToo).append(other))
          .append(Bytes().u32(kDelivered).append(kMonday)));
  EXPECT_EQ(only("Sent Items")["Delivered"], "2005-03-14T13:35:10.250Z");
}

TEST_F(MessageWrite, theDateIsLocalToTheDevice) {
  load(R"({"time_zone": {"Bias": -60, "StandardBias": 0, "DaylightBias": -60,
      "StandardDate": {"Year": 0, "Month": 10, "DayOfWeek": 0, "Day": 5, "Hour": 3, "Minute": 0},
      "DaylightDate": {"Year": 0, "Month": 3, "DayOfWeek": 0, "Day": 5, "Hour": 2, "Minute": 0}}})");
  add(mailRecord(1).append(Bytes().u32(kDelivered).time(2005, 7, 0, 1, 0, 30)));
  EXPECT_EQ(only("Inbox")["Delivered"], "2005-06-30T22:30:00.000Z");
}

TEST_F(MessageWrite, withoutAValidDateTheSlotStaysZeroed) {
  observeCalls();
  add(mailRecord(1).append(Bytes().u32(kDelivered).time(2005, 2, 0, 30)));
  EXPECT_EQ(only("Inbox")["Delivered"], nullptr);
  const Json values = calls("IMessage.SetProps")[0]["args"][1];
  for (const int slot : {1, 2, 3}) EXPECT_EQ(values[slot]["ulPropTag"], 0) << slot;
  EXPECT_EQ(values[0]["ulPropTag"], 0x0E070003);
}

TEST_F(MessageWrite, aRecordWithoutFieldsMakesAnEmptyMessage) {
  observeCalls();
  add(mailRecord(0, kDraft));
  EXPECT_TRUE(calls("IMessage.OpenProperty").empty());
  EXPECT_TRUE(calls("IMessage.ModifyRecipients").empty());
  const Json message = only("Drafts");
  EXPECT_EQ(message["Subject"], "");
  EXPECT_EQ(message["Body"], "");
}

TEST_F(MessageWrite, changesOnlyWhatTheRecordHas) {
  const DWORD id = add(fullRecord());
  EXPECT_EQ(change(id, mailRecord(1, kInbox | kRead).append(mailText(kSubject, u"New"))),
            Bytes().u8(1).u8(0).u32(id).u32(id).zeros(10));
  const Json message = only("Inbox");
  EXPECT_EQ(message["Subject"], "New");
  EXPECT_EQ(message["Read"], true);
  EXPECT_EQ(message["Sender"], "ann@x");
  EXPECT_EQ(message["Body"], "Yo");
  EXPECT_EQ(message["Delivered"], "2005-03-14T13:35:10.250Z");
  EXPECT_EQ(message["To"], Json::array({"bo@y", "cy@z"}));
}

TEST_F(MessageWrite, aShorterBodyReplacesALongerOne) {
  const DWORD id = add(mailRecord(1).append(mailText(kBody, u"a long body")));
  change(id, mailRecord(1).append(mailText(kBody, u"b")));
  EXPECT_EQ(read(id).text(kBody), u"b");
}

TEST_F(MessageWrite, aChangeLeavesTheMessageWhereItLies) {
  load(R"({"mail": {"Outbox": [{"Id": 40, "Subject": "old"}]}})");
  observeCalls();
  EXPECT_EQ(change(40, mailRecord(1, kDraft).append(mailText(kSubject, u"new"))).slice(0, 6),
            hex("01 00 28000000"));
  EXPECT_EQ(only("Outbox")["Subject"], "new");
  EXPECT_EQ(folder("Drafts"), Json::array());
  EXPECT_EQ(calls("IMAPIFolder.OpenEntry")[0]["args"], Json::parse(R"([20, {"bytes": 20}, null, 1])"));
}

TEST_F(MessageWrite, aChangeOfAnUnknownMessageFails) {
  observeCalls();
  EXPECT_EQ(change(99, fullRecord()), hex("00 00 63000000 63000000 00000000000000000000"));
  EXPECT_EQ(calls("IMAPIFolder.OpenEntry")[0]["args"], Json::parse("[20, null, null, 1]"));
  EXPECT_TRUE(calls("IMessage").empty());
}

TEST_F(MessageWrite, aChangeOfNumberZeroMakesAMessage) {
  const Bytes answer = change(0, mailRecord(1).append(mailText(kSubject, u"x")));
  EXPECT_EQ(answer.slice(0, 2), hex("01 00"));
  EXPECT_EQ(answer.dwordAt(2), only("Inbox")["Id"].get<DWORD>());
}

TEST_F(MessageWrite, aMessageThatCannotBeMadeIsResultAndStatusZero) {
  fault("IMAPIFolder.CreateMessage=0x80004005");
  EXPECT_EQ(reply(request(2, kMail).u32(7).append(fullRecord())),
            hex("00 00 00000000 07000000 00000000000000000000"));
}

TEST_F(MessageWrite, bccCountsOnlyBesideTo) {
  observeCalls();
  add(mailRecord(1).append(mailText(kBcc, u"a;b")));
  EXPECT_TRUE(calls("IMessage.ModifyRecipients").empty());
  EXPECT_EQ(only("Inbox")["Bcc"], Json::array());
  add(mailRecord(2, kDraft).append(mailText(kBcc, u"a;b")).append(mailText(kCc, u"c")));
  EXPECT_EQ(only("Drafts")["Bcc"], Json::array());
  EXPECT_EQ(only("Drafts")["Cc"], Json::array({"c"}));
}

TEST_F(MessageWrite, commasAndTrailingBlanksBelongToAnAddress) {
  observeCalls();
  add(mailRecord(1).append(mailText(kTo, u"alpha;  beta ;ga,mma")));
  EXPECT_EQ(only("Inbox")["To"], Json::array({"alpha", "beta ", "ga,mma"}));
}

TEST_F(MessageWrite, recipientTextsWithoutAddressesAddNone) {
  observeCalls();
  add(mailRecord(3).append(mailText(kTo, u" ; ;")).append(mailText(kCc, u"")).append(mailText(kBcc, u";")));
  EXPECT_TRUE(calls("IMessage.ModifyRecipients").empty());
}

TEST_F(MessageWrite, aRecipientTextOf100000CharactersIsStored) {
  std::u16string to;
  for (int i = 0; i < 10000; ++i) to += u"abcdefgh@;";
  add(mailRecord(1).append(mailText(kTo, to)));
  EXPECT_EQ(only("Inbox")["To"].size(), 10000u);
  add(mailRecord(1, kDraft).append(mailText(kTo, std::u16string(100000, u'x'))));
  EXPECT_EQ(only("Drafts")["To"], Json::array({std::string(100000, 'x')}));
  add(mailRecord(1, kSent).append(mailText(kTo, std::u16string(100000, u';'))));
  EXPECT_EQ(only("Sent Items")["To"], Json::array());
}

TEST_F(MessageWrite, anUnknownTagHasNoValue) {
  // 12 is read as a tag without a value, and so is the word behind it, 99; then the subject's tag comes.
  add(mailRecord(3).append(Bytes().u32(12).u32(99)).append(mailText(kSubject, u"x")));
  EXPECT_EQ(only("Inbox")["Subject"], "x");
  // 11 is not accepted either: its value, 5, is taken for the tag of the subject.
  add(mailRecord(2, kDraft).append(Bytes().u32(kFlags).u32(kSubject).text(u"y")));
  EXPECT_EQ(only("Drafts")["Subject"], "y");
}

TEST_F(MessageWrite, whateverTheCallsAnswerTheMessageExists) {
  for (const char* call :
       {"IMessage.SetProps", "IMessage.SaveChanges", "IMessage.ModifyRecipients", "IMessage.OpenProperty",
        "IStream.Write", "LocalAlloc", "GetTimeZoneInformation", "SystemTimeToFileTime"}) {
    fault(std::string(call) + "=0x80004005");
    const Bytes answer = reply(request(2, kMail).u32(7).append(fullRecord()));
    EXPECT_EQ(answer.slice(0, 2), hex("01 00")) << call;
    EXPECT_NE(answer.dwordAt(2), 0u) << call;
    clearFaults();
  }
  EXPECT_EQ(folder("Inbox").size(), 8u);
}

TEST_F(MessageWrite, withoutItsIdentifierANewMessageHasNoNumber) {
  fault("IMessage.GetProps=0x80004005");
  EXPECT_EQ(reply(request(2, kMail).u32(7).append(fullRecord())),
            hex("01 00 00000000 07000000 00000000000000000000"));
}

TEST_F(MessageWrite, everyRecordThatEndsTooEarlyChangesNothing) {
  const Bytes whole = request(2, kMail).u32(7).append(fullRecord());
  std::vector<Bytes> requests;
  for (std::size_t size = 2; size < whole.size(); ++size) requests.push_back(whole.slice(0, size));
  for (const Bytes& answer : session(requests)) {
    ASSERT_EQ(answer.size(), 20u);
    EXPECT_EQ(answer.slice(0, 2), hex("00 00"));
  }
  EXPECT_EQ(folder("Inbox"), Json::array());
}

TEST_F(MessageWrite, entriesOfABatchDoNotInheritFromEachOther) {
  const Bytes list = mailText(kAttachments, u"1 4 \\x.y1 z");
  load(R"({"files": [{"path": "\\x.y", "data": "aGk="}]})");
  const Bytes answer = reply(request(15, kMail)
                                 .u32(3)
                                 .u8(2)
                                 .u8(4)
                                 .u32(1)
                                 .append(mailRecord(3, kDraft)
                                             .append(mailText(kSubject, u"first"))
                                             .append(mailText(kTo, u"a"))
                                             .append(list))
                                 .u8(3)
                                 .u8(4)
                                 .u32(4711)
                                 .append(mailRecord(0))
                                 .u8(2)
                                 .u8(4)
                                 .u32(3)
                                 .append(mailRecord(1).append(mailText(kSender, u"s"))));
  ASSERT_EQ(answer.size(), 30u);
  EXPECT_EQ(answer.slice(0, 2), hex("01 00"));
  EXPECT_EQ(answer.dwordAt(6), 1u);
  EXPECT_EQ(answer.slice(10, 10), hex("00 00 67120000 67120000"));
  EXPECT_EQ(answer.slice(20, 2), hex("01 00"));
  EXPECT_EQ(answer.dwordAt(26), 3u);
  EXPECT_EQ(only("Drafts")["Attachments"].size(), 1u);
  const Json second = only("Inbox");
  EXPECT_EQ(second["Subject"], "");
  EXPECT_EQ(second["To"], Json::array());
  EXPECT_EQ(second["Attachments"], Json::array());
}

TEST_F(MessageWrite, aBatchEndsAtAnEntryOfAnotherType) {
  for (const unsigned type : {0u, 1u, 5u, 6u}) {
    const Bytes answer = reply(request(15, kMail)
                                   .u32(2)
                                   .u8(2)
                                   .u8(4)
                                   .u32(1)
                                   .append(mailRecord(0))
                                   .u8(2)
                                   .u8(type)
                                   .u32(2)
                                   .append(mailRecord(0)));
    ASSERT_EQ(answer.size(), 12u) << type;
    EXPECT_EQ(answer.slice(10, 2), hex("00 03")) << type;
  }
  EXPECT_EQ(folder("Inbox").size(), 4u);
}

TEST_F(MessageWrite, aBatchOfFewerEntriesThanItsCountMakesThoseThatAreWhole) {
  const Bytes entry = Bytes().u8(2).u8(4).u32(1).append(mailRecord(1).append(mailText(kSubject, u"x")));
  const Bytes batch = request(15, kMail).u32(1000).append(entry).append(entry);
  EXPECT_EQ(reply(batch).size(), 20u);
  EXPECT_EQ(reply(batch.slice(0, batch.size() - 1)).size(), 10u);
  EXPECT_EQ(folder("Inbox").size(), 3u);
}

TEST_F(MessageWrite, aRefusedEntryOfABatchLeavesItsStatusToItself) {
  fault("IMsgStore.OpenEntry#2=0x80004005*1");  // Drafts
  const Bytes answer = reply(request(15, kMail)
                                 .u32(2)
                                 .u8(2)
                                 .u8(4)
                                 .u32(1)
                                 .append(mailRecord(0, kDraft))
                                 .u8(2)
                                 .u8(4)
                                 .u32(2)
                                 .append(mailRecord(0)));
  EXPECT_EQ(answer.slice(0, 10), hex("00 03 00000000 01000000"));
  EXPECT_EQ(answer.slice(10, 2), hex("01 00"));
}

}  // namespace
}  // namespace qorv
