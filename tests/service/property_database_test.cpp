#include "service/property_database.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "channel/host_context.h"
#include "platform/system.h"
#include "service/change_log_names.h"
#include "service/record_reader.h"
#include "tests/service/database_test.h"

namespace qorv {
namespace {

using namespace test;
using testing::ElementsAre;

class PropertyDatabase : public DatabaseTest {
 protected:
  CEGUID volume_ = kSystemVolume;
};

TEST_F(PropertyDatabase, opensByNameAndTellsTheIdentifier) {
  const CEOID oid = makeDatabase(u"\\Things", {{kOidTag, CEDB_SORT_DESCENDING}});
  CEOID opened = 0;
  perform([&] { EXPECT_TRUE(openDatabase(volume_, opened, u"\\Things", kOidTag, 0, nullptr)); });
  EXPECT_EQ(opened, oid);
}

TEST_F(PropertyDatabase, opensByIdentifierWhateverTheName) {
  CEOID oid = makeDatabase(u"\\Things", {});
  perform([&] { EXPECT_TRUE(openDatabase(volume_, oid, u"\\Other", 0, 0, nullptr)); });
}

TEST_F(PropertyDatabase, opensWithASortDescriptorOnlyForASortProperty) {
  makeDatabase(u"\\Things", {{kOidTag, CEDB_SORT_DESCENDING}});
  observeCalls();
  perform([&] {
    CEOID oid = 0;
    openDatabase(volume_, oid, u"\\Things", kOidTag, CEDB_AUTOINCREMENT, nullptr);
    oid = 0;
    openDatabase(volume_, oid, u"\\Things", 0, 0, nullptr);
  });
  const auto opens = calls("CeOpenDatabaseEx2");
  EXPECT_EQ(opens[0]["args"], nlohmann::json::parse(R"([{"Data1": 0, "Data2": 0, "Data3": 0, "Data4": 0}, 0,
      "\\Things", {"wVersion": 1, "wNumProps": 1, "wKeyFlags": 0, "rgPropID": [302055427], "rgdwFlags": [0]},
      1, null])"));
  EXPECT_EQ(opens[1]["args"][3], nullptr);
  EXPECT_EQ(opens[1]["args"][4], 0);
}

TEST_F(PropertyDatabase, failedOpenIsEmptyAndLeavesTheError) {
  perform([&] {
    CEOID oid = 0;
    const UniqueHandle database = openDatabase(volume_, oid, u"\\None", 0, 0, nullptr);
    EXPECT_FALSE(database);
    EXPECT_EQ(database.get(), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(oid, 0u);
  });
}

TEST_F(PropertyDatabase, asksForNotificationsWhenAWindowIsGiven) {
  makeDatabase(u"\\Things", {});
  const auto window = reinterpret_cast<HWND>(std::uintptr_t{0x1234});
  observeCalls();
  perform([&] {
    CEOID oid = 0;
    EXPECT_TRUE(openDatabaseWithNotification(volume_, oid, u"\\Things", 0, 0, window));
    oid = 0;
    EXPECT_TRUE(openDatabaseWithNotification(volume_, oid, u"\\Things", 0, 0, nullptr));
  });
  const auto opens = calls("CeOpenDatabaseEx2");
  const auto request = opens[0]["args"][5];
  EXPECT_EQ(request["dwSize"], 20);
  EXPECT_TRUE(request["hwnd"].get<std::string>().starts_with("@")) << request;
  EXPECT_EQ(request["dwFlags"], 0);
  EXPECT_EQ(request["hHeap"], nullptr);
  EXPECT_EQ(request["dwParam"], 0);
  EXPECT_EQ(opens[1]["args"][5], nullptr);
}

TEST_F(PropertyDatabase, handlesAreClosedOnceAndNotWhenTheyWereMovedFrom) {
  makeDatabase(u"\\Things", {});
  observeCalls();
  perform([&] {
    CEOID oid = 0;
    UniqueHandle first = openDatabase(volume_, oid, u"\\Things", 0, 0, nullptr);
    UniqueHandle second = std::move(first);
    UniqueHandle third;
    third = std::move(second);
    EXPECT_TRUE(third);
  });
  EXPECT_EQ(callNames("CloseHandle").size(), 1u);
}

/// Every field filled, also those that the platform ignores.
CEDBASEINFO fullDescription() {
  CEDBASEINFO description{};
  description.dwFlags = CEDB_VALIDNAME | CEDB_VALIDTYPE | CEDB_VALIDSORTSPEC;
  std::u16string(u"\\Things").copy(description.szDbaseName, CEDB_MAXDBASENAMELEN);
  description.dwDbaseType = 77;
  description.wNumRecords = 0xFFFF;
  description.wNumSortOrder = 4;
  description.dwSize = 12345;
  description.ftLastModified = {1, 2};
  description.rgSortSpecs[0] = {kOidTag, CEDB_SORT_DESCENDING};
  description.rgSortSpecs[1] = {kSequenceTag, 0};
  description.rgSortSpecs[2] = {kNameTag, CEDB_SORT_CASEINSENSITIVE};
  description.rgSortSpecs[3] = {kKindTag, CEDB_SORT_UNKNOWNFIRST};
  return description;
}

TEST_F(PropertyDatabase, makesADatabaseFromTheOlderDescription) {
  observeCalls();
  CEOID oid = 0;
  perform([&] { oid = createDatabase(volume_, fullDescription()); });
  EXPECT_NE(oid, 0u);
  EXPECT_EQ(calls("CeCreateDatabaseEx2")[0]["args"][1], nlohmann::json::parse(R"({
      "wVersion": 1, "wNumSortOrder": 4, "dwFlags": 7, "szDbaseName": "\\Things", "dwDbaseType": 77,
      "rgSortSpecs": [
        {"wVersion": 1, "wNumProps": 1, "wKeyFlags": 0, "rgPropID": [302055427], "rgdwFlags": [1]},
        {"wVersion": 1, "wNumProps": 1, "wKeyFlags": 0, "rgPropID": [302120963], "rgdwFlags": [0]},
        {"wVersion": 1, "wNumProps": 1, "wKeyFlags": 0, "rgPropID": [302317599], "rgdwFlags": [2]},
        {"wVersion": 1, "wNumProps": 1, "wKeyFlags": 0, "rgPropID": [302186499], "rgdwFlags": [4]}]})"));
  perform([&] {
    for (const CEPROPID order : {kOidTag, kSequenceTag, kNameTag, kKindTag}) {
      CEOID opened = 0;
      EXPECT_TRUE(openDatabase(volume_, opened, u"\\Things", order, 0, nullptr)) << order;
      EXPECT_EQ(opened, oid);
    }
  });
}

TEST_F(PropertyDatabase, nameOfADatabaseMayTakeItsWholeRoom) {
  CEDBASEINFO description{};
  description.dwFlags = CEDB_VALIDNAME;
  std::ranges::fill(description.szDbaseName, u'n');
  description.szDbaseName[CEDB_MAXDBASENAMELEN - 1] = u'\0';
  CEOID oid = 0;
  perform([&] { oid = createDatabase(volume_, description); });
  EXPECT_NE(oid, 0u);
  EXPECT_TRUE(exists(std::u16string(CEDB_MAXDBASENAMELEN - 1, u'n')));
}

TEST_F(PropertyDatabase, refusedCreationIsZero) {
  makeDatabase(u"\\Things", {});
  perform([&] {
    EXPECT_EQ(createDatabase(volume_, fullDescription()), 0u);
    EXPECT_EQ(GetLastError(), ERROR_DUP_NAME);
  });
}

/// As it may come: full of what was there before.
CEOIDINFOEX poisoned() {
  CEOIDINFOEX information;
  std::fill_n(reinterpret_cast<BYTE*>(&information), sizeof(information), BYTE{0xCC});
  return information;
}

TEST_F(PropertyDatabase, informationHasTheTypeInBothFields) {
  CEOID database = makeDatabase(u"\\Things", {});
  const CEOID record = add(u"\\Things", {{{kOidTag, DWORD{1}}}}).front();
  perform([&] {
    auto information = poisoned();
    EXPECT_TRUE(objectInformation(volume_, database, information));
    EXPECT_EQ(information.wVersion, OBJTYPE_DATABASE);
    EXPECT_EQ(information.wObjType, OBJTYPE_DATABASE);
    EXPECT_EQ(std::u16string(information.infDatabase.szDbaseName), u"\\Things");
    information = poisoned();
    EXPECT_TRUE(objectInformation(volume_, record, information));
    EXPECT_EQ(information.wVersion, OBJTYPE_RECORD);
    EXPECT_EQ(information.infRecord.oidParent, database);
  });
}

TEST_F(PropertyDatabase, informationOnNothingIsOfNoType) {
  perform([&] {
    auto information = poisoned();
    EXPECT_FALSE(objectInformation(volume_, 0x7FFFFFFF, information));
    EXPECT_EQ(information.wVersion, OBJTYPE_INVALID);
  });
  fault("CeOidGetInfoEx2=87");
  CEOID oid = makeDatabase(u"\\Things", {});
  perform([&] {
    auto information = poisoned();
    EXPECT_FALSE(objectInformation(volume_, oid, information));
    EXPECT_EQ(information.wVersion, OBJTYPE_INVALID);
  });
}

TEST_F(PropertyDatabase, recordsAreReadIntoOneBlock) {
  const std::u16string longText(500, u'x');
  makeDatabase(u"\\Things", {{kOidTag, 0}});
  add(u"\\Things",
      {{{kOidTag, DWORD{1}}}, {{kOidTag, DWORD{2}}, {kNameTag, longText}}, {{kOidTag, DWORD{3}}}});
  observeCalls();
  perform([&] {
    CEOID oid = 0;
    const UniqueHandle database = openDatabase(volume_, oid, u"\\Things", kOidTag, 0, nullptr);
    RecordReader reader(database.get());
    ASSERT_NE(seekFirstRecord(database.get()), 0u);
    ASSERT_EQ(reader.readAll().size(), 1u);
    ASSERT_NE(seekNextRecord(database.get()), 0u);
    const auto second = reader.readAll();
    ASSERT_EQ(second.size(), 2u);
    EXPECT_EQ(second[0].val.lVal, 2);
    EXPECT_EQ(std::u16string(second[1].val.lpwstr), longText);
    EXPECT_EQ(reader.readOne(kSequenceTag), nullptr);
    ASSERT_NE(reader.readOne(kOidTag), nullptr);
    EXPECT_EQ(reader.readOne(kOidTag)->val.lVal, 2);
    ASSERT_NE(seekNextRecord(database.get()), 0u);
    EXPECT_EQ(reader.readAll().size(), 1u);
    EXPECT_EQ(seekNextRecord(database.get()), 0u);
    EXPECT_TRUE(reader.readAll().empty());
    ASSERT_NE(seekFirstRecord(database.get()), 0u);
    EXPECT_EQ(reader.readAll()[0].val.lVal, 1) << "a failure doesn't spoil the reader";
  });
}

struct LogCode {
  DWORD code;
  ChangeLogCode form;
  bool result;
  const char16_t* name;
};

class ChangeLogNames : public AgentTest, public testing::WithParamInterface<LogCode> {};

TEST_P(ChangeLogNames, areCopiedWithTheInstancesSuffix) {
  device().configuration.setModulePath(u"\\Qorv\\042\\QORVAPIMGR.dll");
  perform([] { prepareHostContext(emulator::Modules::agent(), u"QorvApiMgrApp"); });
  std::u16string name = u"before";
  EXPECT_EQ(changeLogName(GetParam().code, GetParam().form, name), GetParam().result);
  EXPECT_EQ(name, GetParam().name);
}

INSTANTIATE_TEST_SUITE_P(
    Codes, ChangeLogNames,
    testing::Values(LogCode{256, ChangeLogCode::Notification, true, u"\\QorvContactLog_042"},
                    LogCode{512, ChangeLogCode::Notification, true, u"\\QorvAppointmentLog_042"},
                    LogCode{768, ChangeLogCode::Notification, true, u"\\QorvTaskLog_042"},
                    LogCode{1024, ChangeLogCode::Notification, false, u"\\QorvMailLog_042"},
                    LogCode{1280, ChangeLogCode::Notification, false, u"\\QorvMailLog_042"},
                    LogCode{9, ChangeLogCode::Folder, true, u"\\QorvAppointmentLog_042"},
                    LogCode{10, ChangeLogCode::Folder, true, u"\\QorvContactLog_042"},
                    LogCode{13, ChangeLogCode::Folder, true, u"\\QorvTaskLog_042"},
                    LogCode{9, ChangeLogCode::Notification, false, u"before"},
                    LogCode{256, ChangeLogCode::Folder, false, u"before"},
                    LogCode{1024, ChangeLogCode::Folder, false, u"before"},
                    LogCode{0, ChangeLogCode::Notification, false, u"before"},
                    LogCode{102, ChangeLogCode::Folder, false, u"before"}),
    [](const auto& each) {
      return (each.param.form == ChangeLogCode::Folder ? "folder" : "code") + std::to_string(each.param.code);
    });

}  // namespace
}  // namespace qorv
