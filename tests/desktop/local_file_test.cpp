#include "desktop/local_file.h"

#include <chrono>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "desktop/input_error.h"
#include "tests/desktop/temporary_folder.h"

namespace {

using namespace desktop;

class LocalFile : public testing::Test {
 protected:
  TemporaryFolder folder;
};

TEST_F(LocalFile, isReadPieceByPiece) {
  InputFile file(folder.write("a", "0123456789"));
  EXPECT_EQ(file.size(), 10u);
  Bytes piece(4);
  file.readAt(3, piece);
  EXPECT_EQ(piece, (Bytes{'3', '4', '5', '6'}));
  EXPECT_THROW(file.readAt(8, piece), InputError);
}

TEST_F(LocalFile, mustBeThereAndBeAFile) {
  EXPECT_THROW(InputFile(folder / "none"), InputError);
  EXPECT_THROW(InputFile(folder.path()), InputError);
  EXPECT_THROW(readTextFile(folder / "none"), InputError);
}

TEST_F(LocalFile, appearsWhenItIsComplete) {
  OutputFile file(folder / "a");
  file.write(Bytes{'x', 'y'});
  EXPECT_FALSE(std::filesystem::exists(folder / "a"));
  file.commit();
  EXPECT_EQ(folder.read("a"), "xy");
  EXPECT_EQ(folder.names(), std::set<std::string>{"a"});
}

TEST_F(LocalFile, leavesNothingWhenItIsNotCompleted) {
  folder.write("a", "old");
  { OutputFile(folder / "a").write(Bytes{'x'}); }
  EXPECT_EQ(folder.read("a"), "old");
  EXPECT_EQ(folder.names(), std::set<std::string>{"a"});
}

TEST_F(LocalFile, cannotBeMadeWhereThereIsNoFolderOrWhereAFolderIs) {
  EXPECT_THROW(OutputFile(folder / "none" / "a"), InputError);
  EXPECT_THROW(OutputFile(folder.path()), InputError);
}

TEST_F(LocalFile, takesThePlaceOfRegularFilesOnly) {
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  std::filesystem::create_symlink(folder / "pipe", folder / "toPipe");
  std::filesystem::create_symlink(folder / "none", folder / "toNothing");
  std::filesystem::create_symlink(folder / "loop", folder / "loop");
  for (const char* name : {"pipe", "toPipe", "toNothing", "loop"}) {
    EXPECT_THROW(OutputFile(folder / name), InputError) << name;
  }
  EXPECT_EQ(folder.names(), (std::set<std::string>{"loop", "pipe", "toNothing", "toPipe"}));
}

TEST_F(LocalFile, isWrittenThroughALink) {
  folder.write("real/a", "old");
  std::filesystem::create_symlink("real/a", folder / "link");
  OutputFile file(folder / "link");
  file.write(Bytes{'x', 'y'});
  file.commit();
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));
  EXPECT_EQ(folder.read("real/a"), "xy");
  EXPECT_EQ(folder.names(), (std::set<std::string>{"link", "real"}));
}

TEST_F(LocalFile, keepsThePermissionsOfTheFileThatItReplaces) {
  using std::filesystem::perms;
  const perms rare = perms::owner_all | perms::group_read | perms::others_exec;
  std::filesystem::permissions(folder.write("a", "old"), rare);
  OutputFile file(folder / "a");
  file.write(Bytes{'x'});
  file.commit();
  EXPECT_EQ(folder.read("a"), "x");
  EXPECT_EQ(std::filesystem::status(folder / "a").permissions(), rare);
}

TEST_F(LocalFile, isNotTouchedWhenItHoldsTheSameText) {
  EXPECT_TRUE(writeTextFile(folder / "a", "text"));
  const auto early = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
  std::filesystem::last_write_time(folder / "a", early);
  EXPECT_FALSE(writeTextFile(folder / "a", "text"));
  EXPECT_EQ(std::filesystem::last_write_time(folder / "a"), early);
  EXPECT_TRUE(writeTextFile(folder / "a", "texts"));
  EXPECT_EQ(folder.read("a"), "texts");
}

}  // namespace
