// Opening and deleting files: dispositions, attributes, sharing and last errors.
#include <gtest/gtest.h>
#include <tuple>

#include "tests/emulator/file_test.h"

namespace emulator {
namespace {

using OpeningFiles = test::FileTest;

TEST_F(OpeningFiles, openAlwaysLeaves183ForAnExistingFileAnd0ForANewOne) {
  const HANDLE made = open(u"\\Temp\\a", OPEN_ALWAYS);
  EXPECT_NE(made, INVALID_HANDLE_VALUE);
  EXPECT_EQ(lastError(), 0u);
  write(made, "kept");
  close(made);
  const HANDLE opened = open(u"\\Temp\\a", OPEN_ALWAYS);
  EXPECT_NE(opened, INVALID_HANDLE_VALUE);
  EXPECT_EQ(lastError(), 183u);
  EXPECT_EQ(read(opened, 10), "kept");
}

TEST_F(OpeningFiles, everyOtherSuccessLeaves0) {
  for (const DWORD disposition : {CREATE_NEW, OPEN_EXISTING, CREATE_ALWAYS, TRUNCATE_EXISTING}) {
    const HANDLE file = open(u"\\Temp\\a", disposition);
    EXPECT_NE(file, INVALID_HANDLE_VALUE) << disposition;
    EXPECT_EQ(lastError(), 0u) << disposition;
    close(file);
  }
}

TEST_F(OpeningFiles, failuresTellWhy) {
  make(u"\\Temp\\file", "x");
  make(u"\\Temp\\locked", "x", FILE_ATTRIBUTE_READONLY);
  struct Failure {
    std::u16string_view path;
    DWORD disposition, access, error;
  };
  for (const Failure& failure : {
           Failure{u"", OPEN_ALWAYS, kReadWrite, 123},
           Failure{u"\\Temp\\none", OPEN_EXISTING, kReadWrite, 2},
           Failure{u"\\Temp\\none", TRUNCATE_EXISTING, kReadWrite, 2},
           Failure{u"\\none\\a", OPEN_EXISTING, kReadWrite, 3},
           Failure{u"\\none\\a", OPEN_ALWAYS, kReadWrite, 3},
           Failure{u"\\Temp\\file\\a", OPEN_ALWAYS, kReadWrite, 3},
           Failure{u"a", OPEN_ALWAYS, kReadWrite, 3},
           Failure{u"\\Temp\\locked", OPEN_EXISTING, kReadWrite, 5},
           Failure{u"\\Temp\\locked", OPEN_ALWAYS, GENERIC_WRITE, 5},
           Failure{u"\\Temp\\locked", CREATE_ALWAYS, GENERIC_READ, 5},
           Failure{u"\\Temp", OPEN_EXISTING, GENERIC_READ, 5},
           Failure{u"\\Temp", OPEN_ALWAYS, kReadWrite, 5},
           Failure{u"\\", OPEN_EXISTING, GENERIC_READ, 5},
           Failure{u"\\Temp\\file", CREATE_NEW, kReadWrite, 80},
           Failure{u"\\Temp\\a*", CREATE_NEW, kReadWrite, 123},
           Failure{u"\\Temp\\file", TRUNCATE_EXISTING, GENERIC_READ, 87},
           Failure{u"\\Temp\\file", 0, kReadWrite, 87},
           Failure{u"\\Temp\\file", 6, kReadWrite, 87},
       }) {
    EXPECT_EQ(open(failure.path, failure.disposition, failure.access), INVALID_HANDLE_VALUE);
    EXPECT_EQ(lastError(), failure.error)
        << std::string(failure.path.begin(), failure.path.end()) << ' ' << failure.disposition;
  }
  EXPECT_FALSE(node(u"\\none"));
  EXPECT_EQ(contents(u"\\Temp\\file"), "x");
  EXPECT_EQ(device().handles.count<KernelObject>(), 0u);
}

TEST_F(OpeningFiles, aReadOnlyFileCanBeRead) {
  make(u"\\Temp\\locked", "text", FILE_ATTRIBUTE_READONLY);
  const HANDLE file = open(u"\\Temp\\locked", OPEN_EXISTING, GENERIC_READ);
  EXPECT_EQ(read(file, 10), "text");
}

TEST_F(OpeningFiles, namesAreFoundWhateverTheirCaseAndKeptAsFirstSpelled) {
  make(u"\\TEMP\\Über.TXT", "text");
  EXPECT_EQ(contents(u"\\temp\\üBER.txt"), "text");
  EXPECT_EQ(device().fileTree.pathOf(node(u"\\temp\\üBER.txt")->oid), u"\\Temp\\Über.TXT");
}

TEST_F(OpeningFiles, onlyTruncatingDispositionsTruncate) {
  make(u"\\Temp\\a", "12345");
  for (const DWORD disposition : {OPEN_EXISTING, OPEN_ALWAYS}) {
    const HANDLE file = open(u"\\Temp\\a", disposition);
    write(file, "ab");
    close(file);
    EXPECT_EQ(contents(u"\\Temp\\a"), "ab345");
  }
  for (const DWORD disposition : {CREATE_ALWAYS, TRUNCATE_EXISTING}) {
    make(u"\\Temp\\a", "12345");
    close(open(u"\\Temp\\a", disposition));
    EXPECT_EQ(contents(u"\\Temp\\a"), "") << disposition;
  }
}

TEST_F(OpeningFiles, aFileKeepsItsIdentifierWhenItIsRewrittenInPlace) {
  make(u"\\Temp\\a", "1");
  const Oid oid = node(u"\\Temp\\a")->oid;
  EXPECT_EQ(device().store.kindOf(oid), ObjectKind::File);
  make(u"\\Temp\\A", "22");
  close(open(u"\\Temp\\a", TRUNCATE_EXISTING));
  EXPECT_EQ(node(u"\\Temp\\a")->oid, oid);
}

TEST_F(OpeningFiles, aFileMadeAfterADeletionHasANewIdentifier) {
  make(u"\\Temp\\a", "1");
  const Oid oid = node(u"\\Temp\\a")->oid;
  EXPECT_TRUE(files().deleteFile(u"\\Temp\\a"));
  EXPECT_EQ(device().store.kindOf(oid), std::nullopt);
  make(u"\\Temp\\a", "1");
  EXPECT_NE(node(u"\\Temp\\a")->oid, oid);
}

TEST_F(OpeningFiles, closingTwiceFails) {
  const HANDLE file = open(u"\\Temp\\a", CREATE_NEW);
  EXPECT_TRUE(close(file));
  EXPECT_FALSE(close(file));
}

TEST_F(OpeningFiles, attributesAreTold) {
  make(u"\\Temp\\locked", "", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY);
  EXPECT_EQ(files().fileAttributes(u"\\Temp"), FILE_ATTRIBUTE_DIRECTORY);
  EXPECT_EQ(files().fileAttributes(u"\\Temp\\locked"), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
  EXPECT_EQ(files().fileAttributes(u"\\Temp\\none"), 0xFFFFFFFFu);
  EXPECT_EQ(lastError(), 2u);
  EXPECT_EQ(files().fileAttributes(u"\\none\\none"), 0xFFFFFFFFu);
  EXPECT_EQ(lastError(), 3u);
}

using SharingFiles = test::FileTest;

TEST_F(SharingFiles, anUnsharedFileIsNotOpenedAgainUntilItIsClosed) {
  const HANDLE first = open(u"\\Temp\\a", CREATE_NEW, kReadWrite, 0);
  for (const DWORD share : {0u, FILE_SHARE_READ, FILE_SHARE_READ | FILE_SHARE_WRITE}) {
    EXPECT_EQ(open(u"\\Temp\\a", OPEN_EXISTING, GENERIC_READ, share), INVALID_HANDLE_VALUE);
    EXPECT_EQ(lastError(), 32u);
  }
  close(first);
  EXPECT_NE(open(u"\\Temp\\a", OPEN_EXISTING, GENERIC_READ, 0), INVALID_HANDLE_VALUE);
}

TEST_F(SharingFiles, bothOpenersMustAllowWhatTheOtherDoes) {
  struct Case {
    DWORD access, share, otherAccess, otherShare;
    bool allowed;
  };
  constexpr DWORD kBoth = FILE_SHARE_READ | FILE_SHARE_WRITE;
  make(u"\\Temp\\a", "x");
  for (const Case& c : {
           Case{GENERIC_READ, FILE_SHARE_READ, GENERIC_READ, FILE_SHARE_READ, true},
           Case{GENERIC_READ, FILE_SHARE_READ, GENERIC_READ, 0, false},
           Case{GENERIC_READ, 0, GENERIC_READ, FILE_SHARE_READ, false},
           Case{GENERIC_READ, FILE_SHARE_READ, GENERIC_WRITE, FILE_SHARE_READ, false},
           Case{GENERIC_READ, kBoth, GENERIC_WRITE, FILE_SHARE_READ, true},
           Case{GENERIC_READ, kBoth, GENERIC_WRITE, FILE_SHARE_WRITE, false},
           Case{GENERIC_WRITE, FILE_SHARE_READ, GENERIC_READ, FILE_SHARE_READ, false},
           Case{GENERIC_WRITE, FILE_SHARE_READ, GENERIC_READ, kBoth, true},
           Case{kReadWrite, kBoth, kReadWrite, kBoth, true},
       }) {
    const HANDLE first = open(u"\\Temp\\a", OPEN_EXISTING, c.access, c.share);
    ASSERT_NE(first, INVALID_HANDLE_VALUE);
    const HANDLE second = open(u"\\Temp\\a", OPEN_EXISTING, c.otherAccess, c.otherShare);
    EXPECT_EQ(second != INVALID_HANDLE_VALUE, c.allowed)
        << c.access << ' ' << c.share << ' ' << c.otherAccess << ' ' << c.otherShare;
    EXPECT_EQ(lastError(), c.allowed ? 0u : 32u);
    if (c.allowed) close(second);
    close(first);
  }
}

TEST_F(SharingFiles, truncatingNeedsTheRightToWrite) {
  make(u"\\Temp\\a", "kept");
  const HANDLE reader = open(u"\\Temp\\a", OPEN_EXISTING, GENERIC_READ, FILE_SHARE_READ);
  EXPECT_EQ(open(u"\\Temp\\a", CREATE_ALWAYS, GENERIC_READ, FILE_SHARE_READ), INVALID_HANDLE_VALUE);
  EXPECT_EQ(lastError(), 32u);
  EXPECT_EQ(read(reader, 10), "kept");
}

TEST_F(SharingFiles, openersShareOneContents) {
  constexpr DWORD kBoth = FILE_SHARE_READ | FILE_SHARE_WRITE;
  const HANDLE writer = open(u"\\Temp\\a", CREATE_NEW, GENERIC_WRITE, kBoth);
  const HANDLE reader = open(u"\\Temp\\a", OPEN_EXISTING, GENERIC_READ, kBoth);
  write(writer, "news");
  EXPECT_EQ(read(reader, 10), "news");
}

TEST_F(SharingFiles, handlesLeftOpenDoNotOutliveTheSession) {
  make(u"\\Temp\\a", "x");
  EXPECT_NE(open(u"\\Temp\\a", OPEN_EXISTING), INVALID_HANDLE_VALUE);
  EXPECT_EQ(device().handles.count<ClosableObject>(), 1u);
  reopen();
  EXPECT_EQ(device().handles.count<ClosableObject>(), 0u);
  EXPECT_NE(open(u"\\Temp\\a", OPEN_EXISTING), INVALID_HANDLE_VALUE);
}

using DeletingFiles = test::FileTest;

TEST_F(DeletingFiles, removesTheFileAndLeavesTheLastErrorAlone) {
  make(u"\\Temp\\a", "x");
  device().lastError.set(kPoison);
  EXPECT_TRUE(files().deleteFile(u"\\temp\\A"));
  EXPECT_EQ(lastError(), kPoison);
  EXPECT_FALSE(node(u"\\Temp\\a"));
}

TEST_F(DeletingFiles, failuresTellWhy) {
  make(u"\\Temp\\locked", "x", FILE_ATTRIBUTE_READONLY);
  make(u"\\Temp\\open", "x");
  open(u"\\Temp\\open", OPEN_EXISTING, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
  for (const auto& [path, error] : {std::tuple<std::u16string_view, DWORD>{u"\\Temp\\none", 2},
                                    {u"\\none\\a", 3},
                                    {u"\\Temp\\locked", 5},
                                    {u"\\Temp\\open", 32},
                                    {u"\\Temp", 5},
                                    {u"\\", 5},
                                    {u"", 123}}) {
    device().lastError.set(kPoison);
    EXPECT_FALSE(files().deleteFile(path));
    EXPECT_EQ(lastError(), error) << std::string(path.begin(), path.end());
  }
  EXPECT_TRUE(node(u"\\Temp\\locked"));
  EXPECT_TRUE(node(u"\\Temp\\open"));
}

}  // namespace
}  // namespace emulator
