// Messages as records.
#include <gtest/gtest.h>

#include "tests/mail/mail_test.h"

namespace qorv {
namespace {

using namespace test;
using Json = nlohmann::json;
using Names = std::vector<std::string>;

/// Everything that a message can have.
constexpr const char* kFull = R"({"mail": {"Inbox": [{"Id": 20, "Sender": "ann@x", "To": ["bo@y", "cy@z"],
    "Cc": ["di@y"], "Bcc": ["ed@y", "flo@y", "gus@y"], "Subject": "Hi", "Delivered": "2005-03-14T13:35:10.250Z",
    "Read": true, "Body": "Yo", "Where": "Room", "Start": "2005-03-15T08:00:00.000Z",
    "End": "2005-03-15T09:30:00.000Z", "Attachments": [{"Name": "a.txt", "Data": "aGk="}]}]}})";

class MessageRead : public MailTest {
 protected:
  /// A message of one folder with these further properties.
  void put(const std::string& folder, Json message, const std::string& settings = "{}") {
    message["Id"] = 20;
    Json snapshot = Json::parse(settings);
    snapshot["mail"][folder] = Json::array({message});
    load(snapshot.dump());
  }
};

TEST_F(MessageRead, sendsItsFieldsInTheirOrder) {
  load(kFull);
  const MailRecord record = read(20);
  EXPECT_EQ(record.tags(), (std::vector<unsigned>{6, 5, 11, 1, 16, 17, 15, 14, 7, 2, 3, 4, 8}));
  EXPECT_EQ(record.header, hex("01 00 14000000 0D"));
  EXPECT_EQ(*record.find(kDelivered), Bytes().time(2005, 3, 1, 14, 13, 35, 10, 250));
  EXPECT_EQ(*record.find(kSubject), hex("06000000 4800 6900 0000"));
  EXPECT_EQ(record.number(kFlags), 0x1000FEu);
  EXPECT_EQ(record.text(kSender), u"ann@x");
  EXPECT_EQ(*record.find(kStart), Bytes().time(2005, 3, 2, 15, 8));
  EXPECT_EQ(*record.find(kEnd), Bytes().time(2005, 3, 2, 15, 9, 30));
  EXPECT_EQ(record.text(kPlace), u"Room");
  EXPECT_EQ(record.number(kHasPlace), 1u);
  EXPECT_EQ(record.text(kBody), u"Yo");
  EXPECT_EQ(record.text(kTo), u"bo@y;cy@z");
  EXPECT_EQ(record.text(kCc), u"di@y");
  EXPECT_EQ(record.text(kBcc), u"ed@y;flo@y;gus@y");
}

TEST_F(MessageRead, aMessageWithoutAnythingSendsWhatTheStoreReturns) {
  put("Drafts", {});
  // Seven bytes of header with four fields; 5 an empty text, which is its terminator alone; 11 the folder
  // code of a draft that was not read; 1 as 5; 14 no place.
  EXPECT_EQ(reply(request(7, kMail).u32(20)), hex("01 00 14000000 04"
                                                  "05000000 02000000 0000"
                                                  "0B000000 00004000"
                                                  "01000000 02000000 0000"
                                                  "0E000000 00000000"));
}

struct Place {
  const char* folder;
  bool isRead;
  DWORD flags;
};

class FolderCode : public MessageRead, public testing::WithParamInterface<Place> {};

TEST_P(FolderCode, tellsTheFolderAndWhetherItWasRead) {
  put(GetParam().folder, {{"Read", GetParam().isRead}});
  EXPECT_EQ(read(20).number(kFlags), GetParam().flags);
}

INSTANTIATE_TEST_SUITE_P(Folders, FolderCode,
                         testing::Values(Place{"Inbox", false, 0xFE}, Place{"Inbox", true, 0x1000FE},
                                         Place{"Outbox", false, 0xFD}, Place{"Outbox", true, 0x1000FD},
                                         Place{"Sent Items", false, 0xFC},
                                         Place{"Sent Items", true, 0x1000FC},
                                         Place{"Drafts", false, 0x400000}, Place{"Drafts", true, 0x500000}));

TEST_F(MessageRead, aFolderThatIsNotTheStoresHasNoCode) {
  put("Inbox", {{"Read", true}});
  fault("IMessage.GetProps#1=0x80004005*1");  // the one for the parent
  EXPECT_EQ(read(20).number(kFlags), 0x100000u);
}

