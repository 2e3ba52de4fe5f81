// What an object identifier names.
#include <cstring>

#include "tests/emulator/database_test.h"

namespace emulator::test {
namespace {

class Information : public DatabaseTest {
 protected:
  Information() {
    std::memset(&information_, 0xEE, sizeof information_);
    information_.wVersion = 1;
  }
  BOOL ask(CEOID oid) { return CeOidGetInfoEx2(&volume_, oid, &information_); }

  CEOIDINFOEX information_;
};

TEST_F(Information, ofAFile) {
  FileTree& files = device().fileTree;
  const FileNode note =
      files.make(files.locate(u"\\My Documents").node->oid, u"Plan.pwi", FILE_ATTRIBUTE_READONLY);
  files.write(note.oid, 0, Bytes(5, 1));
  ASSERT_TRUE(ask(note.oid));
  EXPECT_EQ(information_.wVersion, 1);
  EXPECT_EQ(information_.wObjType, OBJTYPE_FILE);
  EXPECT_EQ(std::u16string_view(information_.infFile.szFileName), u"\\My Documents\\Plan.pwi");
  EXPECT_EQ(information_.infFile.oidParent, note.parent);
  EXPECT_NE(information_.infFile.dwAttributes & FILE_ATTRIBUTE_READONLY, 0u);
  EXPECT_EQ(information_.infFile.dwLength, 5u);
  EXPECT_EQ(ticksOf(information_.infFile.ftLastChanged), hostNow_);
}

TEST_F(Information, ofAFolder) {
  ASSERT_TRUE(ask(device().fileTree.locate(u"\\Temp").node->oid));
  EXPECT_EQ(information_.wObjType, OBJTYPE_DIRECTORY);
  EXPECT_EQ(std::u16string_view(information_.infDirectory.szDirName), u"\\Temp");
  EXPECT_EQ(information_.infDirectory.oidParent, 0u);
  EXPECT_EQ(information_.infDirectory.dwAttributes, FILE_ATTRIBUTE_DIRECTORY);
}

TEST_F(Information, ofADatabase) {
  const CEOID oid = create(u"\\QorvContracts", {{kName, 1}, {kSequence, 5}}, 12469);
  hostNow_ += kTicksPerMinute;
  const HANDLE handle = open(oid);
  const CEOID record = write(handle, 0, {number(kSequence, 1), text(kName, u"abc")});
  write(handle, 0, {number(kSequence, 2)});
  EXPECT_TRUE(CeDeleteRecord(handle, record));
  EXPECT_TRUE(CloseHandle(handle));
  ASSERT_TRUE(ask(oid));
  EXPECT_EQ(information_.wObjType, OBJTYPE_DATABASE);
  const CEDBASEINFOEX& database = information_.infDatabase;
  EXPECT_EQ(database.wVersion, 1);
  EXPECT_EQ(database.dwFlags,
            CEDB_VALIDNAME | CEDB_VALIDTYPE | CEDB_VALIDSORTSPEC | CEDB_VALIDMODTIME | CEDB_VALIDDBFLAGS);
  EXPECT_EQ(std::u16string_view(database.szDbaseName), u"\\QorvContracts");
  EXPECT_EQ(database.dwDbaseType, 12469u);
  EXPECT_EQ(database.dwNumRecords, 1u);
  EXPECT_EQ(database.dwSize, 12u);  // one number of 4 bytes, and 8 for its identifier and length
  EXPECT_EQ(ticksOf(database.ftLastModified), hostNow_);
  ASSERT_EQ(database.wNumSortOrder, 2);
  EXPECT_EQ(database.rgSortSpecs[0].wNumProps, 1);
  EXPECT_EQ(database.rgSortSpecs[0].rgPropID[0], kName);
  EXPECT_EQ(database.rgSortSpecs[1].rgPropID[0], kSequence);
  EXPECT_EQ(database.rgSortSpecs[1].rgdwFlags[0], 5u);
}

TEST_F(Information, ofARecord) {
  EXPECT_TRUE(CloseHandle(openWith({1})));
  ASSERT_TRUE(ask(records_[0]));
  EXPECT_EQ(information_.wObjType, OBJTYPE_RECORD);
  EXPECT_EQ(information_.infRecord.oidParent, database_);
}

TEST_F(Information, ofAnItemIsThatOfARecordWithoutADatabase) {
  for (const ObjectKind kind : {ObjectKind::Contact, ObjectKind::Appointment, ObjectKind::Task}) {
    PimItem item = device().objectModel.items().make(kind);
    ASSERT_EQ(device().objectModel.items().add(item), S_OK);
    ASSERT_TRUE(ask(item.oid));
    EXPECT_EQ(information_.wObjType, OBJTYPE_RECORD);
    EXPECT_EQ(information_.infRecord.oidParent, 0u);
  }
}

TEST_F(Information, ofNothingFails) {
  for (const CEOID oid : {CEOID{0}, CEOID{12345}, ~CEOID{0}}) {
    information_.wObjType = OBJTYPE_FILE;
    EXPECT_FALSE(ask(oid));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(information_.wObjType, OBJTYPE_INVALID);
  }
}

TEST_F(Information, refusesWhatItDoesNotKnow) {
  const CEOID oid = create(u"\\A", {});
  information_.wVersion = 2;
  EXPECT_FALSE(ask(oid));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  information_.wVersion = 1;
  EXPECT_FALSE(CeOidGetInfoEx2(nullptr, oid, &information_));
  EXPECT_FALSE(CeOidGetInfoEx2(&volume_, oid, nullptr));
  CEGUID any = kInvalidVolume;
  EXPECT_TRUE(CeOidGetInfoEx2(&any, oid, &information_));
}

}  // namespace
}  // namespace emulator::test
