#include "emulator/seam/current_device.h"
#include "emulator/snapshot/snapshot.h"
#include "platform/property_database.h"
#include "service/property_database.h"
#include "service/record_reader.h"
#include "tests/ink/note_test.h"

namespace qorv {
namespace {

using namespace test;

constexpr unsigned kAdded = 1;
constexpr unsigned kChanged = 2;
constexpr unsigned kDeleted = 3;

struct Entry {
  DWORD oid;
  unsigned kind;
};

class NoteChanges : public NoteTest {
 protected:
  Bytes changes(std::u16string_view contract = u"desktop") {
    return reply(request(11, kInkNote).text(contract));
  }
  Bytes commit(std::u16string_view contract = u"desktop") {
    return reply(request(12, kInkNote).text(contract));
  }
  /// A list of changes: header, then five bytes each.
  static Bytes listed(const std::vector<Entry>& entries) {
    Bytes bytes = Bytes().u8(1).u8(0).u32(entries.size()).u8(0);
    for (const Entry& entry : entries) bytes.u32(entry.oid).u8(entry.kind);
    return bytes;
  }
  static Bytes failed(const std::vector<Entry>& entries = {}) {
    Bytes bytes = Bytes().u8(0).u8(0).u32(entries.size()).u8(0);
    for (const Entry& entry : entries) bytes.u32(entry.oid).u8(entry.kind);
    return bytes;
  }

