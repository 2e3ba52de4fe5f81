#include "emulator/system/utf16.h"
#include "tests/emulator/snapshot_device.h"

namespace emulator::test {
namespace {

TEST(SnapshotConfiguration, setsWhatIsGivenAndKeepsTheRest) {
  SnapshotDevice device;
  device.load(R"({"os_version": "5.1.70"})");
  device.load(R"({"module": "\\Program Files\\042\\QORVAPIMGR.dll"})");
  const Json dump = device.dump();
  EXPECT_EQ(dump["os_version"], "5.1.70");
  EXPECT_EQ(dump["module"], "\\Program Files\\042\\QORVAPIMGR.dll");
}

TEST(SnapshotConfiguration, resetsToTheDefaultsOfANewDevice) {
  SnapshotDevice device;
  const std::string fresh = device.dumpText();
  device.load(R"({"os_version": "5.1.70", "module": "\\Windows\\A.dll", "time_zone": {"Bias": 480}})");
  device.load(R"({"os_version": null, "module": null, "time_zone": null})");
  EXPECT_EQ(device.dumpText(), fresh);
}

TEST(SnapshotConfiguration, makesTheFolderOfTheModule) {
  SnapshotDevice device;
  device.load(R"({"module": "\\Program Files\\042\\QORVAPIMGR.dll"})");
  const auto folder = device.device().fileTree.locate(u"\\Program Files\\042").node;
  ASSERT_TRUE(folder);
  EXPECT_TRUE(folder->isFolder());
}

constexpr const char* kPacificTime = R"({"Bias": 480, "StandardBias": 0, "DaylightBias": -60,
    "StandardDate": {"Year": 0, "Month": 10, "DayOfWeek": 0, "Day": 5, "Hour": 2, "Minute": 0},
    "DaylightDate": {"Year": 0, "Month": 4, "DayOfWeek": 0, "Day": 1, "Hour": 2, "Minute": 0}})";

TEST(SnapshotTimeZone, comesBackAsItWasGiven) {
  SnapshotDevice device;
  device.load(R"({"time_zone": )" + std::string(kPacificTime) + "}");
  EXPECT_EQ(device.dump()["time_zone"], Json::parse(kPacificTime));
  const TIME_ZONE_INFORMATION zone = device.device().configuration.timeZone().information();
  EXPECT_EQ(zone.Bias, 480);
  EXPECT_EQ(zone.DaylightBias, -60);
  EXPECT_EQ(zone.StandardDate.wMonth, 10);
  EXPECT_EQ(zone.StandardDate.wDay, 5);
  EXPECT_EQ(zone.DaylightDate.wHour, 2);
}

TEST(SnapshotTimeZone, isOneValueAsAWhole) {
  SnapshotDevice device;
  device.load(R"({"time_zone": )" + std::string(kPacificTime) + "}");
  device.load(R"({"time_zone": {"Bias": -60}})");
  const TIME_ZONE_INFORMATION zone = device.device().configuration.timeZone().information();
  EXPECT_EQ(zone.Bias, -60);
  EXPECT_EQ(zone.DaylightBias, 0);
  EXPECT_EQ(zone.DaylightDate.wMonth, 0);
}

TEST(SnapshotTimeZone, keepsAChangeAtTheEndOfADay) {
  SnapshotDevice device;
  device.load(R"({"time_zone": {"Bias": 180, "DaylightBias": -60,
    "StandardDate": {"Month": 2, "DayOfWeek": 6, "Day": 3, "Hour": 23, "Minute": 59, "Second": 59, "Milliseconds": 999},
    "DaylightDate": {"Month": 10, "DayOfWeek": 6, "Day": 3, "Hour": 23, "Minute": 59, "Second": 59}}})");
  const std::string dump = device.dumpText();
  EXPECT_EQ(device.device().configuration.timeZone().information().StandardDate.wMilliseconds, 999);
  EXPECT_EQ(reload(dump), dump);
}

TEST(SnapshotRegistry, writesTextsAndNumbers) {
  SnapshotDevice device;
  device.load(
      R"({"registry": {"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern": {"MachineID": "id", "\\QorvContactLog": 7}}})");
  Registry& registry = device.device().registry;
  const auto text = registry.get(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern", u"MachineID").value();
  EXPECT_EQ(text.type, DWORD{REG_SZ});
  EXPECT_EQ(text.data, (Bytes{'i', 0, 'd', 0, 0, 0}));
  const auto number = registry.get(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern", u"\\QorvContactLog").value();
  EXPECT_EQ(number.type, DWORD{REG_DWORD});
  EXPECT_EQ(number.data, (Bytes{7, 0, 0, 0}));
}

TEST(SnapshotRegistry, dumpsKeysThatHoldValuesOrNothingAtAll) {
  SnapshotDevice device;
  EXPECT_EQ(device.dump()["registry"], Json::object());
  const char* registry = R"({"HKEY_CURRENT_USER\\Empty\\Key": {},
                             "HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern": {"MachineID": "id", "Number": 4294967295}})";
  device.load(R"({"registry": )" + std::string(registry) + "}");
  EXPECT_EQ(device.dump()["registry"], Json::parse(registry));
}

TEST(SnapshotRegistry, mergesValuesAndRemovesOnesThatAreNull) {
  SnapshotDevice device;
  device.load(R"({"registry": {"HKEY_USERS\\a": {"kept": 1, "changed": "old", "removed": 3}}})");
  device.load(R"({"registry": {"HKEY_USERS\\A": {"Changed": 2, "REMOVED": null, "never": null}}})");
  EXPECT_EQ(device.dump()["registry"], Json::parse(R"({"HKEY_USERS\\a": {"changed": 2, "kept": 1}})"));
}

TEST(SnapshotRegistry, keepsValuesOfOtherTypesAndForms) {
  SnapshotDevice device;
  Registry& registry = device.device().registry;
  const std::pair<std::u16string, RegistryValue> values[] = {
      {u"binary", {u"binary", 3, {0, 1, 2}}},
      {u"list", {u"list", 7, {'a', 0, 0, 0, 0, 0}}},
      {u"no NUL", {u"no NUL", REG_SZ, {'a', 0}}},
      {u"short number", {u"short number", REG_DWORD, {1}}},
      {u"lone surrogate", {u"lone surrogate", REG_SZ, {0x00, 0xD8, 0, 0}}},
  };
  for (const auto& [name, value] : values) registry.put(u"HKEY_USERS\\a", value);
  const std::string dump = device.dumpText();

  SnapshotDevice other;
  other.load(dump);
  for (const auto& [name, value] : values) {
    const auto copy = other.device().registry.get(u"HKEY_USERS\\a", name);
    ASSERT_TRUE(copy) << toUtf8(name);
    EXPECT_EQ(copy->type, value.type) << toUtf8(name);
    EXPECT_EQ(copy->data, value.data) << toUtf8(name);
  }
  EXPECT_EQ(other.dumpText(), dump);
}

}  // namespace
}  // namespace emulator::test