/// 8 hours west of Greenwich, with daylight time from the first Sunday of April to the last of October.
constexpr const char* kPacific = R"({"time_zone": {"Bias": 480, "StandardBias": 0, "DaylightBias": -60,
    "StandardDate": {"Year": 0, "Month": 10, "DayOfWeek": 0, "Day": 5, "Hour": 2, "Minute": 0},
    "DaylightDate": {"Year": 0, "Month": 4, "DayOfWeek": 0, "Day": 1, "Hour": 2, "Minute": 0}}})";

TEST_F(MessageRead, timesAreLocalToTheDevice) {
  put("Inbox", {{"Delivered", "2005-03-14T03:35:10.250Z"}, {"Start", "2005-07-01T12:00:00.000Z"}}, kPacific);
  const MailRecord record = read(20);
  EXPECT_EQ(*record.find(kDelivered), Bytes().time(2005, 3, 0, 13, 19, 35, 10, 250));
  EXPECT_EQ(*record.find(kStart), Bytes().time(2005, 7, 5, 1, 5));
  EXPECT_EQ(record.find(kEnd), nullptr);
}

TEST_F(MessageRead, aZoneThatCannotBeHadLeavesUtc) {
  put("Inbox", {{"Delivered", "2005-03-14T03:35:10.250Z"}}, kPacific);
  fault("GetTimeZoneInformation=87");
  EXPECT_EQ(*read(20).find(kDelivered), Bytes().time(2005, 3, 1, 14, 3, 35, 10, 250));
  clearFaults();
  // The conversion begins with a look at the calendar; where that is refused the time stays as it is, and
  // where the last one is refused there is no time to send.
  fault("FileTimeToSystemTime#1=87*1");
  EXPECT_EQ(*read(20).find(kDelivered), Bytes().time(2005, 3, 1, 14, 3, 35, 10, 250));
  clearFaults();
  fault("FileTimeToSystemTime=87");
  EXPECT_EQ(*read(20).find(kDelivered), Bytes().zeros(16));
}

TEST_F(MessageRead, asksForItsPropertiesAtOnceAndForThePlaceByName) {
  load(kFull);
  observeCalls();
  read(20);
  const auto names = calls("IMsgStore.GetIDsFromNames");
  ASSERT_EQ(names.size(), 1u);
  EXPECT_EQ(names[0]["args"], Json::parse(R"([1, [{"Kind": "PR_SPLUS_WHERE", "ulKind": 1,
      "lpguid": "{00020328-0000-0000-C000-000000000046}"}], 2])"));
  const auto asked = calls("IMessage.GetProps");
  ASSERT_EQ(asked.size(), 2u);
  EXPECT_EQ(asked[0]["args"][0]["aulPropTag"], Json::array({0x0E090102}));
  Json tags = asked[1]["args"][0]["aulPropTag"];
  ASSERT_EQ(tags.size(), 9u);
  EXPECT_EQ(tags[8].get<unsigned>() & 0xFFFF, 0x1Fu);
  EXPECT_GE(tags[8].get<unsigned>(), 0x80000000u);
  tags.erase(8);
  EXPECT_EQ(tags, Json::array({0x0FFF0102, 0x0E080003, 0x0E060040, 0x0037001F, 0x0E070003, 0x0C1F001F,
                               0x00600040, 0x00610040}));
  EXPECT_EQ(asked[1]["args"][1], 0x80000000u);
}

TEST_F(MessageRead, withoutTheNameOnlyEightPropertiesAreAskedFor) {
  load(kFull);
  observeCalls();
  fault("IMsgStore.GetIDsFromNames=0x80040102");
  const MailRecord record = read(20);
  EXPECT_EQ(record.number(kHasPlace), 0u);
  EXPECT_EQ(record.find(kPlace), nullptr);
  EXPECT_EQ(calls("IMessage.GetProps")[1]["args"][0]["cValues"], 8);
}

TEST_F(MessageRead, aMessageWithoutAPlaceSaysSo) {
  put("Inbox", {{"Where", nullptr}});
  EXPECT_EQ(read(20).number(kHasPlace), 0u);
  put("Inbox", {{"Where", ""}});
  EXPECT_EQ(read(20).number(kHasPlace), 1u);
  EXPECT_EQ(read(20).text(kPlace), u"");
}

