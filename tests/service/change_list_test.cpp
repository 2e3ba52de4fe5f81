#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "channel/host_context.h"
#include "service/api_base.h"
#include "tests/service/database_test.h"

namespace qorv {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

Bytes changesFor(std::u16string_view name, unsigned type = kAppointment) {
  return request(11, type).text(name);
}

/// Result, status, number of entries; the field count of a list of changes is 0.
Bytes listHeader(unsigned result, unsigned status, DWORD count) {
  return Bytes().u8(result).u8(status).u32(count).u8(0);
}

class ChangeList : public DatabaseTest {
 protected:
  /// The reply to a request for the changes of a log with this one record.
  Bytes listOf(const Record& record) {
    makeLog({record});
    return reply(changesFor(u"nobody"));
  }
};

TEST_F(ChangeList, withoutAContractIsTheWholeLogNewestFirst) {
  makeLog({change(0x01000021, 6, 1), change(0x01000022, 9, 3), change(0x01000023, 7, 2),
           change(0x01000024, 8, 2)});
  EXPECT_EQ(reply(changesFor(u"desk")), hex("01 00 04000000 00"
                                            "22000001 03"
                                            "24000001 02"
                                            "23000001 02"
                                            "21000001 01"));
  EXPECT_THAT(contracts(), IsEmpty()) << "asking makes no contract";
}

TEST_F(ChangeList, withAContractIsWhatIsNewer) {
  makeContracts({contract(u"home", 2, 0), contract(u"desk", 2, 7)});
  makeLog({change(0x21, 6, 1), change(0x22, 7, 3), change(0x23, 8, 2), change(0x24, 9, 1)});
  EXPECT_EQ(reply(changesFor(u"desk")), hex("01 00 02000000 00  24000000 01  23000000 02"));
}

TEST_F(ChangeList, stopsAtTheFirstRecordThatIsNotNewer) {
  makeContracts({contract(u"desk", 2, 7)});
  makeLog({change(1, 5, 2), change(2, 6, 2), change(3, 7, 2), change(4, 8, 2), change(5, 9, 2)});
  observeCalls();
  reply(changesFor(u"desk"));
  // The contract's name and its sequence; the records 9, 8 and 7.
  EXPECT_THAT(
      databaseCalls(),
      ElementsAre("CeOpenDatabaseEx2", "CeSeekDatabase", "CeReadRecordProps", "CeReadRecordProps",
                  "CeOpenDatabaseEx2", "CeSeekDatabase", "CeReadRecordProps", "CeSeekDatabase",
                  "CeReadRecordProps", "CeSeekDatabase", "CeReadRecordProps", "CloseHandle", "CloseHandle"));
  EXPECT_EQ(calls("CeReadRecordProps")[1]["args"][3], nlohmann::json::parse("[302120963]"));
  EXPECT_EQ(calls("CeReadRecordProps")[2]["args"][3], nullptr) << "all properties";
  // The log: sorted on 0x12020003.
  const auto open = calls("CeOpenDatabaseEx2")[1]["args"];
  EXPECT_EQ(open[2], "\\QorvAppointmentLog");
  EXPECT_EQ(open[3], nlohmann::json::parse(R"({"wVersion": 1, "wNumProps": 1, "wKeyFlags": 0,
                                               "rgPropID": [302120963], "rgdwFlags": [0]})"));
  EXPECT_EQ(calls("CloseHandle")[0]["args"][0], calls("CeOpenDatabaseEx2")[0]["result"]) << "the contracts";
}

TEST_F(ChangeList, nothingNewIsAnEmptyList) {
  makeContracts({contract(u"desk", 2, 9)});
  makeLog({change(1, 8, 2), change(2, 9, 2)});
  EXPECT_EQ(reply(changesFor(u"desk")), listHeader(1, 0, 0));
}

TEST_F(ChangeList, sequencesAreUnsigned) {
  makeContracts({contract(u"desk", 2, 0x7FFFFFFF)});
  makeLog({change(0x21, 0x80000000, 2)});
  EXPECT_EQ(reply(changesFor(u"desk")), hex("01 00 01000000 00  21000000 02"));
}

TEST_F(ChangeList, readsTheSequenceOfTheContractThatTheSearchStoppedOn) {
  // Two records of one name can only come from outside; in the descending order of names the walk meets both
  // before any other.
  makeContracts({contract(u"a", 2, 5), contract(u"z", 2, 8), contract(u"desk", 2, 6)});
  makeLog({change(1, 5, 2), change(2, 6, 2), change(3, 7, 2), change(4, 8, 2)});
  EXPECT_EQ(reply(changesFor(u"desk")).slice(0, 7), listHeader(1, 0, 2));
  EXPECT_EQ(reply(changesFor(u"z")).slice(0, 7), listHeader(1, 0, 0));
}

TEST_F(ChangeList, typesShareTheSequenceOfOneName) {
  makeLog({change(0x21, 3, 2)}, u"\\QorvContactLog");
  makeLog({change(0x22, 3, 2)});
  makeLog({change(0x23, 3, 2)}, u"\\QorvTaskLog");
  makeLog({change(0x24, 3, 2)}, u"\\QorvMailLog");
  const auto replies = session(
      {changesFor(u"desk", 1), changesFor(u"desk", 2), changesFor(u"desk", 3), changesFor(u"desk", 4)});
  for (unsigned i = 0; i < 4; ++i) {
    EXPECT_EQ(replies[i], listHeader(1, 0, 1).u32(0x21 + i).u8(2)) << "type " << i + 1;
  }
  makeContracts({contract(u"desk", 1, 3)});
  for (unsigned type = 1; type <= 4; ++type) {
    EXPECT_EQ(reply(changesFor(u"desk", type)), listHeader(1, 0, 0)) << "type " << type;
  }
}

TEST_F(ChangeList, contractWithoutASequenceIsStatusOne) {
  makeContracts({{{kNameTag, u"none"}, {kTypeTag, DWORD{2}}},
                 {{kNameTag, u"text"}, {0x1202001F, u"7"}},
                 {{kNameTag, u"blob"}, {0x12020041, hex("07 00 00 00")}}});
  makeLog({change(0x21, 9, 2)});
  observeCalls();
  for (const char16_t* name : {u"none", u"text", u"blob"}) {
    EXPECT_EQ(reply(changesFor(name)), listHeader(0, 1, 0));
    EXPECT_EQ(calls("CeOpenDatabaseEx2").size(), 1u) << "the log stays closed";
  }
}

TEST_F(ChangeList, logThatIsNotThereIsAnEmptyList) {
  removeDatabase(kAppointmentLog);
  EXPECT_EQ(reply(changesFor(u"desk")), listHeader(1, 0, 0));
  EXPECT_FALSE(exists(kAppointmentLog)) << "a log is never made here";
}

TEST_F(ChangeList, logThatCannotBeOpenedIsAnEmptyList) {
  makeContracts({contract(u"desk", 2, 7)});
  makeLog({change(0x21, 9, 2)});
  fault("CeOpenDatabaseEx2#2=8");
  EXPECT_EQ(reply(changesFor(u"desk")), listHeader(1, 0, 0));
}

TEST_F(ChangeList, onlyTheLowByteOfAKindTravels) {
  EXPECT_EQ(listOf(change(0x21, 1, 0xFFFFFF03)), listHeader(1, 0, 1).u32(0x21).u8(3));
  EXPECT_EQ(listOf(change(0x21, 1, 0x100)), listHeader(1, 0, 1).u32(0x21).u8(0));
}

TEST_F(ChangeList, missingKindIsTwo) {
  EXPECT_EQ(listOf({{kOidTag, DWORD{0x21}}, {kSequenceTag, DWORD{1}}}), listHeader(1, 0, 1).u32(0x21).u8(2));
}

TEST_F(ChangeList, kindOfARecordIsNotTheOneBefore) {
  makeLog({change(0x21, 2, 3), {{kOidTag, DWORD{0x22}}, {kSequenceTag, DWORD{1}}}});
  EXPECT_EQ(reply(changesFor(u"desk")), hex("01 00 02000000 00  21000000 03  22000000 02"));
}

/// How a record names its item, and which OID comes of it.
struct Naming {
  const char* what;
  Record record;
  DWORD oid;
};

class ItemOfAChange : public ChangeList, public testing::WithParamInterface<Naming> {};

TEST_P(ItemOfAChange, isListed) {
  Record record = GetParam().record;
  record.insert(record.begin(), {kSequenceTag, DWORD{1}});
  EXPECT_EQ(listOf(record), listHeader(1, 0, 1).u32(GetParam().oid).u8(2)) << GetParam().what;
}

// An entry identifier's OID stands in its bytes 4 to 7.
const Bytes kEntryId = hex("ff ff ff ff 44 33 22 11");

INSTANTIATE_TEST_SUITE_P(
    Namings, ItemOfAChange,
    testing::Values(Naming{"a number", {{kOidTag, DWORD{0x21}}}, 0x21},
                    Naming{"the shortest entry identifier", {{kEntryIdTag, kEntryId}}, 0x11223344},
                    Naming{"a longer one", {{kEntryIdTag, Bytes(kEntryId).zeros(12)}}, 0x11223344},
                    Naming{"both, the entry identifier later",
                           {{kOidTag, DWORD{0x21}}, {kEntryIdTag, kEntryId}},
                           0x11223344},
                    Naming{"both, the number later", {{kEntryIdTag, kEntryId}, {kOidTag, DWORD{0x21}}}, 0x21},
                    Naming{"an entry identifier of 7 bytes", {{kEntryIdTag, hex("ff ff ff ff 44 33 22")}}, 0},
                    Naming{"a number, and later an entry identifier of 7 bytes",
                           {{kOidTag, DWORD{0x21}}, {kEntryIdTag, hex("ff ff ff ff 44 33 22")}},
                           0x21},
                    Naming{
                        "an empty entry identifier", {{kOidTag, DWORD{0x21}}, {kEntryIdTag, Bytes()}}, 0x21},
                    Naming{"an entry identifier that is a number", {{0x12060003, DWORD{0x08}}}, 0},
                    Naming{"an entry identifier that is a text", {{0x1206001F, u"abcdefgh"}}, 0},
                    Naming{"a number that is a blob", {{0x12010041, kEntryId}}, 0}, Naming{"nothing", {}, 0}),
    [](const auto& each) { return "n" + std::to_string(each.index); });

TEST_F(ChangeList, recordWithoutASequenceIsNeverNewer) {
  EXPECT_EQ(listOf({{kOidTag, DWORD{0x21}}}), listHeader(1, 0, 0));
  EXPECT_EQ(listOf({{kOidTag, DWORD{0x21}}, {0x1202001F, u"9"}}), listHeader(1, 0, 0));
}

TEST_F(ChangeList, passesOverRecordsThatCannotBeRead) {
  makeLog({change(0x21, 1, 2), change(0x22, 2, 2), change(0x23, 3, 2)});
  // Without contracts the first read is that of the log's newest record.
  fault("CeReadRecordProps#2=1018*1");
  EXPECT_EQ(reply(changesFor(u"desk")), hex("01 00 02000000 00  23000000 02  21000000 02"));
}

TEST_F(ChangeList, endsWhereNoRecordCanBeRead) {
  makeLog({change(0x21, 1, 2), change(0x22, 2, 2), change(0x23, 3, 2)});
  observeCalls();
  fault("CeReadRecordProps=1018");
  EXPECT_EQ(reply(changesFor(u"desk")), listHeader(1, 0, 0));
  EXPECT_EQ(calls("CeReadRecordProps").size(), 3u);
}

TEST_F(ChangeList, endsWhereThePlatformStopsSeeking) {
  makeLog({change(0x21, 1, 2), change(0x22, 2, 2), change(0x23, 3, 2)});
  // The contracts' beginning, the log's beginning, the log's second record.
  fault("CeSeekDatabase#3=87");
  EXPECT_EQ(reply(changesFor(u"desk")), hex("01 00 01000000 00  23000000 02"));
}

TEST_F(ChangeList, freesTheBlocksOfItsWalks) {
  makeContracts({contract(u"a", 2, 0), contract(u"b", 2, 0)});
  makeLog({change(0x21, 1, 2), change(0x22, 2, 2)});
  observeCalls();
  reply(changesFor(u"a"));
  // One for the search, one for the sequence, one for the log.
  EXPECT_EQ(callNames("LocalFree").size(), 3u);
}

std::vector<Record> manyChanges(DWORD count) {
  std::vector<Record> records;
  for (DWORD i = 1; i <= count; ++i) records.push_back(change(i, i, 2));
  return records;
}

TEST_F(ChangeList, entriesDoNotStopAtTheLimitForTexts) {
  // (0x1B000 - 7) / 5 = 22117 entries reach the limit.
  makeLog(manyChanges(22200));
  const Bytes answer = reply(changesFor(u"desk"));
  EXPECT_EQ(answer.slice(0, 7), listHeader(1, 0, 22200));
  EXPECT_EQ(answer.size(), 7u + 22200u * 5u);
  EXPECT_EQ(answer.dwordAt(7), 22200u);
  EXPECT_EQ(answer.dwordAt(7 + 5 * 22199), 1u);
}

TEST_F(ChangeList, thatDoesNotFitTheBufferEndsWithResultZero) {
  // (0x36000 - 7) / 5 = 44235 entries fit, with two bytes to spare.
  makeLog(manyChanges(44236));
  Bytes answer = reply(changesFor(u"desk"));
  EXPECT_EQ(answer.slice(0, 7), listHeader(0, 0, 44235));
  EXPECT_EQ(answer.size(), 7u + 44235u * 5u);
  EXPECT_EQ(answer.dwordAt(answer.size() - 5), 2u);
  // One change less fits.
  makeContracts({contract(u"desk", 2, 1)});
  answer = reply(changesFor(u"desk"));
  EXPECT_EQ(answer.slice(0, 7), listHeader(1, 0, 44235));
}

/// A handler that accepts the items it is told to, and keeps what it was asked.
class PickyHandler : public CQorvApiBase {
 public:
  explicit PickyHandler(const std::u16string* changeLog)
      : CQorvApiBase({kNoDefaultFolder, DataType::Task, changeLog}) {}

