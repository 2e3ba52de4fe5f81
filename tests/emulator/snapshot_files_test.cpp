#include "tests/emulator/snapshot_device.h"

namespace emulator::test {
namespace {

Json fileAt(SnapshotDevice& device, const std::string& path) {
  const Json files = device.dump().at("files");
  for (const Json& file : files) {
    if (file["path"] == path) return file;
  }
  return nullptr;
}

TEST(SnapshotFiles, areMadeWithTheirFolders) {
  SnapshotDevice device;
  device.load(R"({"files": [{"path": "\\Temp\\one\\two\\a.bin", "oid": 900, "read_only": true,
                             "written": "2005-03-14T14:35:10.000Z", "data": "AAEC"}]})");
  EXPECT_EQ(
      fileAt(device, "\\Temp\\one\\two\\a.bin"),
      Json::parse(R"({"path": "\\Temp\\one\\two\\a.bin", "oid": 900, "directory": false, "read_only": true,
                            "written": "2005-03-14T14:35:10.000Z", "data": "AAEC"})"));
  EXPECT_EQ(fileAt(device, "\\Temp\\one\\two")["directory"], true);
  EXPECT_FALSE(fileAt(device, "\\Temp\\one\\two").contains("data"));
}

TEST(SnapshotFiles, areEmptyAndWritableUnlessToldOtherwise) {
  SnapshotDevice device;
  device.load(R"({"files": [{"path": "\\a.bin"}]})");
  const Json file = fileAt(device, "\\a.bin");
  EXPECT_EQ(file["data"], "");
  EXPECT_EQ(file["read_only"], false);
  EXPECT_EQ(file["directory"], false);
}

TEST(SnapshotFiles, areKnownByTheirPathWhateverItsCase) {
  SnapshotDevice device;
  device.load(R"({"files": [{"path": "\\Temp\\a.bin", "oid": 900, "read_only": true,
                             "written": "2005-03-14T14:35:10.000Z", "data": "AAEC"}]})");
  const Json before = fileAt(device, "\\Temp\\a.bin");
  device.load(R"({"files": [{"path": "\\TEMP\\A.BIN"}]})");
  EXPECT_EQ(fileAt(device, "\\Temp\\a.bin"), before);
  device.load(
      R"({"files": [{"path": "\\TEMP\\A.BIN", "data": "/w==", "written": "2006-01-01T00:00:00.000Z"}]})");
  Json changed = before;
  changed["data"] = "/w==";
  changed["written"] = "2006-01-01T00:00:00.000Z";
  EXPECT_EQ(fileAt(device, "\\Temp\\a.bin"), changed);
}

TEST(SnapshotFiles, areKnownByTheirIdentifierAndMoveToAnotherPath) {
  SnapshotDevice device;
  device.load(R"({"files": [{"path": "\\Temp\\a.bin", "oid": 900, "data": "AAEC"}]})");
  device.load(R"({"files": [{"oid": 900, "path": "\\Else\\b.bin"}]})");
  EXPECT_EQ(fileAt(device, "\\Temp\\a.bin"), nullptr);
  EXPECT_EQ(fileAt(device, "\\Else\\b.bin")["data"], "AAEC");
  EXPECT_EQ(fileAt(device, "\\Else\\b.bin")["oid"], 900);
}

TEST(SnapshotFiles, areResetByNull) {
  SnapshotDevice device;
  device.load(R"({"files": [{"path": "\\a.bin", "read_only": true, "written": "2005-03-14T14:35:10.000Z",
                             "data": "AAEC"}]})");
  device.load(R"({"files": [{"path": "\\a.bin", "read_only": null, "written": null, "data": null}]})");
  const Json file = fileAt(device, "\\a.bin");
  EXPECT_EQ(file["data"], "");
  EXPECT_EQ(file["read_only"], false);
  EXPECT_GT(file["written"], "2005-03-14T14:35:10.000Z");
}

TEST(SnapshotFiles, areWrittenNowWhenTheyAreGivenContents) {
  SnapshotDevice device;
  device.load(R"({"files": [{"path": "\\a.bin", "written": "2005-03-14T14:35:10.000Z", "data": "AAEC"}]})");
  device.load(R"({"files": [{"path": "\\a.bin", "data": "AA=="}]})");
  EXPECT_GT(fileAt(device, "\\a.bin")["written"], "2005-03-14T14:35:10.000Z");
}

TEST(SnapshotFiles, takeAFoldersIdentifierFromItsOwnEntryWhereverThatStands) {
  SnapshotDevice device;
  device.load(
      R"({"files": [{"path": "\\new\\a.bin", "oid": 900}, {"path": "\\new", "oid": 901, "directory": true}]})");
  EXPECT_EQ(fileAt(device, "\\new")["oid"], 901);
  EXPECT_EQ(fileAt(device, "\\new\\a.bin")["oid"], 900);
}

