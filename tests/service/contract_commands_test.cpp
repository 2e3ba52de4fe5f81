#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/service/database_test.h"

namespace qorv {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr unsigned kCreate = 8;
constexpr unsigned kDelete = 9;
constexpr unsigned kFind = 10;
constexpr unsigned kChanges = 11;
constexpr unsigned kCommit = 12;

const Bytes kDone = hex("01 00");
const Bytes kFailed = hex("00 01");

Bytes named(unsigned command, std::u16string_view name, unsigned type = kAppointment) {
  return request(command, type).text(name);
}

class ContractCommands : public DatabaseTest {};

TEST_F(ContractCommands, createMakesTheDatabaseAndTheContract) {
  observeCalls();
  EXPECT_EQ(reply(named(kCreate, u"desk")), kDone);
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, 0)));
  EXPECT_THAT(databaseCalls(), ElementsAre("CeOpenDatabaseEx2", "CeCreateDatabase", "CeOpenDatabaseEx2",
                                           "CeSeekDatabase", "CeWriteRecordProps", "CloseHandle"));
  // By name in the object store, sorted on the name, without flags or notifications.
  const auto open = calls("CeOpenDatabaseEx2")[1]["args"];
  EXPECT_EQ(open,
            nlohmann::json::parse(R"([{"Data1": 0, "Data2": 0, "Data3": 0, "Data4": 0}, 0, "\\QorvContracts",
      {"wVersion": 1, "wNumProps": 1, "wKeyFlags": 0, "rgPropID": [302317599], "rgdwFlags": [0]}, 0, null])"));
  // Type 12469, sorted on 0x1205001F and on 0x12040003, both descending.
  EXPECT_EQ(calls("CeCreateDatabase")[0]["args"], nlohmann::json::parse(R"(["\\QorvContracts", 12469, 2,
      [{"propid": 302317599, "dwFlags": 1}, {"propid": 302252035, "dwFlags": 1}]])"));
  const auto written = calls("CeWriteRecordProps")[0]["args"];
  EXPECT_EQ(written[1], 0);
  EXPECT_EQ(written[3], nlohmann::json::parse(R"([{"propid": 302317599, "wFlags": 0, "val": "desk"},
      {"propid": 302252035, "wFlags": 0, "val": 2}, {"propid": 302120963, "wFlags": 0, "val": 0}])"));
}

TEST_F(ContractCommands, createSetsAContractThatIsThereBackToZero) {
  makeContracts({contract(u"desk", 2, 9), contract(u"home", 2, 5)});
  EXPECT_EQ(reply(named(kCreate, u"desk")), kDone);
  EXPECT_THAT(contracts(), UnorderedElementsAre(contract(u"desk", 2, 0), contract(u"home", 2, 5)));
}

TEST_F(ContractCommands, namesAreComparedLetterByLetter) {
  session({named(kCreate, u"desk"), named(kCreate, u"Desk"), named(kCreate, u"desk "), named(kCreate, u"")});
  EXPECT_EQ(contracts().size(), 4u);
  EXPECT_EQ(reply(named(kFind, u"DESK")), kFailed);
  EXPECT_EQ(reply(named(kFind, u"des")), kFailed);
  EXPECT_EQ(reply(named(kFind, u"")), kDone);
}

TEST_F(ContractCommands, theNameAloneDecidesSoTypesShareAContract) {
  for (unsigned type = 1; type <= 5; ++type) {
    EXPECT_EQ(reply(named(kCreate, u"desk", type)), kDone);
    EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", type, 0)));
  }
  for (unsigned type = 1; type <= 5; ++type) EXPECT_EQ(reply(named(kFind, u"desk", type)), kDone);
}

TEST_F(ContractCommands, nameEndsAtItsFirstNul) {
  EXPECT_EQ(reply(named(kCreate, std::u16string_view(u"de\0sk", 5))), kDone);
  EXPECT_THAT(contracts(), ElementsAre(contract(u"de", 2, 0)));
}

TEST_F(ContractCommands, oddLastByteOfANameIsACharacter) {
  // Three bytes: 41 00 is "A", and 42 gets its high byte from the zeroed buffer.
  EXPECT_EQ(reply(request(kCreate, kAppointment).u32(3).append(hex("41 00 42"))), kDone);
  EXPECT_THAT(contracts(), ElementsAre(contract(u"AB", 2, 0)));
}

TEST_F(ContractCommands, nameThatTheDatabaseRefusesIsAFailure) {
  // A text takes at most 65471 bytes in a database.
  EXPECT_EQ(reply(named(kCreate, std::u16string(40000, u'x'))), kFailed);
  EXPECT_THAT(contracts(), IsEmpty());
}

