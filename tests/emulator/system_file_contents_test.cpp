// Reading, writing and seeking in open files.
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <vector>

#include "tests/emulator/file_test.h"

namespace emulator {
namespace {

class FileContentsTest : public test::FileTest {
 protected:
  DWORD seek(HANDLE file, LONG distance, DWORD method) {
    return files().setFilePointer(file, distance, nullptr, method);
  }

  const HANDLE file_ = open(u"\\Temp\\a", CREATE_NEW);
};

TEST_F(FileContentsTest, twoAppendsMakeOneFile) {
  write(file_, "abc");
  close(file_);
  const HANDLE again = open(u"\\Temp\\a", OPEN_ALWAYS);
  EXPECT_EQ(seek(again, 0, FILE_END), 3u);
  write(again, "defgh");
  EXPECT_EQ(lastError(), 183u);  // what was left by the opening
  close(again);
  EXPECT_EQ(contents(u"\\Temp\\a"), "abcdefgh");
}

TEST_F(FileContentsTest, readsMoveOnAndEndWithZeroBytes) {
  write(file_, "abcdef");
  EXPECT_EQ(seek(file_, 0, FILE_BEGIN), 0u);
  device().lastError.set(kPoison);
  EXPECT_EQ(read(file_, 4), "abcd");
  EXPECT_EQ(read(file_, 4), "ef");
  EXPECT_EQ(read(file_, 4), "");
  EXPECT_EQ(seek(file_, 100, FILE_BEGIN), 100u);
  EXPECT_EQ(read(file_, 4), "");
  EXPECT_EQ(lastError(), kPoison);
}

TEST_F(FileContentsTest, aWriteBeyondTheEndFillsTheGapWithZeros) {
  write(file_, "ab");
  EXPECT_EQ(seek(file_, 2, FILE_END), 4u);
  EXPECT_EQ(node(u"\\Temp\\a")->size, 2);  // seeking alone does not grow the file
  write(file_, "c");
  seek(file_, 0, FILE_BEGIN);
  EXPECT_EQ(read(file_, 10), std::string("ab\0\0c", 5));
}

TEST_F(FileContentsTest, aGapOfManyChunksReadsAsZeros) {
  constexpr LONG kFar = 3 * ChunkedBytes::kChunkBytes + 5;
  write(file_, "a");
  seek(file_, kFar, FILE_BEGIN);
  write(file_, "z");
  seek(file_, 0, FILE_BEGIN);
  std::string expected(kFar + 1, '\0');
  expected.front() = 'a';
  expected.back() = 'z';
  EXPECT_EQ(read(file_, kFar + 100), expected);
}

TEST_F(FileContentsTest, writesAcrossChunksChangeWhatTheyCoverOnly) {
  constexpr auto kChunk = static_cast<std::size_t>(ChunkedBytes::kChunkBytes);
  std::string expected(3 * kChunk, 'x');
  write(file_, expected);
  const std::string patch(kChunk + 2, 'y');
  seek(file_, static_cast<LONG>(kChunk - 1), FILE_BEGIN);
  write(file_, patch);
  expected.replace(kChunk - 1, patch.size(), patch);
  seek(file_, 0, FILE_BEGIN);
  EXPECT_EQ(read(file_, static_cast<DWORD>(4 * kChunk)), expected);
  // A read that begins and ends within chunks.
  seek(file_, static_cast<LONG>(kChunk - 3), FILE_BEGIN);
  EXPECT_EQ(read(file_, 6), "xxyyyy");
}

TEST_F(FileContentsTest, contentsThatWereTruncatedDoNotComeBack) {
  write(file_, "secret");
  close(file_);
  const HANDLE again = open(u"\\Temp\\a", TRUNCATE_EXISTING);
  seek(again, 6, FILE_BEGIN);
  write(again, "!");
  seek(again, 0, FILE_BEGIN);
  EXPECT_EQ(read(again, 10), std::string("\0\0\0\0\0\0!", 7));
}

TEST_F(FileContentsTest, seeksFromBeginCurrentAndEnd) {
  write(file_, "0123456789");
  EXPECT_EQ(seek(file_, 4, FILE_BEGIN), 4u);
  EXPECT_EQ(seek(file_, 3, FILE_CURRENT), 7u);
  EXPECT_EQ(seek(file_, -5, FILE_CURRENT), 2u);
  EXPECT_EQ(seek(file_, -1, FILE_END), 9u);
  EXPECT_EQ(read(file_, 5), "9");
}

TEST_F(FileContentsTest, aSeekBeforeTheBeginningFailsAndStaysWhereItWas) {
  write(file_, "0123");
  seek(file_, 1, FILE_BEGIN);
  EXPECT_EQ(seek(file_, -2, FILE_CURRENT), 0xFFFFFFFFu);
  EXPECT_EQ(lastError(), 131u);
  // Without an upper half the distance is signed, so an offset of 2 GB and more lies before the beginning.
  EXPECT_EQ(seek(file_, static_cast<LONG>(0x80000000), FILE_BEGIN), 0xFFFFFFFFu);
  EXPECT_EQ(lastError(), 131u);
  EXPECT_EQ(seek(file_, 0, 3), 0xFFFFFFFFu);
  EXPECT_EQ(lastError(), 87u);
  EXPECT_EQ(read(file_, 1), "1");
}

TEST_F(FileContentsTest, seeksWith64BitsWhenTheUpperHalfIsGiven) {
  LONG high = 1;
  EXPECT_EQ(files().setFilePointer(file_, 5, &high, FILE_BEGIN), 5u);
  EXPECT_EQ(high, 1);
  EXPECT_EQ(read(file_, 1), "");
  high = -1;  // 64 bits of -6
  EXPECT_EQ(files().setFilePointer(file_, -6, &high, FILE_CURRENT), 0xFFFFFFFFu);
  EXPECT_EQ(high, 0);
  high = 0;
  EXPECT_EQ(files().setFilePointer(file_, -1, &high, FILE_BEGIN), 0xFFFFFFFFu);
  EXPECT_EQ(high, 0);
  high = 0x7FFFFFFF;
  EXPECT_EQ(files().setFilePointer(file_, -1, &high, FILE_BEGIN), 0xFFFFFFFFu);
  high = 0x7FFFFFFF;
  EXPECT_EQ(files().setFilePointer(file_, -1, &high, FILE_CURRENT), 0xFFFFFFFFu);
  EXPECT_EQ(lastError(), 87u);
}

TEST_F(FileContentsTest, aFileEndsAt4GB) {
  LONG high = 0;
  EXPECT_EQ(files().setFilePointer(file_, -2, &high, FILE_BEGIN), 0xFFFFFFFEu);
  write(file_, "z");  // the last byte there can be
  DWORD written = kPoison;
  EXPECT_FALSE(files().writeFile(file_, "z", 1, &written));
  EXPECT_EQ(written, 0u);
  EXPECT_EQ(lastError(), 112u);
  EXPECT_EQ(node(u"\\Temp\\a")->size, 0xFFFFFFFF);
}

TEST_F(FileContentsTest, readingAndWritingNeedTheirRight) {
  make(u"\\Temp\\b", "text");
  const HANDLE reader = open(u"\\Temp\\b", OPEN_EXISTING, GENERIC_READ);
  DWORD count = kPoison;
  EXPECT_FALSE(files().writeFile(reader, "x", 1, &count));
  EXPECT_EQ(lastError(), 5u);
  EXPECT_EQ(count, 0u);
  close(reader);
  const HANDLE writer = open(u"\\Temp\\b", OPEN_EXISTING, GENERIC_WRITE);
  char byte = '\xCC';
  count = kPoison;
  EXPECT_FALSE(files().readFile(writer, &byte, 1, &count));
  EXPECT_EQ(lastError(), 5u);
  EXPECT_EQ(count, 0u);
  EXPECT_EQ(byte, '\xCC');
}

TEST_F(FileContentsTest, takesNoHandleThatIsNoOpenFile) {
  close(file_);
  DWORD count = kPoison;
  char byte = 0;
  for (const HANDLE bad : {file_, INVALID_HANDLE_VALUE, HANDLE{nullptr}}) {
    device().lastError.set(kPoison);
    EXPECT_FALSE(files().readFile(bad, &byte, 1, &count));
    EXPECT_EQ(lastError(), 6u);
    EXPECT_FALSE(files().writeFile(bad, &byte, 1, &count));
    EXPECT_EQ(lastError(), 6u);
    EXPECT_EQ(seek(bad, 0, FILE_BEGIN), 0xFFFFFFFFu);
    EXPECT_EQ(lastError(), 6u);
  }
}

TEST_F(FileContentsTest, theLastWriteTimeIsTheDevicesClock) {
  device().clock.sleep(5000);
  EXPECT_EQ(node(u"\\Temp\\a")->written, hostNow_);
  write(file_, "x");
  EXPECT_EQ(node(u"\\Temp\\a")->written, device().clock.now());
  device().clock.sleep(5000);
  seek(file_, 0, FILE_BEGIN);
  read(file_, 1);
  EXPECT_EQ(node(u"\\Temp\\a")->written, device().clock.now() - 5000 * kTicksPerMillisecond);
}

TEST_F(FileContentsTest, whatWasCommittedIsThereAfterTheSession) {
  write(file_, "kept");
  reopen();
  EXPECT_EQ(contents(u"\\Temp\\a"), "kept");
}

/// Appends as the file commands do: open, seek to the end, write, close, commit.
class LargeFile : public test::FileTest {
 protected:
  static constexpr DWORD kStep = 64 * 1024;