TEST(SnapshotFiles, doNotTakeAnIdentifierThatAnotherEntryChose) {
  SnapshotDevice device;
  device.load(R"({"files": [{"path": "\\a.bin"}]})");
  const Oid next = fileAt(device, "\\a.bin")["oid"].get<Oid>() + 1;
  device.load(R"({"files": [{"path": "\\folder\\b.bin"}], "contacts": [{"Oid": )" + std::to_string(next) +
              "}]}");
  EXPECT_EQ(device.only("contacts")["Oid"], next);
  EXPECT_NE(fileAt(device, "\\folder")["oid"], next);
  EXPECT_NE(fileAt(device, "\\folder\\b.bin")["oid"], next);
}

TEST(SnapshotFiles, areDeletedWithWhatIsInThem) {
  SnapshotDevice device;
  device.load(
      R"({"files": [{"path": "\\box", "oid": 900, "directory": true}, {"path": "\\box\\in\\a.bin"}]})");
  device.load(R"({"deleted": [900]})");
  EXPECT_EQ(fileAt(device, "\\box"), nullptr);
  EXPECT_EQ(fileAt(device, "\\box\\in\\a.bin"), nullptr);
}

TEST(SnapshotFiles, comeBackByteForByte) {
  SnapshotDevice device;
  device.load(R"({"files": [
    {"path": "\\z", "oid": 800, "directory": true, "read_only": true}, {"path": "\\z\\y.bin", "oid": 5, "data": "AAEC"},
    {"path": "\\z\\x", "oid": 4, "directory": true}, {"path": "\\z\\x\\folder.pwi", "directory": true},
    {"path": "\\My Documents\\Plan.pwi", "data": "e1xwd2k="}, {"path": "\\Grüße – 日本.txt", "data": ""},
    {"path": {"utf16": "XAAA2C4AYQA="}, "oid": 6}]})");
  const std::string dump = device.dumpText();
  EXPECT_EQ(reload(dump), dump);
}

TEST(SnapshotFiles, areNotesWhenTheControlCanReadThem) {
  SnapshotDevice device;
  device.load(R"({"files": [{"path": "\\My Documents\\Plan.pwi", "note": "Grüße\r\n"},
                            {"path": "\\My Documents\\Empty.pwi", "note": ""},
                            {"path": "\\My Documents\\Other.pwi", "data": "e1xwd2k="}]})");
  const Json plan = fileAt(device, "\\My Documents\\Plan.pwi");
  EXPECT_EQ(plan["note"], "Grüße\r\n");
  EXPECT_FALSE(plan.contains("data"));
  EXPECT_EQ(fileAt(device, "\\My Documents\\Empty.pwi")["note"], "");
  EXPECT_EQ(fileAt(device, "\\My Documents\\Other.pwi")["data"], "e1xwd2k=");
  EXPECT_EQ(reload(device.dumpText()), device.dumpText());
}

TEST(SnapshotFiles, keepANoteUntilItIsChangedOrReset) {
  SnapshotDevice device;
  device.load(
      R"({"files": [{"path": "\\a.pwi", "oid": 900, "note": "one", "written": "2005-03-14T14:35:10.000Z"}]})");
  device.load(R"({"files": [{"oid": 900, "path": "\\b.pwi"}]})");
  EXPECT_EQ(fileAt(device, "\\b.pwi")["note"], "one");
  EXPECT_EQ(fileAt(device, "\\b.pwi")["written"], "2005-03-14T14:35:10.000Z");
  device.load(R"({"files": [{"oid": 900, "note": "two"}]})");
  EXPECT_EQ(fileAt(device, "\\b.pwi")["note"], "two");
  EXPECT_GT(fileAt(device, "\\b.pwi")["written"], "2005-03-14T14:35:10.000Z");
  device.load(R"({"files": [{"oid": 900, "note": null}]})");
  EXPECT_EQ(fileAt(device, "\\b.pwi")["data"], "");
}

TEST(SnapshotFiles, letAFreshFolderHaveTheIdentifierOfADump) {
  SnapshotDevice device;
  device.load(R"({"deleted": [)" + fileAt(device, "\\Temp")["oid"].dump() + "]}");
  device.load(R"({"files": [{"path": "\\Temp", "directory": true}, {"path": "\\Temp\\a.bin"}]})");
  SnapshotDevice fresh;
  fresh.load(device.dumpText());
  EXPECT_EQ(fileAt(fresh, "\\Temp"), fileAt(device, "\\Temp"));
  EXPECT_EQ(fileAt(fresh, "\\Temp\\a.bin"), fileAt(device, "\\Temp\\a.bin"));
}

}  // namespace
}  // namespace emulator::test
