#include <algorithm>

#include "emulator/pim/item_table.h"
#include "tests/emulator/snapshot_device.h"

namespace emulator::test {
namespace {

TEST(SnapshotItems, haveTheDefaultsOfANewItem) {
  SnapshotDevice device;
  device.load(R"({"contacts": [{"Oid": 17}], "appointments": [{"Oid": 18}], "tasks": [{"Oid": 19}]})");
  // Dates that nobody gave are missing.
  EXPECT_EQ(device.only("appointments"), Json::parse(R"({
    "Oid": 18, "Subject": "", "Location": "", "Categories": "", "AllDayEvent": false, "BusyStatus": 2,
    "Sensitivity": 0, "Body": "", "MeetingStatus": 0, "ReminderSet": false, "ReminderSoundFile": "",
    "ReminderMinutesBeforeStart": 15, "ReminderOptions": 0})"));
  EXPECT_EQ(device.only("tasks"), Json::parse(R"({
    "Oid": 19, "Subject": "", "Categories": "", "Importance": 1, "Complete": false, "Sensitivity": 0,
    "TeamTask": false, "Body": "", "ReminderSet": false, "ReminderSoundFile": "", "ReminderOptions": 0})"));
  Json contact = device.only("contacts");
  EXPECT_EQ(contact["Oid"], 17);
  contact.erase("Oid");
  // 50 properties less two dates.
  EXPECT_EQ(contact.size(), 48U);
  for (const auto& [key, value] : contact.items()) EXPECT_EQ(value, "") << key;
}

/// A value of the property's type that is no default and keeps the object model's limits.
Json sampleOf(const Property& property, int number) {
  switch (property.type) {
    case PropertyType::Text:
      return std::string(property.name) + " – " + std::to_string(number);
    case PropertyType::Date:
      return "2005-03-" + std::to_string(10 + number % 20) + "T09:00:00.250";
    case PropertyType::Number:
      return 100 + number;
    case PropertyType::Flag:
      break;
  }
  return property.name != "AllDayEvent";
}

class SnapshotProperties : public testing::TestWithParam<const char*> {};

TEST_P(SnapshotProperties, areWrittenReadKeptAndReset) {
  const std::string section = GetParam();
  const auto table = std::ranges::find_if(
      kItemTables, [&](const ItemTable* each) { return section == std::string(each->name) + "s"; });
  ASSERT_NE(table, kItemTables.end());
  Json full{{"Oid", 17}};
  Json reset{{"Oid", 17}};
  int number = 0;
  for (const Property& property : (*table)->properties) {
    if (property.isInternal) continue;
    full[std::string(property.name)] = sampleOf(property, ++number);
    reset[std::string(property.name)] = nullptr;
  }
  SnapshotDevice device;
  device.load(Json{{section, {full}}}.dump());
  EXPECT_EQ(device.only(section), full);
  device.load(Json{{section, {{{"Oid", 17}}}}}.dump());
  EXPECT_EQ(device.only(section), full) << "absent keys keep their values";
  const std::string dump = device.dumpText();
  EXPECT_EQ(reload(dump), dump);

  device.load(Json{{section, {reset}}}.dump());
  SnapshotDevice fresh;
  fresh.load(Json{{section, {{{"Oid", 17}}}}}.dump());
  EXPECT_EQ(device.only(section), fresh.only(section));
}

INSTANTIATE_TEST_SUITE_P(Sections, SnapshotProperties, testing::Values("contacts", "appointments", "tasks"),
                         [](const auto& parameter) { return parameter.param; });

TEST(SnapshotItems, getTheNextFreeIdentifierWhenNoneIsGiven) {
  SnapshotDevice device;
  device.load(R"({"tasks": [{"Subject": "first"}, {"Subject": "second", "Oid": null}]})");
  const Json tasks = device.dump()["tasks"];
  ASSERT_EQ(tasks.size(), 2U);
  EXPECT_EQ(tasks[0]["Subject"], "first");
  EXPECT_EQ(tasks[1]["Oid"], tasks[0]["Oid"].get<Oid>() + 1);
}

TEST(SnapshotItems, doNotTakeAnIdentifierThatALaterEntryChose) {
  SnapshotDevice device;
  device.load(R"({"tasks": [{"Subject": "a"}]})");
  const Oid next = device.only("tasks")["Oid"].get<Oid>() + 1;
  device.load(R"({"contacts": [{"FirstName": "Ann"}], "tasks": [{"Oid": )" + std::to_string(next) + "}]}");
  EXPECT_NE(device.only("contacts")["Oid"], next);
  EXPECT_EQ(device.dump()["tasks"][1]["Oid"], next);
}

TEST(SnapshotItems, areDeletedAfterEverythingElse) {
  SnapshotDevice device;
  device.load(R"({"deleted": [17], "contacts": [{"Oid": 17}, {"Oid": 18}]})");
  EXPECT_EQ(device.only("contacts")["Oid"], 18);
}

TEST(SnapshotItems, standInTheOrderOfTheirIdentifiers) {
  SnapshotDevice device;
  device.load(R"({"contacts": [{"Oid": 30, "FirstName": "A"}, {"Oid": 20, "FirstName": "C"}, {"Oid": 25}]})");
  const Json contacts = device.dump()["contacts"];
  EXPECT_EQ(contacts[0]["Oid"], 20);
  EXPECT_EQ(contacts[1]["Oid"], 25);
  EXPECT_EQ(contacts[2]["Oid"], 30);
}

TEST(SnapshotContact, hasAComposedFileAsUnlessOneIsGiven) {
  SnapshotDevice device;
  device.load(R"({"contacts": [{"Oid": 17, "FirstName": "Ann", "LastName": "Lee"}]})");
  EXPECT_EQ(device.only("contacts")["FileAs"], "Lee, Ann");
  device.load(R"({"contacts": [{"Oid": 17, "FileAs": "Annie"}]})");
  device.load(R"({"contacts": [{"Oid": 17, "LastName": "Low"}]})");
  EXPECT_EQ(device.only("contacts")["FileAs"], "Annie");
  device.load(R"({"contacts": [{"Oid": 17, "FileAs": null}]})");
  EXPECT_EQ(device.only("contacts")["FileAs"], "Low, Ann");
}

TEST(SnapshotContact, keepsTextsOfEveryKind) {
  SnapshotDevice device;
  // Composed and beyond the basic plane, control characters, and a surrogate without its partner: 0x0061 0xD800.
  device.load(R"({"contacts": [{"Oid": 17, "FirstName": "Zoë 😀", "LastName": "a\u0001\tb",
                               "Body": {"utf16": "YQAA2A=="}}]})");
  const Json contact = device.only("contacts");
  EXPECT_EQ(contact["FirstName"], "Zoë 😀");
  EXPECT_EQ(contact["LastName"], "a\x01\tb");
  EXPECT_EQ(contact["Body"], Json::parse(R"({"utf16": "YQAA2A=="})"));
  const std::string dump = device.dumpText();
  EXPECT_EQ(reload(dump), dump);
}