  void append(const std::vector<BYTE>& block) {
    const HANDLE file = open(u"\\Temp\\large", OPEN_ALWAYS);
    files().setFilePointer(file, 0, nullptr, FILE_END);
    DWORD written = 0;
    ASSERT_TRUE(files().writeFile(file, block.data(), static_cast<DWORD>(block.size()), &written));
    ASSERT_EQ(written, block.size());
    close(file);
    device().commit();
  }
};

TEST_F(LargeFile, costsTheSameForEveryStepAndLittleMemory) {
  constexpr int kSteps = 1600;  // 100 MB
  constexpr std::int64_t kMemoryLimit = 8 << 20;
  append(std::vector<BYTE>(kStep));  // the statements are prepared and the caches filled
  sqlite3_memory_highwater(1);
  std::int64_t rows = 0;
  for (int step = 1; step < kSteps; ++step) {
    const std::int64_t before = device().store.connection().rowsChanged();
    append(std::vector<BYTE>(kStep, static_cast<BYTE>(step)));
    const std::int64_t changed = device().store.connection().rowsChanged() - before;
    if (step == 1) rows = changed;
    ASSERT_EQ(changed, rows) << "step " << step;
  }
  EXPECT_EQ(node(u"\\Temp\\large")->size, std::int64_t{kSteps} * kStep);

  const HANDLE file = open(u"\\Temp\\large", OPEN_EXISTING);
  std::vector<BYTE> block(kStep);
  for (int step = 0; step < kSteps; ++step) {
    DWORD length = 0;
    ASSERT_TRUE(files().readFile(file, block.data(), kStep, &length));
    ASSERT_EQ(length, kStep);
    ASSERT_EQ(block, std::vector<BYTE>(kStep, static_cast<BYTE>(step))) << "step " << step;
  }
  EXPECT_LT(sqlite3_memory_highwater(0), kMemoryLimit);
}

}  // namespace
}  // namespace emulator