TEST_F(MessageRead, callsInItsFixedOrder) {
  load(kFull);
  observeCalls();
  reply(request(7, kMail).u32(20));
  const Names all = callNames();
  Names names(std::ranges::find(all, "IMsgStore.GetIDsFromNames") - 4, all.end());
  names.erase(std::ranges::find(names, "IRAPIStream.Write"), names.end());
  for (const char* calendar : {"FileTimeToSystemTime", "SystemTimeToFileTime", "CompareFileTime",
                               "GetProcAddressW", "GetTimeZoneInformation"}) {
    std::erase(names, calendar);
  }
  EXPECT_EQ(names, (Names{"IMsgStore.OpenEntry",
                          "IMessage.GetProps",
                          "MAPIFreeBuffer",  // its folder
                          "IMsgStore.GetIDsFromNames",
                          "MAPIFreeBuffer",  // the place's tag
                          "IMessage.GetProps",
                          "MAPIFreeBuffer",  // properties
                          "IMessage.OpenProperty",
                          "IStream.Stat",
                          "IStream.Read",
                          "IStream.Release",  // body
                          "IMessage.GetRecipientTable",
                          "IMAPITable.QueryRows",
                          "LocalAlloc",
                          "LocalAlloc",
                          "LocalAlloc",
                          "FreeProws",
                          "LocalFree",
                          "LocalFree",
                          "LocalFree",
                          "IMAPITable.Release",
                          "IMessage.GetAttachmentTable",
                          "IMAPITable.QueryRows",  // attachments
                          "IMessage.OpenAttach",
                          "IAttach.OpenProperty",
                          "IStream.Stat",
                          "IStream.Seek",
                          "IStream.Read",
                          "GetTempPathW",
                          "GetTempFileNameW",
                          "CreateFileW",
                          "WriteFile",
                          "CloseHandle",
                          "IAttach.GetProps",
                          "MAPIFreeBuffer",
                          "IStream.Release",
                          "IAttach.Release",
                          "FreeProws",
                          "IMAPITable.Release",
                          "IMessage.Release"}));
  EXPECT_EQ(calls("IMsgStore.OpenEntry").back()["args"], Json::parse(R"([20, {"bytes": 20}, null, 0])"));
  EXPECT_EQ(calls("IMessage.OpenProperty")[0]["args"], Json::array({0x1000001F, nullptr, 0, 0x80000000u}));
  EXPECT_EQ(calls("IStream.Stat")[0]["args"], Json::array({1}));
  EXPECT_EQ(calls("IMessage.GetRecipientTable")[0]["args"], Json::array({0x80000000u}));
  for (const auto& call : calls("LocalAlloc")) EXPECT_EQ(call["args"], Json::array({0x40, 1000}));
  const auto queries = calls("IMAPITable.QueryRows");
  for (std::size_t i = queries.size() - 2; i < queries.size(); ++i) {
    EXPECT_EQ(queries[i]["args"], Json::array({255, 0}));
  }
}

TEST_F(MessageRead, onlyABodyWithBytesIsAField) {
  put("Inbox", {{"Body", nullptr}});
  EXPECT_EQ(read(20).find(kBody), nullptr);
  EXPECT_EQ(read(add(mailRecord(1).append(mailText(kBody, u"")))).text(kBody), u"") << "its terminator";
}

struct MissingPart {
  const char* fault;
  std::vector<unsigned> missing;
};

class WithoutPart : public MessageRead, public testing::WithParamInterface<MissingPart> {};

TEST_P(WithoutPart, sendsTheRest) {
  load(kFull);
  fault(GetParam().fault);
  std::vector<unsigned> expected{6, 5, 11, 1, 16, 17, 15, 14, 7, 2, 3, 4, 8};
  for (const unsigned tag : GetParam().missing) std::erase(expected, tag);
  EXPECT_EQ(read(20).tags(), expected);
}

INSTANTIATE_TEST_SUITE_P(Calls, WithoutPart,
                         testing::Values(MissingPart{"IMessage.GetProps#2=0x80004005",
                                                     {6, 5, 11, 1, 16, 17, 15}},
                                         MissingPart{"IMessage.OpenProperty=0x8004010F", {7}},
                                         MissingPart{"IStream.Stat#1=0x80004005*1", {7}},
                                         MissingPart{"IStream.Read#1=0x80004005*1", {7}},
                                         MissingPart{"IMessage.GetRecipientTable=0x80004005", {2, 3, 4}},
                                         MissingPart{"IMAPITable.QueryRows#2=0x80004005*1", {2, 3, 4}},
                                         MissingPart{"LocalAlloc#2=8*1", {3}},
                                         MissingPart{"IMessage.GetAttachmentTable=0x80004005", {8}},
                                         MissingPart{"IMAPITable.QueryRows#3=0x80004005*1", {8}}));