  /// What the database has: identifier and time of each record, in the order of the identifiers.
  std::vector<std::pair<DWORD, FILETIME>> recorded() {
    const emulator::CurrentDevice current(device());
    const UniqueHandle database = openStoreDatabase(u"\\qvNoteDb", 0x00010013);
    EXPECT_TRUE(database);
    std::vector<std::pair<DWORD, FILETIME>> records;
    RecordReader reader(database.get());
    for (CEOID oid = seekFirstRecord(database.get()); oid != 0; oid = seekNextRecord(database.get())) {
      const auto record = reader.readAll();
      EXPECT_EQ(record.size(), 2u);
      EXPECT_EQ(record[0].propid, 0x00010013u);
      EXPECT_EQ(record[1].propid, 0x00020040u);
      records.emplace_back(record[0].val.ulVal, record[1].val.filetime);
    }
    return records;
  }
  bool exists() {
    const emulator::CurrentDevice current(device());
    return static_cast<bool>(openStoreDatabase(u"\\qvNoteDb", 0));
  }
  CEOID databaseOid() {
    const emulator::CurrentDevice current(device());
    CEGUID volume = kSystemVolume;
    CEOID oid = 0;
    const UniqueHandle found = openDatabase(volume, oid, u"\\qvNoteDb", 0, 0, nullptr);
    EXPECT_TRUE(found);
    return oid;
  }
  void eraseDatabase() {
    const CEOID oid = databaseOid();
    const emulator::CurrentDevice current(device());
    CEGUID volume = kSystemVolume;
    EXPECT_TRUE(CeDeleteDatabaseEx(&volume, oid));
  }
};

TEST_F(NoteChanges, beforeAnyCommitCannotBeTold) {
  placeNote(u"One.pwi", u"1");
  EXPECT_EQ(changes(), failed());
  EXPECT_FALSE(exists()) << "asking makes no database";
}

TEST_F(NoteChanges, afterACommitThereAreNone) {
  placeNote(u"One.pwi", u"1");
  placeNote(u"Two.pwi", u"2");
  EXPECT_EQ(commit(), hex("01 00"));
  EXPECT_EQ(changes(), listed({}));
}

TEST_F(NoteChanges, areChangedAndDeletedOnesThenAddedOnes) {
  const DWORD same = placeNote(u"Same.pwi", u"1");
  const DWORD changed = placeNote(u"Changed.pwi", u"2");
  const DWORD deleted = placeNote(u"Deleted.pwi", u"3");
  commit();
  setWritten(changed, 1);
  device().fileTree.remove(deleted);
  const DWORD added = placeNote(u"Added.pwi", u"4");
  EXPECT_EQ(changes(), listed({{changed, kChanged}, {deleted, kDeleted}, {added, kAdded}}));
  EXPECT_EQ(changes(), listed({{changed, kChanged}, {deleted, kDeleted}, {added, kAdded}}))
      << "until a commit";
  commit();
  EXPECT_EQ(changes(), listed({}));
  EXPECT_EQ(recorded().size(), 3u);
  EXPECT_EQ(recorded()[0].first, same);
}

TEST_F(NoteChanges, byteByByte) {
  const DWORD deleted = placeNote(u"Deleted.pwi", u"3");
  commit();
  device().fileTree.remove(deleted);
  EXPECT_EQ(reply(hex("0B 05 02000000 6300")),  // list changes, note, the contract "c"
            Bytes().append(hex("01 00 01000000 00")).u32(deleted).append(hex("03")));
}

TEST_F(NoteChanges, areWhatTheDesktopWroteToo) {
  commit();
  const DWORD oid = add(noteRecord(u"Plan", u"1")).dwordAt(2);
  EXPECT_EQ(changes(), listed({{oid, kAdded}}));
  commit();
  device().clock.sleep(1000);
  change(oid, noteRecord(u"Plan", u"2"));
  EXPECT_EQ(changes(), listed({{oid, kChanged}}));
  const DWORD renamed = change(oid, noteRecord(u"Plans", u"3")).dwordAt(2);
  EXPECT_EQ(changes(), listed({{oid, kDeleted}, {renamed, kAdded}}));
}

TEST_F(NoteChanges, aNoteThatWasWrittenEarlierThanRecordedIsNotChanged) {
  const DWORD oid = placeNote(u"One.pwi", u"1");
  commit();
  setWritten(oid, -1);
  EXPECT_EQ(changes(), listed({}));
}

TEST_F(NoteChanges, aNoteThatMovedIsStillTheSame) {
  const DWORD oid = placeNote(u"One.pwi", u"1");
  commit();
  device().fileTree.move(oid, device().fileTree.locate(u"\\Temp").node->oid, u"Else.pwi");
  EXPECT_EQ(changes(), listed({}));
}

TEST_F(NoteChanges, areTheSameForEveryContract) {
  commit(u"one");
  const DWORD oid = placeNote(u"One.pwi", u"1");
  EXPECT_EQ(changes(u"two"), listed({{oid, kAdded}}));
  commit(u"");
  EXPECT_EQ(changes(u"one"), listed({}));
}

TEST_F(NoteChanges, aReadOnlyNoteIsAddedEveryTime) {
  const DWORD fixed = placeNote(u"Fixed.pwi", u"1", FILE_ATTRIBUTE_READONLY);
  commit();
  EXPECT_TRUE(recorded().empty());
  EXPECT_EQ(changes(), listed({{fixed, kAdded}}));
}

TEST_F(NoteChanges, aFolderThatIsNamedLikeANoteIsNeverAddedAndAlwaysDeleted) {
  const DWORD folder = placeFolder(u"Folder.pwi");
  commit();
  EXPECT_EQ(recorded().size(), 1u);
  EXPECT_EQ(changes(), listed({{folder, kDeleted}}));
}

TEST_F(NoteChanges, aFullListingBeforeTheCommitMakesNoDifference) {
  const DWORD oid = placeNote(u"One.pwi", u"1");
  session({request(13, kInkNote), request(12, kInkNote).text(u"c")});
  EXPECT_EQ(recorded().size(), 1u);
  setWritten(oid, 5);
  EXPECT_EQ(changes(), listed({{oid, kChanged}}));
}

TEST_F(NoteChanges, aCommitRecordsEveryNoteAndWhenItWasWritten) {
  const DWORD one = placeNote(u"One.pwi", u"1");
  const DWORD two = placeNote(u"Two.pwi", u"2");
  setWritten(two, 7);
  commit();
  const auto records = recorded();
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].first, one);
  EXPECT_EQ(emulator::ticksOf(records[0].second), hostNow_);
  EXPECT_EQ(records[1].first, two);
  EXPECT_EQ(emulator::ticksOf(records[1].second), hostNow_ + 70'000'000);
}

TEST_F(NoteChanges, aCommitMakesTheDatabaseWithTwoAscendingOrders) {
  observeCalls();
  commit();
  // Name and sort orders are given; no type.
  const auto made = calls("CeCreateDatabaseEx2")[0]["args"][1];
  EXPECT_EQ(made["dwFlags"], 5);
  EXPECT_EQ(made["szDbaseName"], "\\qvNoteDb");
  EXPECT_EQ(made["dwDbaseType"], 0);
  EXPECT_EQ(made["wNumSortOrder"], 2);
  EXPECT_EQ(made["rgSortSpecs"][0]["rgPropID"][0], 0x00010013);
  EXPECT_EQ(made["rgSortSpecs"][0]["rgdwFlags"][0], 0);
  EXPECT_EQ(made["rgSortSpecs"][1]["rgPropID"][0], 0x00020040);
  EXPECT_EQ(made["rgSortSpecs"][1]["rgdwFlags"][0], 0);
  const CEOID first = databaseOid();
  commit();
  EXPECT_EQ(calls("CeDeleteDatabaseEx")[0]["args"][1], first);
  EXPECT_NE(databaseOid(), first);
}

