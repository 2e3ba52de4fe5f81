// The temporary folder, and names in it.
#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "tests/emulator/file_test.h"

namespace emulator {
namespace {

class TemporaryFiles : public test::FileTest {
 protected:
  TemporaryFiles() { std::fill_n(buffer_, MAX_PATH, u'#'); }

  TempFiles& temp() { return device().tempFiles; }

  WCHAR buffer_[MAX_PATH];
};

TEST_F(TemporaryFiles, thePathIsTempUnlessTheRegistrySaysOtherwise) {
  EXPECT_EQ(temp().tempPath(MAX_PATH, buffer_), 6u);
  EXPECT_EQ(std::u16string(buffer_), u"\\temp\\");
  device().registry.put(u"HKEY_LOCAL_MACHINE\\SYSTEM\\FileSys", textValue(u"TempPath", u"\\My Documents"));
  EXPECT_EQ(temp().tempPath(MAX_PATH, buffer_), 14u);
  EXPECT_EQ(std::u16string(buffer_), u"\\My Documents\\");
}

TEST_F(TemporaryFiles, thePathIsNothingWhenTheFolderIsMissing) {
  device().fileTree.remove(node(u"\\Temp")->oid);
  EXPECT_EQ(temp().tempPath(MAX_PATH, buffer_), 0u);
  EXPECT_EQ(lastError(), 3u);
  EXPECT_EQ(buffer_[0], u'#');
}

TEST_F(TemporaryFiles, thePathTellsTheRoomThatItNeeds) {
  EXPECT_EQ(temp().tempPath(6, buffer_), 7u);
  EXPECT_EQ(buffer_[0], u'#');
  EXPECT_EQ(temp().tempPath(7, buffer_), 6u);
}

TEST_F(TemporaryFiles, aNameIsMadeOfFolderThreeCharactersAndTheNumber) {
  EXPECT_EQ(temp().tempFileName(u"\\Temp\\", u"QRVX", 0x1A2B, buffer_), 0x1A2Bu);
  EXPECT_EQ(std::u16string(buffer_), u"\\Temp\\QRV1A2B.TMP");
  EXPECT_FALSE(node(buffer_));  // a chosen number makes no file
  EXPECT_EQ(temp().tempFileName(u"\\Temp", u"Q", 0x1234000F, buffer_), 0x1234000Fu);
  EXPECT_EQ(std::u16string(buffer_), u"\\Temp\\QF.TMP");
}

TEST_F(TemporaryFiles, withoutANumberAFreeOneIsTakenAndTheFileIsMade) {
  const UINT first = temp().tempFileName(u"\\Temp", u"QRV", 0, buffer_);
  const std::u16string firstName = buffer_;
  EXPECT_NE(first, 0u);
  EXPECT_EQ(node(firstName)->size, 0);
  const UINT second = temp().tempFileName(u"\\Temp", u"QRV", 0, buffer_);
  EXPECT_NE(second, first);
  EXPECT_TRUE(node(buffer_));
  EXPECT_NE(std::u16string(buffer_), firstName);
}

TEST_F(TemporaryFiles, theNumberComesFromTheTimeAndIsNeverZero) {
  hostNow_ = 0x5ABCD * kTicksPerMillisecond;
  EXPECT_EQ(temp().tempFileName(u"\\Temp", u"QRV", 0, buffer_), 0xABCDu);
  EXPECT_EQ(std::u16string(buffer_), u"\\Temp\\QRVABCD.TMP");
  hostNow_ = 0x50000 * kTicksPerMillisecond;
  EXPECT_EQ(temp().tempFileName(u"\\Temp", u"QRV", 0, buffer_), 1u);
}

TEST_F(TemporaryFiles, aNameNeedsAFullPathOfAFolder) {
  make(u"\\Temp\\file", "");
  struct Failure {
    std::u16string folder;
    DWORD error;
  };
  for (const Failure& failure :
       {Failure{u".", 3}, Failure{u"", 123}, Failure{u"\\none", 3}, Failure{u"\\Temp\\file", 3}}) {
    for (const UINT unique : {0u, 5u}) {
      EXPECT_EQ(temp().tempFileName(failure.folder, u"QRV", unique, buffer_), 0u);
      EXPECT_EQ(lastError(), failure.error);
    }
  }
  EXPECT_EQ(temp().tempFileName(u"\\Temp", u"?*|", 0, buffer_), 0u);
  EXPECT_EQ(lastError(), 123u);
  EXPECT_EQ(buffer_[0], u'#');
}

TEST_F(TemporaryFiles, aNameThatWouldBeTooLongIsRefused) {
  const std::u16string folder = u'\\' + std::u16string(247, u'f');
  ASSERT_EQ(device().fileTree.makeFolders(folder), 0u);
  // 248 characters of folder, a backslash, QRV, at most four digits and .TMP make 260: no room for the NUL.
  EXPECT_EQ(temp().tempFileName(folder, u"QRV", 0, buffer_), 0u);
  EXPECT_EQ(lastError(), 206u);
}

TEST_F(TemporaryFiles, theRootServesToo) {
  EXPECT_EQ(temp().tempFileName(u"\\", u"QRV", 7, buffer_), 7u);
  EXPECT_EQ(std::u16string(buffer_), u"\\QRV7.TMP");
}

}  // namespace
}  // namespace emulator
