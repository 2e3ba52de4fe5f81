#include "ink/stream_callbacks.h"

#include <algorithm>
#include <array>

#include "tests/support/agent_test.h"

namespace qorv {
namespace {

using namespace test;

template <typename Cookie>
DWORD_PTR wordOf(Cookie& cookie) {
  return reinterpret_cast<DWORD_PTR>(&cookie);
}

/// A buffer that the control lends, full of a poison.
struct Lent {
  std::array<BYTE, 16> bytes;
  LONG moved = 0x5A5A5A5A;

  Lent() { bytes.fill(0xEE); }
  explicit Lent(std::string_view text) : Lent() { std::ranges::copy(text, bytes.begin()); }
  [[nodiscard]] std::string first(std::size_t count) const { return {bytes.begin(), bytes.begin() + count}; }
};

class MemoryCallbacks : public testing::Test {
 protected:
  /// Room for six bytes and the terminator, with a guard behind it.
  MemoryCookie filling() {
    memory_.fill(0xEE);
    return {.start = memory_.data(), .current = memory_.data(), .count = 6};
  }
  std::string memory(std::size_t count) { return {memory_.begin(), memory_.begin() + count}; }

  std::array<BYTE, 10> memory_{};
};

TEST_F(MemoryCallbacks, countWhileThereIsNoMemory) {
  MemoryCookie cookie;
  for (const LONG count : {3, 1, 16}) {
    Lent lent;
    EXPECT_EQ(writeToMemory(wordOf(cookie), lent.bytes.data(), count, &lent.moved), 0u);
    EXPECT_EQ(lent.moved, count);
  }
  EXPECT_EQ(cookie.count, 20);
  EXPECT_EQ(cookie.current, nullptr);
}

TEST_F(MemoryCallbacks, fillChunkByChunkAndTerminateAtTheEnd) {
  MemoryCookie cookie = filling();
  Lent first("abcd");
  EXPECT_EQ(writeToMemory(wordOf(cookie), first.bytes.data(), 4, &first.moved), 0u);
  EXPECT_EQ(first.moved, 4);
  EXPECT_EQ(memory(6), "abcd\xEE\xEE");
  Lent second("ef");
  writeToMemory(wordOf(cookie), second.bytes.data(), 2, &second.moved);
  EXPECT_EQ(second.moved, 2);
  EXPECT_EQ(memory(10), std::string("abcdef\0\0\xEE\xEE", 10));
}

TEST_F(MemoryCallbacks, takeNoMoreThanThereIsRoomFor) {
  MemoryCookie cookie = filling();
  Lent lent("abcdefgh");
  writeToMemory(wordOf(cookie), lent.bytes.data(), 8, &lent.moved);
  EXPECT_EQ(lent.moved, 6);
  EXPECT_EQ(memory(10), std::string("abcdef\0\0\xEE\xEE", 10));
  writeToMemory(wordOf(cookie), lent.bytes.data(), 8, &lent.moved);
  EXPECT_EQ(lent.moved, 0);
  EXPECT_EQ(memory(10), std::string("abcdef\0\0\xEE\xEE", 10));
}

TEST_F(MemoryCallbacks, giveWhatIsLeft) {
  MemoryCookie cookie = filling();
  std::ranges::copy(std::string_view("abcdef"), memory_.begin());
  Lent first;
  EXPECT_EQ(readFromMemory(wordOf(cookie), first.bytes.data(), 5, &first.moved), 0u);
  EXPECT_EQ(first.moved, 5);
  EXPECT_EQ(first.first(6), "abcde\xEE");
  Lent second;
  readFromMemory(wordOf(cookie), second.bytes.data(), 5, &second.moved);
  EXPECT_EQ(second.moved, 1);
  EXPECT_EQ(second.first(2), "f\xEE");
  Lent third;
  readFromMemory(wordOf(cookie), third.bytes.data(), 5, &third.moved);
  EXPECT_EQ(third.moved, 0);
  EXPECT_EQ(third.first(1), "\xEE");
}

TEST_F(MemoryCallbacks, aNegativeCountMovesNothing) {
  MemoryCookie cookie = filling();
  Lent lent;
  readFromMemory(wordOf(cookie), lent.bytes.data(), -1, &lent.moved);
  EXPECT_EQ(lent.moved, 0);
  writeToMemory(wordOf(cookie), lent.bytes.data(), -1, &lent.moved);
  EXPECT_EQ(lent.moved, 0);
}

/// The cookie's address has the target's width: here it does not fit 32 bits.
TEST_F(MemoryCallbacks, findTheirCookieWhereverItLies) {
  const auto cookie = std::make_unique<MemoryCookie>();
  Lent lent;
  writeToMemory(wordOf(*cookie), lent.bytes.data(), 5, &lent.moved);
  EXPECT_EQ(cookie->count, 5);
}

class FileCallbacks : public AgentTest {
 protected:
  FileCallbacks() {
    perform([this] {
      file_ = CreateFileW(u"\\Temp\\a", GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    });
    cookie_.file = file_;
  }
  void TearDown() override {
    clearFaults();
    perform([this] { CloseHandle(file_); });
    AgentTest::TearDown();
  }

  DWORD run(EDITSTREAMCALLBACK callback, Lent& lent, LONG count) {
    DWORD result = 0x5A5A5A5A;
    perform([&] { result = callback(wordOf(cookie_), lent.bytes.data(), count, &lent.moved); });
    return result;
  }
  void rewind() {
    perform([this] { SetFilePointer(file_, 0, nullptr, FILE_BEGIN); });
  }

  HANDLE file_ = nullptr;
  FileCookie cookie_;
};

TEST_F(FileCallbacks, writeAndReadInChunks) {
  Lent out("abcdef");
  EXPECT_EQ(run(writeToFile, out, 6), 0u);
  EXPECT_EQ(out.moved, 6);
  rewind();
  Lent first;
  EXPECT_EQ(run(readFromFile, first, 4), 0u);
  EXPECT_EQ(first.moved, 4);
  EXPECT_EQ(first.first(5), "abcd\xEE");
  Lent second;
  run(readFromFile, second, 4);
  EXPECT_EQ(second.moved, 2);
  Lent third;
  EXPECT_EQ(run(readFromFile, third, 4), 0u);
  EXPECT_EQ(third.moved, 0);
  EXPECT_EQ(cookie_.error, 0u);
}

TEST_F(FileCallbacks, tellThePlatformsError) {
  fault("ReadFile=30");
  fault("WriteFile=112");
  Lent lent;
  EXPECT_EQ(run(readFromFile, lent, 4), 30u);
  EXPECT_EQ(cookie_.error, 30u);
  EXPECT_EQ(run(writeToFile, lent, 4), 112u);
  EXPECT_EQ(cookie_.error, 112u);
}

TEST_F(FileCallbacks, withoutAFileEverythingCountsAsWritten) {
  observeCalls();
  for (const HANDLE none : {HANDLE{nullptr}, INVALID_HANDLE_VALUE}) {
    cookie_.file = none;
    Lent lent;
    EXPECT_EQ(run(writeToFile, lent, 9), 0u);
    EXPECT_EQ(lent.moved, 9);
    EXPECT_TRUE(callNames().empty());
  }
}

}  // namespace
}  // namespace qorv