TEST_F(ContractCommands, installationsHaveContractsOfTheirOwn) {
  session({named(kCreate, u"desk")});
  device().configuration.setModulePath(u"\\Qorv\\042\\QORVAPIMGR.dll");
  EXPECT_EQ(reply(named(kFind, u"desk")), kFailed);
  EXPECT_EQ(reply(named(kCreate, u"other")), kDone);
  EXPECT_THAT(records(u"\\QorvContracts_042", kNameTag), ElementsAre(contract(u"other", 2, 0)));
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, 0)));
}

TEST_F(ContractCommands, findTellsWhetherTheContractExists) {
  EXPECT_EQ(reply(named(kFind, u"desk")), kFailed);
  EXPECT_TRUE(exists(kContracts)) << "whoever looks for a contract makes the database";
  EXPECT_THAT(contracts(), IsEmpty());
  session({named(kCreate, u"home"), named(kCreate, u"desk")});
  EXPECT_EQ(reply(named(kFind, u"desk")), kDone);
}

TEST_F(ContractCommands, searchReadsTheNameAloneRecordByRecord) {
  // Descending: "c", "b", "a".
  makeContracts({contract(u"a", 2, 1), contract(u"b", 2, 2), contract(u"c", 2, 3)});
  observeCalls();
  EXPECT_EQ(reply(named(kFind, u"b")), kDone);
  EXPECT_THAT(databaseCalls(), ElementsAre("CeOpenDatabaseEx2", "CeSeekDatabase", "CeReadRecordProps",
                                           "CeSeekDatabase", "CeReadRecordProps", "CloseHandle"));
  const auto seeks = calls("CeSeekDatabase");
  // From the beginning, then one forward.
  EXPECT_EQ(seeks[0]["args"][1], 2);
  EXPECT_EQ(seeks[0]["args"][2], 0);
  EXPECT_EQ(seeks[1]["args"][1], 8);
  EXPECT_EQ(seeks[1]["args"][2], 1);
  for (const auto& read : calls("CeReadRecordProps")) {
    EXPECT_EQ(read["args"][1], 1) << "with reallocation";
    EXPECT_EQ(read["args"][2], 1);
    EXPECT_EQ(read["args"][3], nlohmann::json::parse("[302317599]"));
  }
  EXPECT_EQ(callNames("LocalFree").size(), 1u) << "the walk's block";
}

TEST_F(ContractCommands, aNameThatIsNoTextIsNoName) {
  // Were the type not looked at, the number and the blob would be taken for pointers to texts.
  makeContracts({{{0x12050003, DWORD{0x41}}, {kSequenceTag, DWORD{7}}},
                 {{0x12050041, hex("64 00 65 00 73 00 6b 00 00 00")}, {kSequenceTag, DWORD{7}}},
                 {{kSequenceTag, DWORD{7}}}});
  EXPECT_EQ(reply(named(kFind, u"desk")), kFailed);
  EXPECT_EQ(reply(named(kFind, u"")), kFailed);
  EXPECT_EQ(reply(named(kFind, u"A")), kFailed);
}

TEST_F(ContractCommands, searchPassesOverRecordsThatCannotBeRead) {
  makeContracts({contract(u"a", 2, 1), contract(u"b", 2, 2)});
  fault("CeReadRecordProps=1018*1");
  EXPECT_EQ(reply(named(kFind, u"a")), kDone);
  EXPECT_EQ(reply(named(kFind, u"b")), kFailed) << "the record that can't be read";
}

TEST_F(ContractCommands, searchEndsWhereNoRecordCanBeRead) {
  makeContracts({contract(u"a", 2, 1), contract(u"b", 2, 2)});
  observeCalls();
  fault("CeReadRecordProps=87");
  EXPECT_EQ(reply(named(kFind, u"a")), kFailed);
  EXPECT_EQ(calls("CeSeekDatabase").size(), 3u);
}

TEST_F(ContractCommands, deleteRemovesTheContractAlone) {
  makeContracts({contract(u"desk", 2, 9), contract(u"home", 1, 5)});
  EXPECT_EQ(reply(named(kDelete, u"desk")), kDone);
  EXPECT_THAT(contracts(), ElementsAre(contract(u"home", 1, 5)));
}

TEST_F(ContractCommands, deleteOfAnUnknownContractDeletesNothingAndSucceeds) {
  makeContracts({contract(u"home", 1, 5)});
  observeCalls();
  EXPECT_EQ(reply(named(kDelete, u"desk")), kDone);
  ASSERT_EQ(calls("CeDeleteRecord").size(), 1u);
  EXPECT_EQ(calls("CeDeleteRecord")[0]["args"][1], 0);
  EXPECT_THAT(contracts(), ElementsAre(contract(u"home", 1, 5)));
}

