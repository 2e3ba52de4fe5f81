// Property databases in snapshots.
#include <cstring>
#include <set>

#include "emulator/database/record_walk.h"
#include "tests/emulator/snapshot_device.h"

namespace emulator::test {
namespace {

/// One property of every type that records have, with values at the edges.
constexpr const char* kEveryType = R"({"databases": [{
  "name": "\\Every", "oid": 900, "type": 12469, "flags": 65536,
  "sort": [{"property": "0x00010003", "flags": 1},
           {"keys": [{"property": "0x0002001F", "flags": 2}, {"property": "0x00030040", "flags": 0}], "key_flags": 0},
           {"keys": [{"property": "0x00010003", "flags": 0}], "key_flags": 512}],
  "records": [{"oid": 902, "properties": [
      ["0x00010002", -32768], ["0x00010012", 65535], ["0x00010003", -2147483648], ["0x00010013", 4294967295],
      ["0x00010005", -0.1], ["0x0001000B", true], ["0x00010040", "2005-03-14T14:35:10.1234567Z"],
      ["0x0001001F", "Grüße"], ["0x00010041", "AAEC"]]},
    {"oid": 901, "properties": [
      ["0x00010041", ""], ["0x0001001F", ""], ["0x00010040", "1601-01-01T00:00:00.0000000Z"],
      ["0x0001000B", false], ["0x00010005", "NaN"], ["0x00020005", "-Infinity"], ["0x00030005", "Infinity"],
      ["0x00020040", 9223372036854775807], ["0x00030040", "9999-12-31T23:59:59.9999999Z"],
      ["0x0002001F", {"utf16": "ANg="}]]},
    {"oid": 903, "properties": []}]}]})";

TEST(SnapshotDatabases, comeBackAsTheyWere) {
  SnapshotDevice device;
  device.load(kEveryType);
  Json expected = Json::parse(kEveryType)["databases"];
  // A dump has the records in the order of their identifiers.
  std::swap(expected[0]["records"][0], expected[0]["records"][1]);
  EXPECT_EQ(device.dump()["databases"], expected);
  EXPECT_EQ(reload(device.dumpText()), device.dumpText());
}

TEST(SnapshotDatabases, areStoredAsThePlatformHasThem) {
  SnapshotDevice device;
  device.load(kEveryType);
  DatabaseStore& store = device.device().databaseStore;
  const auto database = store.use(store.catalog().find(u"\\every"));
  ASSERT_TRUE(database);
  EXPECT_EQ(database->oid, 900u);
  EXPECT_EQ(database->type, 12469u);
  EXPECT_EQ(database->flags, CEDB_NOCOMPRESS);
  ASSERT_EQ(database->orders.size(), 3u);
  EXPECT_EQ(database->orders[1].properties[1].id, 0x00030040u);
  EXPECT_EQ(database->orders[2].keyFlags, CEDB_SORT_UNIQUE);
  const RecordProperties properties = store.records().load(902).value().properties;
  // Each value with its low byte first.
  const std::vector<Bytes> expected{{0x00, 0x80},
                                    {0xFF, 0xFF},
                                    {0x00, 0x00, 0x00, 0x80},
                                    {0xFF, 0xFF, 0xFF, 0xFF},
                                    {0x9A, 0x99, 0x99, 0x99, 0x99, 0x99, 0xB9, 0xBF},
                                    {0x01, 0x00, 0x00, 0x00}};
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(properties[i].data, expected[i]) << i;
  Ticks time = 0;
  std::memcpy(&time, properties[6].data.data(), sizeof time);
  // 147,630 days of 86,400 s and 52,510 s since 1601 are 12,755,284,510 s of 10,000,000 ticks; 1,234,567 more.
  EXPECT_EQ(time, 127'552'845'101'234'567);
  EXPECT_EQ(properties[7].data, (Bytes{'G', 0, 'r', 0, 0xFC, 0, 0xDF, 0, 'e', 0}));
  EXPECT_EQ(properties[8].data, (Bytes{0, 1, 2}));
}

TEST(SnapshotDatabases, giveNewObjectsTheNextFreeIdentifiers) {
  SnapshotDevice device;
  device.load(R"({"databases": [{"name": "\\A", "records": [{"properties": []}, {"oid": 16777236}]}]})");
  const Json entry = device.only("databases");
  std::set<Oid> oids{entry["oid"], entry["records"][0]["oid"], entry["records"][1]["oid"]};
  EXPECT_EQ(oids.size(), 3u);
  EXPECT_EQ(oids.count(16777236), 1u);
}

TEST(SnapshotDatabases, givenByNameReplaceTheOneOfThatName) {
  SnapshotDevice device;
  device.load(kEveryType);
  device.load(R"({"databases": [{"name": "\\EVERY", "oid": 900, "records": [{"oid": 901}]}]})");
  EXPECT_EQ(device.only("databases"), Json::parse(R"({"name": "\\EVERY", "oid": 900, "type": 0, "sort": [],
                            "records": [{"oid": 901, "properties": []}]})"));
  device.load(R"({"databases": [{"name": "\\Every"}]})");
  const Json entry = device.only("databases");
  EXPECT_NE(entry["oid"], 900);
  EXPECT_TRUE(entry["records"].empty());
}

TEST(SnapshotDatabases, givenByIdentifierKeepWhatTheEntryDoesNotSay) {
  SnapshotDevice device;
  device.load(kEveryType);
  Json expected = device.only("databases");
  device.load(R"({"databases": [{"oid": 900, "type": 7}]})");
  expected["type"] = 7;
  EXPECT_EQ(device.only("databases"), expected);
  device.load(R"({"databases": [{"oid": 900, "name": "\\Renamed", "flags": null}]})");
  expected["name"] = "\\Renamed";
  expected.erase("flags");
  EXPECT_EQ(device.only("databases"), expected);
  device.load(R"({"databases": [{"oid": 900, "sort": [{"property": "0x0001001F", "flags": 0}]}]})");
  expected["sort"] = Json::parse(R"([{"property": "0x0001001F", "flags": 0}])");
  EXPECT_EQ(device.only("databases"), expected);
  device.load(R"({"databases": [{"oid": 900, "type": null, "sort": null, "records": null}]})");
  EXPECT_EQ(device.only("databases"),
            Json::parse(R"({"name": "\\Renamed", "oid": 900, "type": 0, "sort": [], "records": []})"));
}

TEST(SnapshotDatabases, keepTheirRecordsInOtherOrdersWhenTheseChange) {
  SnapshotDevice device;
  device.load(R"({"databases": [{"name": "\\A", "oid": 900, "sort": [{"property": "0x00010003"}],
    "records": [{"oid": 901, "properties": [["0x00010003", 1], ["0x0001001F", "b"]]},
                {"oid": 902, "properties": [["0x00010003", 2], ["0x0001001F", "a"]]}]}]})");
  device.load(R"({"databases": [{"oid": 900, "sort": [{"property": "0x0001001F"}]}]})");
  DatabaseStore& store = device.device().databaseStore;
  const auto database = store.use(900);
  RecordWalk walk(store.connection(), 900, &database->orders.at(0));
  EXPECT_EQ(walk.fromBeginning(0)->record, 902u);
  EXPECT_EQ(walk.fromBeginning(1)->record, 901u);
}