TEST(SnapshotAppointment, keepsItsEndWhenOnlyTheStartChanges) {
  SnapshotDevice device;
  device.load(
      R"({"appointments": [{"Oid": 18, "Start": "2005-03-14T09:00:00.000", "End": "2005-03-14T10:00:00.000"}]})");
  device.load(R"({"appointments": [{"Oid": 18, "Start": "2005-03-14T09:30:00.000"}]})");
  EXPECT_EQ(device.only("appointments")["Start"], "2005-03-14T09:30:00.000");
  EXPECT_EQ(device.only("appointments")["End"], "2005-03-14T10:00:00.000");
}

TEST(SnapshotAppointment, keepsItsDurationRatherThanEndBeforeItStarts) {
  SnapshotDevice device;
  device.load(
      R"({"appointments": [{"Oid": 18, "Start": "2005-03-14T09:00:00.000", "End": "2005-03-14T10:00:00.000"}]})");
  device.load(R"({"appointments": [{"Oid": 18, "Start": "2005-03-21T09:00:00.000"}]})");
  EXPECT_EQ(device.only("appointments")["End"], "2005-03-21T10:00:00.000");
  device.load(R"({"appointments": [{"Oid": 18, "End": "2005-03-07T10:00:00.000"}]})");
  EXPECT_EQ(device.only("appointments")["Start"], "2005-03-07T09:00:00.000");
}

TEST(SnapshotAppointment, spansWholeDaysWhenItIsAllDay) {
  SnapshotDevice device;
  device.load(R"({"appointments": [{"Oid": 18, "AllDayEvent": true, "Start": "2005-03-14T09:00:00.000",
                                    "End": "2005-03-15T10:00:00.000"}]})");
  EXPECT_EQ(device.only("appointments")["Start"], "2005-03-14T00:00:00.000");
  EXPECT_EQ(device.only("appointments")["End"], "2005-03-16T00:00:00.000");
}

TEST(SnapshotAppointment, lastsOneDayWhenItIsAllDayAndHasNoEnd) {
  SnapshotDevice device;
  device.load(R"({"appointments": [{"Oid": 18, "AllDayEvent": true, "Start": "2005-01-01T00:10:00.000"}]})");
  EXPECT_EQ(device.only("appointments")["Start"], "2005-01-01T00:00:00.000");
  EXPECT_EQ(device.only("appointments")["End"], "2005-01-02T00:00:00.000");
}

TEST(SnapshotTask, isCompletedWithoutADateOfItsOwn) {
  SnapshotDevice device;
  device.load(R"({"tasks": [{"Oid": 19, "Complete": true}]})");
  EXPECT_EQ(device.only("tasks")["Complete"], true);
  EXPECT_FALSE(device.only("tasks").contains("DateCompleted"));
}

TEST(SnapshotItems, mayBeEmptyListsForWhatHasNoStoreYet) {
  SnapshotDevice device;
  device.load(R"({"databases": [], "mail": {"Inbox": [], "Outbox": [], "Sent Items": [], "Drafts": [],
                                            "Deleted Items": []}, "deleted": []})");
  const Json dump = device.dump();
  EXPECT_EQ(dump["databases"], Json::array());
  EXPECT_EQ(dump["mail"].size(), 5U);
  EXPECT_EQ(dump["deleted"], Json::array());
}

TEST(SnapshotDump, hasEveryTopLevelKeyInOneOrder) {
  SnapshotDevice device;
  std::vector<std::string> keys;
  const Json dump = device.dump();
  for (const auto& [key, value] : dump.items()) keys.push_back(key);
  EXPECT_EQ(keys,
            (std::vector<std::string>{"module", "os_version", "time_zone", "registry", "files", "databases",
                                      "contacts", "appointments", "tasks", "mail", "deleted"}));
}

TEST(SnapshotItems, lastThroughTheLastDayWhenTheyAreAllDay) {
  SnapshotDevice device;
  device.load(R"({"appointments": [{"Oid": 18, "Start": "2999-12-31T09:00:00.000",
                                    "End": "2999-12-31T10:00:00.000", "AllDayEvent": true}]})");
  EXPECT_EQ(device.only("appointments")["End"], "3000-01-01T00:00:00.000");
  const std::string dump = device.dumpText();
  EXPECT_EQ(reload(dump), dump);
}

}  // namespace
}  // namespace emulator::test