TEST_F(ContractCommands, deleteThatThePlatformRefusesSucceedsAllTheSame) {
  makeContracts({contract(u"desk", 2, 9)});
  fault("CeDeleteRecord=32");
  EXPECT_EQ(reply(named(kDelete, u"desk")), kDone);
  EXPECT_EQ(contracts().size(), 1u);
}

TEST_F(ContractCommands, writeThatFailsIsAnswered) {
  makeContracts({contract(u"desk", 2, 9)});
  fault("CeWriteRecordProps=112");
  EXPECT_EQ(reply(named(kCreate, u"desk")), kFailed);
  EXPECT_EQ(reply(named(kCommit, u"desk")), kFailed);
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, 9)));
}

TEST_F(ContractCommands, databaseThatOpensAtTheSecondTryIsUsed) {
  makeContracts({contract(u"desk", 2, 9)});
  observeCalls();
  fault("CeOpenDatabaseEx2=8*1");
  EXPECT_EQ(reply(named(kFind, u"desk")), kDone);
  // There is one of the name already, so none is made.
  EXPECT_EQ(calls("CeCreateDatabase")[0]["result"], 0);
}

/// What each command answers when the contract database can be neither opened nor made.
struct WithoutDatabase {
  unsigned command;
  const char* reply;
};

class UnusableContracts : public ContractCommands, public testing::WithParamInterface<WithoutDatabase> {
 protected:
  void expectNothingTouched() {
    EXPECT_EQ(reply(named(GetParam().command, u"desk")), hex(GetParam().reply));
    for (const std::string& name : databaseCalls()) {
      EXPECT_TRUE(name == "CeOpenDatabaseEx2" || name == "CeCreateDatabase") << name;
    }
    EXPECT_EQ(calls("CeOpenDatabaseEx2").size(), 2u)
        << "of the contracts, before and after the attempt to make them";
    EXPECT_THAT(calls("RegSetValueExW"), IsEmpty());
    EXPECT_THAT(calls("Sleep"), IsEmpty());
    clearFaults();
    EXPECT_THAT(log(), ElementsAre(change(17, 3, 2)));
    EXPECT_EQ(counter(), 3u);
  }
};

TEST_P(UnusableContracts, touchNothingElseWhenTheyCannotBeOpened) {
  makeContracts({contract(u"desk", 2, 1)});
  makeLog({change(17, 3, 2)});
  setCounter(3);
  observeCalls();
  fault("CeOpenDatabaseEx2=8");
  expectNothingTouched();
  EXPECT_THAT(contracts(), ElementsAre(contract(u"desk", 2, 1)));
}

TEST_P(UnusableContracts, touchNothingElseWhenTheyCannotBeMade) {
  makeLog({change(17, 3, 2)});
  setCounter(3);
  observeCalls();
  fault("CeCreateDatabase=112");
  expectNothingTouched();
  EXPECT_FALSE(exists(kContracts));
}

INSTANTIATE_TEST_SUITE_P(Commands, UnusableContracts,
                         testing::Values(WithoutDatabase{kCreate, "00 01"}, WithoutDatabase{kDelete, ""},
                                         WithoutDatabase{kFind, "00 01"},
                                         WithoutDatabase{kChanges, "00 01 00000000 00"},
                                         WithoutDatabase{kCommit, "00 01"}));

class CutContractRequest : public ContractCommands, public testing::WithParamInterface<WithoutDatabase> {};

TEST_P(CutContractRequest, changesNothingAndIsAFailure) {
  const Bytes whole = named(GetParam().command, u"desk");
  observeCalls();
  for (std::size_t size = 2; size < whole.size(); ++size) {
    EXPECT_EQ(reply(whole.slice(0, size)), hex(GetParam().reply)) << size;
    EXPECT_THAT(databaseCalls(), IsEmpty()) << size;
    EXPECT_THAT(calls("Sleep"), IsEmpty()) << size;
  }
  EXPECT_EQ(reply(request(GetParam().command, kAppointment).u32(0xFFFFFFFF).u16(0x41)),
            hex(GetParam().reply));
  EXPECT_FALSE(exists(kContracts));
}

INSTANTIATE_TEST_SUITE_P(Commands, CutContractRequest,
                         testing::Values(WithoutDatabase{kCreate, "00 01"}, WithoutDatabase{kDelete, ""},
                                         WithoutDatabase{kFind, "00 01"},
                                         WithoutDatabase{kChanges, "00 01 00000000 00"},
                                         WithoutDatabase{kCommit, "00 01"}));

}  // namespace
}  // namespace qorv