TEST(SnapshotDatabases, andTheirRecordsAreDeletedByIdentifier) {
  SnapshotDevice device;
  device.load(kEveryType);
  device.load(R"({"deleted": [902]})");
  EXPECT_EQ(device.only("databases")["records"].size(), 2u);
  device.load(R"({"deleted": [900]})");
  EXPECT_EQ(device.dump()["databases"], Json::array());
  for (const Oid oid : {900u, 901u, 902u, 903u})
    EXPECT_EQ(device.device().store.kindOf(oid), std::nullopt) << oid;
}

TEST(SnapshotDatabases, takeTheChangesThatTheLoadItselfMakes) {
  SnapshotDevice device(true);
  // The log that comes with the snapshot is the one that the contact is recorded in, as one change.
  device.load(R"({
    "registry": {"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern": {"\\QorvContactLog": 7}},
    "databases": [{"name": "\\QorvContactLog", "oid": 901, "sort": [{"property": "0x12020003", "flags": 1}],
                   "records": [{"oid": 902, "properties": [["0x12010003", 17], ["0x12020003", 7],
                                                           ["0x12030003", 2]]}]}],
    "contacts": [{"Oid": 17, "FirstName": "Ann"}]})");
  EXPECT_EQ(
      device.only("databases")["records"],
      Json::parse(
          R"([{"oid": 902, "properties": [["0x12010003", 17], ["0x12020003", 8], ["0x12030003", 1]]}])"));
  EXPECT_EQ(device.dump()["registry"]["HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern"]["\\QorvContactLog"], 8);
  EXPECT_EQ(reload(device.dumpText()), device.dumpText());
}

TEST(SnapshotDatabases, takeASeriesAndItsExceptionsForOneChange) {
  SnapshotDevice device(true);
  device.load(
      R"({"appointments": [{"Oid": 18, "Start": "2005-03-14T09:00:00.000", "End": "2005-03-14T10:00:00.000",
    "Recurrence": {"RecurrenceType": 1, "DayOfWeekMask": 2, "Occurrences": 3},
    "Exceptions": [{"OriginalDate": "2005-03-21T00:00:00.000", "Deleted": true}]}]})");
  const Json records = device.only("databases")["records"];
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0]["properties"],
            Json::parse(R"([["0x12010003", 18], ["0x12020003", 1], ["0x12030003", 1]])"));
}

TEST(SnapshotDatabases, areMadeAgainForChangesAfterTheLogWasDeleted) {
  SnapshotDevice device(true);
  device.load(R"({"contacts": [{"Oid": 17}]})");
  const Oid log = device.only("databases")["oid"];
  device.load(R"({"contacts": [{"Oid": 18}], "deleted": [)" + std::to_string(log) + ", 17]}");
  const Json entry = device.only("databases");
  EXPECT_NE(entry["oid"], log);
  EXPECT_EQ(entry["records"].size(), 1u);
  EXPECT_EQ(entry["records"][0]["properties"][0][1], 17);
}

}  // namespace
}  // namespace emulator::test