  bool AcceptItem(DWORD oid, DWORD sequence) override {
    asked.emplace_back(oid, sequence);
    return oid % 2 == 0;
  }

  std::vector<std::pair<DWORD, DWORD>> asked;
};

class HandlerOfItsOwn : public ChangeList {
 protected:
  /// Lets the handler answer one request; the bytes of its reply.
  Bytes answer(CQorvApiBase& handler, const Bytes& request, const std::function<void()>& operation) {
    ResponseBuffer buffer;
    IPOutlookApp& application = outlook();
    perform([&] {
      hostContext().contractDatabase = kContracts;
      handler.setContext({std::span(request.vector()).subspan(1), buffer, application});
      operation();
    });
    return Bytes({buffer.data(), buffer.data() + handler.responseLength()});
  }
};

TEST_F(HandlerOfItsOwn, isAskedWhetherItAcceptsEachNewItem) {
  makeContracts({contract(u"desk", 3, 6)});
  makeLog({change(0x20, 6, 2), change(0x21, 7, 2), change(0x22, 8, 1), change(0x24, 9, 3)});
  PickyHandler handler(&kAppointmentLog);
  EXPECT_EQ(answer(handler, changesFor(u"desk"), [&] { EXPECT_TRUE(handler.GetChanges()); }),
            hex("01 00 02000000 00  24000000 03  22000000 01"));
  EXPECT_THAT(handler.asked, ElementsAre(std::pair(0x24u, 9u), std::pair(0x22u, 8u), std::pair(0x21u, 7u)));
}

TEST_F(HandlerOfItsOwn, withoutALogHasNoChangesAndCommitsZero) {
  setCounter(9, u"");
  PickyHandler handler(nullptr);
  EXPECT_EQ(answer(handler, changesFor(u"desk"), [&] { handler.GetChanges(); }), listHeader(1, 0, 0));
  observeCalls();
  PickyHandler committing(nullptr);
  EXPECT_EQ(answer(committing, changesFor(u"desk"), [&] { committing.CommitChanges(true); }), hex("01 00"));
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 3, 0)));
  EXPECT_THAT(sleeps(), IsEmpty());
  EXPECT_EQ(counter(u""), 9u) << "no value of the agent's";
}

}  // namespace
}  // namespace qorv
