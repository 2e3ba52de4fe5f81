// Searching folders, and the tree of files as a device's keeper sees it.
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/emulator/file_test.h"

namespace emulator {
namespace {

using testing::ElementsAre;

class SearchingFiles : public test::FileTest {
 protected:
  FileSearch& searches() { return device().searches; }

  std::vector<std::u16string> findAll(std::u16string_view pattern) {
    std::vector<std::u16string> names;
    WIN32_FIND_DATAW data;
    const HANDLE search = searches().findFirst(pattern, &data);
    if (search == INVALID_HANDLE_VALUE) return names;
    do {
      names.emplace_back(data.cFileName);
    } while (searches().findNext(search, &data));
    EXPECT_EQ(lastError(), 18u);
    EXPECT_TRUE(searches().close(search));
    return names;
  }
};

TEST_F(SearchingFiles, aFreshDeviceHasThreeFolders) {
  EXPECT_THAT(findAll(u"\\*"), ElementsAre(u"Windows", u"Temp", u"My Documents"));
  EXPECT_THAT(findAll(u"\\*.*"), ElementsAre(u"Windows", u"Temp", u"My Documents"));
}

TEST_F(SearchingFiles, findsByPatternWithoutRegardToCaseFoldersToo) {
  make(u"\\My Documents\\b.pwi", "");
  make(u"\\My Documents\\A.PWI", "");
  make(u"\\My Documents\\c.txt", "");
  device().fileTree.makeFolders(u"\\My Documents\\folder.pwi\\x.pwi");
  EXPECT_THAT(findAll(u"\\my documents\\*.Pwi"), ElementsAre(u"b.pwi", u"A.PWI", u"folder.pwi"));
  EXPECT_THAT(findAll(u"\\My Documents\\?.pwi"), ElementsAre(u"b.pwi", u"A.PWI"));
  EXPECT_THAT(findAll(u"\\My Documents\\C.TXT"), ElementsAre(u"c.txt"));
}

TEST_F(SearchingFiles, describesWhatItFinds) {
  make(u"\\Temp\\Plan.pwi", "12345", FILE_ATTRIBUTE_READONLY);
  WIN32_FIND_DATAW data;
  std::memset(&data, 0xCC, sizeof data);
  device().lastError.set(kPoison);
  const HANDLE search = searches().findFirst(u"\\Temp\\*", &data);
  ASSERT_NE(search, INVALID_HANDLE_VALUE);
  EXPECT_EQ(lastError(), kPoison);
  EXPECT_EQ(data.dwFileAttributes, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_EQ(data.nFileSizeHigh, 0u);
  EXPECT_EQ(data.nFileSizeLow, 5u);
  EXPECT_EQ(data.dwOID, node(u"\\Temp\\Plan.pwi")->oid);
  EXPECT_EQ(ticksOf(data.ftLastWriteTime), hostNow_);
  EXPECT_EQ(std::u16string(data.cFileName), u"Plan.pwi");
}

TEST_F(SearchingFiles, failuresTellWhyAndLeaveTheDataAlone) {
  struct Failure {
    std::u16string_view pattern;
    DWORD error;
  };
  make(u"\\Temp\\file", "");
  WIN32_FIND_DATAW poison;
  std::memset(&poison, 0xCC, sizeof poison);
  WIN32_FIND_DATAW data = poison;
  for (const Failure& failure : {Failure{u"\\My Documents\\*.pwi", 18}, Failure{u"\\Temp\\none", 18},
                                 Failure{u"\\", 18}, Failure{u"\\none\\*", 3}, Failure{u"\\Temp\\file\\*", 3},
                                 Failure{u"", 123}, Failure{u"*", 3}, Failure{u"\\T*\\a", 123}}) {
    EXPECT_EQ(searches().findFirst(failure.pattern, &data), INVALID_HANDLE_VALUE);
    EXPECT_EQ(lastError(), failure.error) << std::string(failure.pattern.begin(), failure.pattern.end());
  }
  EXPECT_EQ(std::memcmp(&data, &poison, sizeof data), 0);
  EXPECT_EQ(device().handles.count<KernelObject>(), 0u);
}

TEST_F(SearchingFiles, goesOnWhileWhatItFindsIsDeleted) {
  for (const std::u16string_view name : {u"\\Temp\\1", u"\\Temp\\2", u"\\Temp\\3"}) make(name, "");
  WIN32_FIND_DATAW data;
  const HANDLE search = searches().findFirst(u"\\Temp\\*", &data);
  int deleted = 0;
  do {
    deleted += files().deleteFile(u"\\Temp\\" + std::u16string(data.cFileName));
  } while (searches().findNext(search, &data));
  EXPECT_EQ(deleted, 3);
  EXPECT_THAT(findAll(u"\\Temp\\*"), ElementsAre());
}

TEST_F(SearchingFiles, takesSearchHandlesOnly) {
  WIN32_FIND_DATAW data;
  const HANDLE file = open(u"\\Temp\\a", CREATE_NEW);
  EXPECT_FALSE(searches().findNext(file, &data));
  EXPECT_EQ(lastError(), 6u);
  EXPECT_FALSE(searches().close(file));
  const HANDLE search = searches().findFirst(u"\\*", &data);
  EXPECT_FALSE(close(search));
  EXPECT_TRUE(searches().close(search));
  EXPECT_FALSE(searches().close(search));
  EXPECT_EQ(lastError(), 6u);
}

class FileTreeTest : public test::FileTest {
 protected:
  FileTree& tree() { return device().fileTree; }
};

TEST_F(FileTreeTest, givesThePathOfAnIdentifier) {
  make(u"\\My Documents\\Plan.pwi", "");
  EXPECT_EQ(tree().pathOf(node(u"\\my documents\\plan.pwi")->oid), u"\\My Documents\\Plan.pwi");
  EXPECT_EQ(tree().pathOf(0x7FFFFFFF), u"");
}

TEST_F(FileTreeTest, makesTheFoldersThatAreMissing) {
  EXPECT_EQ(tree().makeFolders(u"\\temp\\a\\b"), 0u);
  EXPECT_TRUE(node(u"\\Temp\\A\\B")->isFolder());
  EXPECT_EQ(device().store.kindOf(node(u"\\Temp\\A")->oid), ObjectKind::Directory);
  EXPECT_EQ(tree().makeFolders(u"\\Temp\\a\\b\\c"), 0u);
  EXPECT_EQ(tree().makeFolders(u"\\"), 0u);
  make(u"\\Temp\\file", "");
  EXPECT_EQ(tree().makeFolders(u"\\Temp\\file\\x"), 3u);
  EXPECT_EQ(tree().makeFolders(u""), 123u);
}

TEST_F(FileTreeTest, makesAFileUnderAChosenIdentifier) {
  const Oid folder = node(u"\\Temp")->oid;
  EXPECT_EQ(tree().make(folder, u"a", FILE_ATTRIBUTE_NORMAL, Oid{900}).oid, 900u);
  EXPECT_EQ(tree().pathOf(900), u"\\Temp\\a");
  EXPECT_THROW(tree().make(folder, u"b", FILE_ATTRIBUTE_NORMAL, Oid{900}), StoreError);
  EXPECT_FALSE(node(u"\\Temp\\b"));
}

TEST_F(FileTreeTest, removesAFolderWithEverythingInIt) {
  tree().makeFolders(u"\\Temp\\a\\b");
  make(u"\\Temp\\a\\b\\file", "text");
  const Oid file = node(u"\\Temp\\a\\b\\file")->oid;
  tree().remove(node(u"\\Temp\\a")->oid);
  EXPECT_FALSE(node(u"\\Temp\\a"));
  EXPECT_FALSE(tree().node(file));
  EXPECT_EQ(device().store.kindOf(file), std::nullopt);
  Cursor chunks = device().store.connection().query("SELECT count(*) FROM file_chunk");
  ASSERT_TRUE(chunks.next());
  EXPECT_EQ(chunks.get<int>(0), 0);
}

TEST_F(FileTreeTest, setsAttributesAndTimes) {
  make(u"\\Temp\\a", "");
  const Oid oid = node(u"\\Temp\\a")->oid;
  tree().setAttributes(oid, FILE_ATTRIBUTE_READONLY);
  tree().setWritten(oid, 12345);
  EXPECT_TRUE(node(u"\\Temp\\a")->isReadOnly());
  EXPECT_EQ(node(u"\\Temp\\a")->written, 12345);
}

}  // namespace
}  // namespace emulator