TEST_F(MessageRead, anUnknownMessageIsThePlaceholderAlone) {
  load(kFull);
  EXPECT_EQ(reply(request(7, kMail).u32(21)), hex("00 00 00000000 00"));
  fault("IMsgStore.OpenEntry#6=0x8004010F*1");
  EXPECT_EQ(reply(request(7, kMail).u32(20)), hex("00 00 00000000 00"));
}

TEST_F(MessageRead, aListGoesOnBehindAnUnknownMessage) {
  load(R"({"mail": {"Inbox": [{"Id": 1, "Subject": "a"}, {"Id": 3, "Subject": "b"}]}})");
  const Bytes answer = reply(request(16, kMail).u32(3).u32(1).u32(2).u32(3));
  EXPECT_EQ(answer.slice(0, 7), hex("01 00 03000000 04"));
  std::size_t offset = 7;
  EXPECT_EQ(parseMailRecord(answer, offset).text(kSubject), u"a");
  // What stood in the block that headers are built in: the record before.
  EXPECT_EQ(answer.slice(offset, 7), hex("01 00 01000000 00"));
  offset += 7;
  EXPECT_EQ(parseMailRecord(answer, offset).text(kSubject), u"b");
  EXPECT_EQ(offset, answer.size());
}

TEST_F(MessageRead, aListEndsWithTheBodyThatPassesTheLimit) {
  const std::string large(50000, 'x');  // 100,002 bytes each
  Json inbox = Json::array();
  for (const int id : {1, 2, 3}) inbox.push_back({{"Id", id}, {"Body", large}});
  load(Json{{"mail", {{"Inbox", inbox}}}}.dump());
  const Bytes answer = reply(request(16, kMail).u32(3).u32(1).u32(2).u32(3));
  EXPECT_EQ(answer.slice(0, 6), hex("01 00 01000000"));
  std::size_t offset = 7;
  EXPECT_EQ(parseMailRecord(answer, offset).text(kBody), std::u16string(50000, u'x'));
  EXPECT_EQ(parseMailRecord(answer, offset).find(kBody), nullptr);
  EXPECT_EQ(offset, answer.size());
}

TEST_F(MessageRead, aBodyOfMegabytesIsLeftOutWithoutReadingItAll) {
  put("Inbox", {{"Body", std::string(2'000'000, 'x')}, {"To", {"bo@y"}}});
  observeCalls();
  EXPECT_EQ(read(20).tags(), (std::vector<unsigned>{5, 11, 1, 14, 2}));
  EXPECT_EQ(calls("IStream.Read")[0]["args"], Json::array({0x36000}));
}

TEST_F(MessageRead, recipientListsLongerThanABlockAreSentWhole) {
  std::vector<std::string> to;
  std::u16string expected;
  for (int i = 0; i < 200; ++i) {
    to.push_back("somebody." + std::to_string(i) + "@example.org");
    if (i > 0) expected += u';';
    expected.append(to.back().begin(), to.back().end());
  }
  put("Inbox", {{"To", to}, {"Cc", {"one@y"}}});
  EXPECT_EQ(read(20).text(kTo), expected);
  EXPECT_EQ(read(20).text(kCc), u"one@y");
}

TEST_F(MessageRead, onlyTheFirst255RecipientsCount) {
  std::vector<std::string> to(254, "a");
  put("Inbox", {{"To", to}, {"Cc", {"b", "c"}}});
  EXPECT_EQ(read(20).text(kTo).size(), 254u + 253u);
  EXPECT_EQ(read(20).text(kCc), u"b");
}

TEST_F(MessageRead, anEmptyAddressIsPassedOver) {
  put("Inbox", {{"To", {"", "a", "", "b"}}, {"Cc", {""}}});
  EXPECT_EQ(read(20).text(kTo), u"a;b");
  EXPECT_EQ(read(20).find(kCc), nullptr);
}

}  // namespace
}  // namespace qorv
