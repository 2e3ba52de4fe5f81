// qorv-device create, load and dump, as a person runs them.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <iterator>
#include <nlohmann/json.hpp>
#include <sys/wait.h>

#include "tests/emulator/temporary_folder.h"

namespace {

using nlohmann::ordered_json;

/// What a program that has run leaves: its exit status and what it printed.
struct Outcome {
  int status;
  std::string out;
  std::string err;
};

class DeviceCommands : public testing::Test {
 protected:
  /// Runs the program in the test's folder. The arguments are the shell's.
  Outcome run(const std::string& arguments, const std::string& input = "") {
    folder_.write("input", input);
    const std::string command = "cd '" + folder_.file("") + "' && '" QORV_DEVICE "' " + arguments +
                                " > standard_output 2> standard_error < input";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read("standard_output"), read("standard_error")};
  }

  /// Runs it and expects that it succeeds silently.
  void succeed(const std::string& arguments, const std::string& input = "") {
    const Outcome outcome = run(arguments, input);
    EXPECT_EQ(outcome.status, 0) << arguments;
    EXPECT_EQ(outcome.out + outcome.err, "") << arguments;
  }

  /// Runs it and expects that it fails with status 2 and one line.
  void fail(const std::string& arguments, const std::string& line, const std::string& input = "") {
    const Outcome outcome = run(arguments, input);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(outcome.out, "") << arguments;
    EXPECT_EQ(outcome.err, line + "\n") << arguments;
  }

  std::string dump(const std::string& device) {
    const Outcome outcome = run("dump " + device);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
  }

  bool exists(const std::string& name) { return std::filesystem::exists(folder_.file(name)); }