TEST_F(NoteChanges, aDatabaseOfAnEarlierModuleIsFoundByItsName) {
  const DWORD oid = placeNote(u"One.pwi", u"1");
  commit();
  reloadAgent();
  EXPECT_EQ(changes(), listed({}));
  reloadAgent();
  EXPECT_EQ(commit(), hex("01 00"));
  EXPECT_EQ(recorded().size(), 1u);
  EXPECT_EQ(recorded()[0].first, oid);
}

TEST_F(NoteChanges, aDatabaseThatWasDeletedMeanwhileIsMadeAnewByTheNextCommit) {
  commit();
  eraseDatabase();
  EXPECT_EQ(changes(), failed());
  EXPECT_EQ(commit(), hex("01 00"));
  EXPECT_EQ(changes(), listed({}));
}

TEST_F(NoteChanges, aDatabaseThatCannotBeMadeIsTold) {
  placeNote(u"One.pwi", u"1");
  fault("CeCreateDatabaseEx2=112");
  EXPECT_EQ(commit(), hex("00 01"));
  ASSERT_EQ(device().messageBoxes.shown().size(), 1u);
  const emulator::MessageBox& box = device().messageBoxes.shown()[0];
  EXPECT_EQ(box.text, u"Failed to create InkNote DB");
  EXPECT_EQ(box.caption, u"QorvApiMgr");
  EXPECT_EQ(box.style, 0x10000u);
  clearFaults();
  EXPECT_EQ(commit(), hex("01 00"));
}

TEST_F(NoteChanges, aDatabaseThatCannotBeDeletedCannotBeMadeAnew) {
  const DWORD oid = placeNote(u"One.pwi", u"1");
  commit();
  device().fileTree.remove(oid);
  fault("CeDeleteDatabaseEx=32");
  EXPECT_EQ(commit(), hex("00 01"));
  clearFaults();
  EXPECT_EQ(changes(), listed({{oid, kDeleted}})) << "what it had is still there";
}

TEST_F(NoteChanges, aCommitThatIsCutShortChangesNothing) {
  const DWORD oid = placeNote(u"One.pwi", u"1");
  commit();
  device().fileTree.remove(oid);
  EXPECT_EQ(reply(request(12, kInkNote)), hex("00 01"));
  EXPECT_EQ(reply(request(12, kInkNote).u32(8).u32(0)), hex("00 01"));
  EXPECT_EQ(recorded().size(), 1u);
}

TEST_F(NoteChanges, withoutTheFirstOpeningOnlyAddedOnesAreListed) {
  const DWORD deleted = placeNote(u"Deleted.pwi", u"1");
  commit();
  device().fileTree.remove(deleted);
  const DWORD added = placeNote(u"Added.pwi", u"2");
  fault("CeOpenDatabaseEx2#1=8*1");
  EXPECT_EQ(changes(), listed({{added, kAdded}}));
}

TEST_F(NoteChanges, withoutTheSecondOpeningTheListHasFailed) {
  const DWORD deleted = placeNote(u"Deleted.pwi", u"1");
  commit();
  device().fileTree.remove(deleted);
  placeNote(u"Added.pwi", u"2");
  fault("CeOpenDatabaseEx2#2=8*1");
  EXPECT_EQ(changes(), failed({{deleted, kDeleted}}));
}

TEST_F(NoteChanges, opensTheDatabaseWithoutAnOrderThenByIdentifier) {
  commit();
  observeCalls();
  changes();
  const auto opened = calls("CeOpenDatabaseEx2");
  ASSERT_EQ(opened.size(), 2u);
  EXPECT_EQ(opened[0]["args"][3], nullptr);
  EXPECT_EQ(opened[1]["args"][3]["rgPropID"][0], 0x00010013);
  EXPECT_EQ(opened[1]["args"][3]["wNumProps"], 1);
}

