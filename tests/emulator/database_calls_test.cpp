// The database calls of a program that is observed: what the log says of them, and how they fail on demand.
#include <gmock/gmock.h>

#include "tests/emulator/calls_monitor_fixture.h"
#include "tests/emulator/database_test.h"

namespace emulator::test {
namespace {

class ObservedDatabases : public DatabaseTest {
 protected:
  /// Everything from now on is observed, with these faults.
  void observe(const std::vector<std::string>& faults = {}) {
    std::vector<FaultRule> rules;
    for (const std::string& rule : faults) rules.push_back(parseFaultRule(rule));
    monitor_.emplace(CallLog(file_.path()), Faults(std::move(rules)),
                     [this](DWORD error) { device().lastError.set(error); });
    observed_.emplace(device(), &*monitor_);
  }

  emulator::testing::TemporaryFile file_;
  std::optional<CallMonitor> monitor_;
  std::optional<CurrentDevice> observed_;
};

TEST_F(ObservedDatabases, areLoggedWithTheFieldsOfTheirStructures) {
  CEOID oid = create(u"\\Log", {{kSequence, 1}});
  observe();
  CENOTIFYREQUEST request{};
  request.dwSize = 20;
  SORTORDERSPECEX order = orderOn({{kSequence, 0}});
  const HANDLE handle = CeOpenDatabaseEx2(&volume_, &oid, nullptr, &order, 1, &request);
  const CEOID record = write(handle, 0, {number(kSequence, 7), deletion(kName)});
  EXPECT_EQ(seek(handle, CEDB_SEEK_VALUEFIRSTEQUAL, number(kSequence, 7)), record);
  EXPECT_TRUE(CeDeleteRecord(handle, record));
  EXPECT_TRUE(CloseHandle(handle));
  EXPECT_TRUE(CeDeleteDatabaseEx(&volume_, oid));
  const std::string volume = R"({"Data1": 0, "Data2": 0, "Data3": 0, "Data4": 0})";
  const std::string database = std::to_string(oid);
  const std::string number = std::to_string(record);
  EXPECT_THAT(
      file_.lines(),
      ::testing::ElementsAre(
          R"({"call": "CeOpenDatabaseEx2", "args": [)" + volume + ", " + database +
              R"(, null, {"wVersion": 1, "wNumProps": 1, "wKeyFlags": 0, "rgPropID": [302120963], "rgdwFlags": [0]},)"
              R"( 1, {"dwSize": 20, "hwnd": null, "dwFlags": 0, "hHeap": null, "dwParam": 0}],)"
              R"( "result": "@HANDLE#1"})",
          R"({"call": "CeWriteRecordProps", "args": ["@HANDLE#1", 0, 2, [{"propid": 302120963, "wFlags": 0,)"
          R"( "val": 7}, {"propid": 302317599, "wFlags": 512, "val": null}]], "result": )" +
              number + "}",
          R"({"call": "CeSeekDatabase", "args": ["@HANDLE#1", 32, {"propid": 302120963, "wFlags": 0, "val": 7}],)"
          R"( "result": )" +
              number + "}",
          R"({"call": "CeDeleteRecord", "args": ["@HANDLE#1", )" + number + R"(], "result": 1})",
          R"({"call": "CloseHandle", "args": ["@HANDLE#1"], "result": 1})",
          R"({"call": "CeDeleteDatabaseEx", "args": [)" + volume + ", " + database + R"(], "result": 1})"));
}

TEST_F(ObservedDatabases, failOnDemandAndDoNothing) {
  const HANDLE handle = openWith({1});
  std::vector<std::string> rules;
  for (const char* call : {"CeCreateDatabase", "CeCreateDatabaseEx2", "CeOpenDatabaseEx2", "CeSeekDatabase",
                           "CeReadRecordProps", "CeReadRecordPropsEx", "CeWriteRecordProps", "CeDeleteRecord",
                           "CeDeleteDatabaseEx", "CeOidGetInfoEx2"}) {
    rules.push_back(std::string(call) + "=112*1");
  }
  observe(rules);
  const auto failed = [](bool succeeded) { return !succeeded && GetLastError() == ERROR_DISK_FULL; };
  EXPECT_TRUE(failed(create(u"\\A", {}) != 0));
  CEDBASEINFOEX description{};
  EXPECT_TRUE(failed(CeCreateDatabaseEx2(&volume_, &description) != 0));
  EXPECT_TRUE(failed(open(database_) != INVALID_HANDLE_VALUE));
  EXPECT_TRUE(failed(seek(handle, CEDB_SEEK_BEGINNING, 0) != 0));
  WORD count = 0;
  BYTE* block = nullptr;
  DWORD size = 0;
  EXPECT_TRUE(failed(CeReadRecordProps(handle, 1, &count, nullptr, &block, &size) != 0));
  EXPECT_TRUE(failed(CeReadRecordPropsEx(handle, 1, &count, nullptr, &block, &size, nullptr) != 0));
  EXPECT_EQ(block, nullptr);
  EXPECT_TRUE(failed(write(handle, 0, {number(kSequence, 2)}) != 0));
  EXPECT_TRUE(failed(CeDeleteRecord(handle, records_[0]) != FALSE));
  EXPECT_TRUE(failed(CeDeleteDatabaseEx(&volume_, database_) != FALSE));
  CEOIDINFOEX information{};
  information.wVersion = 1;
  EXPECT_TRUE(failed(CeOidGetInfoEx2(&volume_, database_, &information) != FALSE));
  EXPECT_EQ(sequences(handle), (std::vector<LONG>{1}));
  EXPECT_TRUE(CloseHandle(handle));
}

}  // namespace
}  // namespace emulator::test