  std::string read(const std::string& name) {
    std::ifstream file(folder_.file(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  emulator::test::TemporaryFolder folder_;
};

/// The paths of the folders and files that a dump holds.
std::vector<std::string> pathsIn(const ordered_json& dump) {
  std::vector<std::string> paths;
  for (const ordered_json& file : dump["files"]) paths.push_back(file["path"]);
  return paths;
}

TEST_F(DeviceCommands, createMakesADeviceWithTheDefaults) {
  succeed("create device");
  const auto device = ordered_json::parse(dump("device"));
  EXPECT_EQ(device["module"], "\\Windows\\QORVAPIMGR.dll");
  EXPECT_EQ(device["os_version"], "4.20.14053");
  EXPECT_EQ(device["time_zone"]["Bias"], 0);
  EXPECT_EQ(device["time_zone"]["StandardDate"]["Month"], 0);
  EXPECT_EQ(pathsIn(device), (std::vector<std::string>{"\\Windows", "\\Temp", "\\My Documents"}));
}

TEST_F(DeviceCommands, createTakesItsOptions) {
  succeed(
      "create device --os-version 5.1.70 --time-zone Europe/Berlin --module "
      "'\\Windows\\042\\QORVAPIMGR.dll'");
  const auto device = ordered_json::parse(dump("device"));
  EXPECT_EQ(device["module"], "\\Windows\\042\\QORVAPIMGR.dll");
  EXPECT_EQ(device["os_version"], "5.1.70");
  // An hour before Greenwich; summer time from the last Sunday of March, 2:00, to the last one of October,
  // 3:00.
  EXPECT_EQ(device["time_zone"], ordered_json::parse(R"({"Bias": -60, "StandardBias": 0, "DaylightBias": -60,
    "StandardDate": {"Year": 0, "Month": 10, "DayOfWeek": 0, "Day": 5, "Hour": 3, "Minute": 0},
    "DaylightDate": {"Year": 0, "Month": 3, "DayOfWeek": 0, "Day": 5, "Hour": 2, "Minute": 0}})"));
  EXPECT_EQ(pathsIn(device),
            (std::vector<std::string>{"\\Windows", "\\Windows\\042", "\\Temp", "\\My Documents"}));
}

TEST_F(DeviceCommands, createRefusesWhatExistsAndLeavesItAlone) {
  folder_.write("taken", "text");
  fail("create taken", "taken: already exists");
  EXPECT_EQ(read("taken"), "text");
}

TEST_F(DeviceCommands, createLeavesNothingBehindAfterABadValue) {
  fail("create device --os-version 4.20", "--os-version: \"4.20\" is not of the form MAJOR.MINOR.BUILD");
  fail("create device --os-version ''", "--os-version: \"\" is not of the form MAJOR.MINOR.BUILD");
  fail("create device --module QORVAPIMGR.dll",
       "--module: \"QORVAPIMGR.dll\": a path begins with a backslash");
  fail("create device --module ''", "--module: \"\": not a path that a file can have");
  fail("create device --module '\\Windows'", "--module: \"\\Windows\": is a folder");
  const Outcome zone = run("create device --time-zone Nowhere/Land");
  EXPECT_EQ(zone.status, 2);
  EXPECT_EQ(zone.err.find("--time-zone: no time zone named \"Nowhere/Land\""), 0U) << zone.err;
  EXPECT_EQ(std::ranges::count(zone.err, '\n'), 1);
  EXPECT_FALSE(exists("device"));
  EXPECT_FALSE(exists("device-wal"));
  fail("create no/such/folder", "no/such/folder: No such file or directory");
}

TEST_F(DeviceCommands, loadReadsAFileOrStandardInput) {
  succeed("create device");
  folder_.write("snapshot.json", R"({"contacts": [{"Oid": 17, "FirstName": "Ann"}]})");
  succeed("load device snapshot.json");
  succeed("load device - --no-record", R"({"contacts": [{"Oid": 17, "LastName": "Lee"}]})");
  succeed("load --no-record device -", R"({})");
  const auto contact = ordered_json::parse(dump("device"))["contacts"][0];
  EXPECT_EQ(contact["FirstName"], "Ann");
  EXPECT_EQ(contact["LastName"], "Lee");
}

TEST_F(DeviceCommands, loadRecordsItsChangesUnlessItIsToldNotTo) {
  succeed("create device --module '\\042\\QORVAPIMGR.dll'");
  succeed("load device - --no-record", R"({"contacts": [{"Oid": 17, "FirstName": "Ann"}, {"Oid": 18}]})");
  EXPECT_EQ(ordered_json::parse(dump("device"))["databases"], ordered_json::array());
  succeed("load device -", R"({"contacts": [{"Oid": 17, "LastName": "Lee"}], "deleted": [18]})");
  const auto after = ordered_json::parse(dump("device"));
  ASSERT_EQ(after["databases"].size(), 1U);
  EXPECT_EQ(after["databases"][0]["name"], "\\QorvContactLog_042");
  std::vector<ordered_json> changes;
  for (const ordered_json& record : after["databases"][0]["records"]) changes.push_back(record["properties"]);
  EXPECT_EQ(changes,
            (std::vector<ordered_json>{
                ordered_json::parse(R"([["0x12010003", 17], ["0x12020003", 1], ["0x12030003", 2]])"),
                ordered_json::parse(R"([["0x12010003", 18], ["0x12020003", 2], ["0x12030003", 3]])")}));
  EXPECT_EQ(after["registry"]["HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern\\042"]["\\QorvContactLog_042"], 2);
}

TEST_F(DeviceCommands, loadNamesTheSnapshotAndThePlaceAndChangesNothing) {
  succeed("create device");
  const std::string before = dump("device");
  folder_.write("snapshot.json", R"({"contacts": [{"FirstName": "Ann"}], "appointments": [{}, {"Recurrence":
                                     {"Interval": "x"}, "Start": "2005-03-14T09:00:00.000"}]})");
  fail("load device snapshot.json",
       "snapshot.json: appointments[1].Recurrence.Interval: expected a number, found a text");
  fail("load device -",
       "standard input: invalid JSON: line 2, column 10: syntax error while parsing object "
       "separator - unexpected '}'; expected ':'",
       "{\n  \"files\"}");
  fail("load device -",
       "standard input: invalid JSON: line 1, column 1: syntax error while parsing value - "
       "unexpected end of input; expected '[', '{', or a literal");
  EXPECT_EQ(dump("device"), before);
}