TEST_F(NoteChanges, goByPositionThroughTheDatabase) {
  placeNote(u"One.pwi", u"1");
  placeNote(u"Two.pwi", u"2");
  commit();
  observeCalls();
  changes();
  std::vector<DWORD> positions;
  std::size_t byValue = 0;
  for (const auto& call : calls("CeSeekDatabase")) {
    if (call["args"][1] == 2) positions.push_back(call["args"][2]);
    if (call["args"][1] == 0x20) ++byValue;
  }
  EXPECT_EQ(positions, (std::vector<DWORD>{0, 1, 2}));
  EXPECT_EQ(byValue, 2u) << "each note is looked up";
}

TEST_F(NoteChanges, passOverARecordThatCannotBeRead) {
  const DWORD one = placeNote(u"One.pwi", u"1");
  const DWORD two = placeNote(u"Two.pwi", u"2");
  commit();
  device().fileTree.remove(one);
  device().fileTree.remove(two);
  fault("CeReadRecordProps#1=1018*1");
  EXPECT_EQ(changes(), listed({{two, kDeleted}}));
}

TEST_F(NoteChanges, aRecordOfNumberZeroIsADeletedNoteAndOneWithoutANumberIsNone) {
  emulator::loadSnapshot(device(), R"({"databases": [{"name": "\\qvNoteDb", "type": 0,
           "sort": [{"property": "0x00010013", "flags": 0}, {"property": "0x00020040", "flags": 0}],
           "records": [{"properties": [["0x00010013", 0]]},
                       {"properties": [["0x00020040", "2005-03-14T13:35:10.0000000Z"]]}]}]})");
  EXPECT_EQ(changes(), listed({{0, 3}}));
}

TEST_F(NoteChanges, aListThatJustFitsTheReplyIsWholeAndOneMoreIsNot) {
  // (0x36000 - 7) / 5 = 44235 entries fit.
  for (const unsigned count : {44235u, 44236u}) {
    std::string records;
    for (unsigned i = 0; i < count; ++i) {
      records += std::string(i > 0 ? "," : "") + R"({"properties": [["0x00010013", )" +
                 std::to_string(1'000'000 + i) + "]]}";
    }
    emulator::loadSnapshot(
        device(),
        R"({"databases": [{"name": "\\qvNoteDb", "type": 0, "sort": [{"property": "0x00010013", "flags": 0}],
             "records": [)" +
            records + "]}]}");
    reloadAgent();  // it knows the database by its identifier, and this is another one
    const Bytes answer = changes();
    EXPECT_EQ(answer.slice(0, 7), Bytes().u8(count == 44235 ? 1 : 0).u8(0).u32(44235).u8(0));
    EXPECT_EQ(answer.size(), 7u + 5u * 44235u);
  }
}

TEST_F(NoteChanges, theWalkForAddedOnesEndsAtAnyFailure) {
  commit();
  const DWORD one = placeNote(u"One.pwi", u"1");
  placeNote(u"Two.pwi", u"2");
  fault("FindNextFileW=5");
  observeCalls();
  EXPECT_EQ(changes(), listed({{one, kAdded}}));
  EXPECT_EQ(callNames("FindNextFileW").size(), 1u);
}

TEST_F(NoteChanges, theWalkOfACommitGoesOnAfterAnyFailureButTheEnd) {
  placeNote(u"One.pwi", u"1");
  placeNote(u"Two.pwi", u"2");
  fault("FindNextFileW#1=5*3");
  EXPECT_EQ(commit(), hex("01 00"));
  EXPECT_EQ(recorded().size(), 2u);
  clearFaults();
  fault("FindNextFileW#1=18*1");
  commit();
  EXPECT_EQ(recorded().size(), 1u);
}

TEST_F(NoteChanges, aCommitWhoseRecordsCannotBeWrittenSucceedsAndTheNotesAreAddedAgain) {
  const DWORD one = placeNote(u"One.pwi", u"1");
  fault("CeWriteRecordProps=112");
  EXPECT_EQ(commit(), hex("01 00"));
  clearFaults();
  EXPECT_EQ(changes(), listed({{one, kAdded}}));
}

TEST_F(NoteChanges, theContractsOfNotesAreKeptLikeAllOthers) {
  EXPECT_EQ(reply(request(10, kInkNote).text(u"desktop")), hex("00 01"));
  EXPECT_EQ(reply(request(8, kInkNote).text(u"desktop")), hex("01 00"));
  EXPECT_EQ(reply(request(10, kInkNote).text(u"desktop")), hex("01 00"));
  EXPECT_EQ(reply(request(9, kInkNote).text(u"desktop")), hex("01 00"));
}

}  // namespace
}  // namespace qorv
