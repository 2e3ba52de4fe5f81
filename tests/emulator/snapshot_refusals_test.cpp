// Every kind of refusal, as facts in a file: a snapshot, and on the next line the words that refuse it.
#include <fstream>
#include <vector>

#include "tests/emulator/snapshot_device.h"

namespace emulator::test {
namespace {

struct Refusal {
  std::string snapshot;
  std::string reason;
};

/// Empty lines and lines that begin with # are between the facts.
std::vector<Refusal> readRefusals() {
  std::ifstream file(QORV_TEST_DATA "/snapshot_refusals.txt");
  std::vector<Refusal> refusals;
  for (std::string line; std::getline(file, line);) {
    if (line.empty() || line.front() == '#') continue;
    std::string reason;
    std::getline(file, reason);
    refusals.push_back({line, reason.substr(reason.find_first_not_of(' '))});
  }
  return refusals;
}

/// What the snapshots of the file find on the device.
constexpr const char* kDevice = R"({
  "files": [{"path": "\\My Documents\\a.txt", "oid": 900, "data": "AAEC"},
            {"path": "\\Box", "oid": 901, "directory": true}],
  "databases": [{"name": "\\Log", "oid": 910, "sort": [{"property": "0x12020003", "flags": 1}],
                 "records": [{"oid": 911, "properties": [["0x12020003", 1]]},
                             {"oid": 912, "properties": [["0x12020003", 1]]}]}],
  "contacts": [{"Oid": 17, "FirstName": "Ann"}],
  "appointments": [{"Oid": 18, "Subject": "Series",
                    "Start": "2005-03-14T09:00:00.000", "End": "2005-03-14T10:00:00.000",
                    "Recurrence": {"RecurrenceType": 1, "DayOfWeekMask": 2, "Occurrences": 3}}],
  "tasks": [{"Oid": 19, "Subject": "File"}]})";

TEST(SnapshotRefusal, saysWhatAndWhereAndChangesNothing) {
  SnapshotDevice device;
  device.load(kDevice);
  const std::string before = device.dumpText();
  const auto refusals = readRefusals();
  EXPECT_GT(refusals.size(), 60U);
  for (const Refusal& refusal : refusals) {
    EXPECT_EQ(device.refusal(refusal.snapshot), refusal.reason) << refusal.snapshot;
    EXPECT_EQ(device.dumpText(), before) << refusal.snapshot;
  }
}

TEST(SnapshotRefusal, undoesEverythingThatCameBefore) {
  SnapshotDevice device;
  device.load(kDevice);
  const std::string before = device.dumpText();
  EXPECT_EQ(device.refusal(R"({
    "module": "\\Windows\\042\\QORVAPIMGR.dll", "os_version": "5.1.1", "time_zone": {"Bias": -60},
    "registry": {"HKEY_LOCAL_MACHINE\\SOFTWARE": {"a": 1}},
    "files": [{"path": "\\New\\b.bin", "data": "AAEC"}, {"oid": 900, "data": ""}],
    "contacts": [{"FirstName": "Bo"}, {"Oid": 17, "FirstName": "Changed"}],
    "appointments": [{"Oid": 18, "Recurrence": null}], "tasks": [{"Oid": 20}],
    "deleted": [19, 21]})"),
            "deleted[1]: no object has this identifier");
  EXPECT_EQ(device.dumpText(), before);
  // Nor did it use up an identifier.
  SnapshotDevice other;
  other.load(kDevice);
  for (SnapshotDevice* each : {&device, &other}) each->load(R"({"tasks": [{"Subject": "Next"}]})");
  EXPECT_EQ(device.dump()["tasks"], other.dump()["tasks"]);
}

}  // namespace
}  // namespace emulator::test