TEST_F(DeviceCommands, refuseWhatIsNoSnapshotOrNoDevice) {
  succeed("create device");
  folder_.write("text", "no device at all");
  fail("load device missing.json", "missing.json: No such file or directory");
  fail("load device .", ".: Is a directory");
  fail("load missing -", "missing: no such file", "{}");
  fail("load text -", "text: not a device file", "{}");
  fail("dump missing", "missing: no such file");
  fail("dump text", "text: not a device file");
  fail("dump .", ".: is a directory");
  EXPECT_EQ(read("text"), "no device at all");
}

TEST_F(DeviceCommands, refuseAWrongCommandLineWithOneLine) {
  for (const char* arguments : {"", "create", "load", "load device", "dump", "dump a b", "explode device",
                                "create device --colour red", "create device --os-version"}) {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(outcome.out, "") << arguments;
    EXPECT_EQ(std::ranges::count(outcome.err, '\n'), 1) << outcome.err;
  }
  EXPECT_FALSE(exists("device"));
}

TEST_F(DeviceCommands, sayHowTheyAreUsed) {
  for (const char* arguments : {"--help", "create --help", "load --help", "dump --help"}) {
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 0) << arguments;
    EXPECT_NE(outcome.out.find("Usage: qorv-device"), std::string::npos) << outcome.out;
  }
}

TEST_F(DeviceCommands, dumpSaysWhenItCannotWrite) {
  succeed("create device");
  const std::string command =
      "cd '" + folder_.file("") + "' && '" QORV_DEVICE "' dump device > /dev/full 2> err";
  // A dump that fits in a stream's buffer, and one that does not.
  for (const std::size_t size : {0, 400'000}) {
    succeed("load device -", R"({"files": [{"path": "\\a", "data": ")" + std::string(size, 'A') + R"("}]})");
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 2);
    EXPECT_EQ(read("err"), "standard output: No space left on device\n");
  }
}

TEST_F(DeviceCommands, aDumpLoadedIntoAFreshDeviceAndDumpedAgainIsTheSame) {
  succeed("create device --time-zone America/Los_Angeles --module '\\Windows\\042\\QORVAPIMGR.dll'");
  succeed("load device -", R"({
    "registry": {"HKEY_LOCAL_MACHINE\\SOFTWARE\\Halvern\\042": {"MachineID": "id", "\\QorvContactLog_042": 7}},
    "files": [{"path": "\\My Documents\\Plan.pwi", "data": "e1xwd2k="}, {"path": "\\Temp\\a.bin", "read_only": true}],
    "contacts": [{"FirstName": "Ann", "LastName": "Lee"}, {"Oid": 17, "CompanyName": "Grün & Söhne"}],
    "appointments": [{"Start": "2005-03-14T09:00:00.000", "End": "2005-03-14T09:15:00.000", "Recurrence":
                      {"Occurrences": 10}, "Exceptions": [{"OriginalDate": "2005-03-21T00:00:00.000", "Deleted": true}]}],
    "tasks": [{"Subject": "File", "DueDate": "2005-03-15T00:00:00.000"}]})");
  const std::string first = dump("device");
  folder_.write("dump.json", first);
  succeed("create fresh");
  succeed("load fresh dump.json --no-record");
  EXPECT_EQ(dump("fresh"), first);
}

TEST_F(DeviceCommands, carryALargeFile) {
  succeed("create device");
  // In base64 four digits for three bytes.
  constexpr std::size_t kGroups = 3'000'000;
  std::string data;
  data.reserve(kGroups * 4);
  for (std::size_t i = 0; i < kGroups; ++i) data += "AQID";
  folder_.write("big.json", R"({"files": [{"path": "\\big.bin", "oid": 900, "data": ")" + data + R"("}]})");
  succeed("load device big.json");
  const auto files = ordered_json::parse(dump("device"))["files"];
  EXPECT_EQ(files.front()["path"], "\\big.bin");
  EXPECT_TRUE(files.front()["data"] == data);
}

}  // namespace
