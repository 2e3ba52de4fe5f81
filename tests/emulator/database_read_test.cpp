// Reading the properties of a record: chosen ones and all, into the caller's buffer and a new block.
#include <cstring>
#include <gmock/gmock.h>

#include "tests/emulator/database_test.h"

namespace emulator::test {
namespace {

constexpr CEPROPID kBlob = 0x12060041;
constexpr CEPROPID kTime = 0x12070040;
constexpr CEPROPID kFlag = 0x1208000B;
constexpr CEPROPID kReal = 0x12090005;
constexpr CEPROPID kShort = 0x120A0002;
constexpr CEPROPID kWord = 0x120B0012;
constexpr CEPROPID kNone = 0x7777001F;

class Read : public DatabaseTest {
 protected:
  Read() {
    database_ = create(u"\\Log", {{kSequence, 0}});
    handle_ = open(database_, kSequence);
    BYTE bytes[] = {9, 8, 7, 6, 5};
    CEPROPVAL blob{.propid = kBlob, .wLenData = 0, .wFlags = 0, .val = {.blob = {sizeof bytes, bytes}}};
    CEPROPVAL time{.propid = kTime, .wLenData = 0, .wFlags = 0, .val = {.filetime = {1, 2}}};
    CEPROPVAL flag{.propid = kFlag, .wLenData = 0, .wFlags = 0, .val = {.boolVal = 5}};
    CEPROPVAL real{.propid = kReal, .wLenData = 0, .wFlags = 0, .val = {.dblVal = -0.25}};
    CEPROPVAL small{.propid = kShort, .wLenData = 0, .wFlags = 0, .val = {.iVal = -2}};
    CEPROPVAL word{.propid = kWord, .wLenData = 0, .wFlags = 0, .val = {.uiVal = 65535}};
    record_ =
        write(handle_, 0, {number(kSequence, -9), text(kName, u"Ann"), blob, time, flag, real, small, word});
    EXPECT_NE(record_, 0u);
  }
  ~Read() override { EXPECT_TRUE(CloseHandle(handle_)); }

  HANDLE handle_ = nullptr;
  CEOID record_ = 0;
};

/// Every byte of what a call may write is poisoned before it.
struct Reading {
  BYTE* block = nullptr;
  DWORD size = kPoison;
  WORD count = 0x7777;

  const CEPROPVAL& at(std::size_t place) const { return reinterpret_cast<const CEPROPVAL*>(block)[place]; }
  bool holds(const void* address, std::size_t bytes) const {
    const auto* const first = static_cast<const BYTE*>(address);
    return first >= block + count * sizeof(CEPROPVAL) && first + bytes <= block + size;
  }
};

TEST_F(Read, ofEverythingGivesAllPropertiesAsTheyWereWritten) {
  Reading reading;
  ASSERT_EQ(
      CeReadRecordProps(handle_, CEDB_ALLOWREALLOC, &reading.count, nullptr, &reading.block, &reading.size),
      record_);
  ASSERT_EQ(reading.count, 8);
  std::vector<CEPROPID> ids;
  for (std::size_t i = 0; i < 8; ++i) {
    ids.push_back(reading.at(i).propid);
    EXPECT_EQ(reading.at(i).wFlags, 0) << i;
  }
  EXPECT_THAT(ids, testing::ElementsAre(kSequence, kName, kBlob, kTime, kFlag, kReal, kShort, kWord));
  EXPECT_EQ(reading.at(0).val.lVal, -9);
  EXPECT_EQ(std::u16string_view(reading.at(1).val.lpwstr), u"Ann");
  EXPECT_TRUE(reading.holds(reading.at(1).val.lpwstr, 8));
  const CEBLOB& blob = reading.at(2).val.blob;
  EXPECT_THAT(std::vector<BYTE>(blob.lpb, blob.lpb + blob.dwCount), testing::ElementsAre(9, 8, 7, 6, 5));
  EXPECT_TRUE(reading.holds(blob.lpb, blob.dwCount));
  EXPECT_EQ(reading.at(3).val.filetime.dwLowDateTime, 1u);
  EXPECT_EQ(reading.at(3).val.filetime.dwHighDateTime, 2u);
  EXPECT_EQ(reading.at(4).val.boolVal, TRUE);
  EXPECT_EQ(reading.at(5).val.dblVal, -0.25);
  EXPECT_EQ(reading.at(6).val.iVal, -2);
  EXPECT_EQ(reading.at(7).val.uiVal, 65535);
  // The values, four characters and a blob of five bytes that ends at an even address.
  EXPECT_EQ(reading.size, 8 * sizeof(CEPROPVAL) + 8 + 6);
  EXPECT_EQ(LocalFree(reading.block), nullptr);
}

TEST_F(Read, ofChosenPropertiesKeepsTheirOrderAndMarksTheMissingOnes) {
  Reading reading;
  CEPROPID ids[] = {kName, kNone, kSequence, kName};
  reading.count = 4;
  ASSERT_EQ(CeReadRecordProps(handle_, CEDB_ALLOWREALLOC, &reading.count, ids, &reading.block, &reading.size),
            record_);
  EXPECT_EQ(reading.count, 4);
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(reading.at(i).propid, ids[i]);
    EXPECT_EQ(reading.at(i).wFlags, i == 1 ? CEDB_PROPNOTFOUND : 0);
  }
  EXPECT_EQ(std::u16string_view(reading.at(3).val.lpwstr), u"Ann");
  EXPECT_EQ(LocalFree(reading.block), nullptr);
}

TEST_F(Read, takesAPropertyOfAnotherTypeForAnother) {
  Reading reading;
  CEPROPID ids[] = {(kSequence & 0xFFFF0000) | CEVT_UI4};
  reading.count = 1;
  EXPECT_EQ(CeReadRecordProps(handle_, CEDB_ALLOWREALLOC, &reading.count, ids, &reading.block, &reading.size),
            0u);
  EXPECT_EQ(GetLastError(), ERROR_NO_DATA);
  LocalFree(reading.block);
}

TEST_F(Read, ofOnlyMissingPropertiesFailsAndFillsTheBlock) {
  Reading reading;
  CEPROPID ids[] = {kNone};
  reading.count = 1;
  EXPECT_EQ(CeReadRecordProps(handle_, CEDB_ALLOWREALLOC, &reading.count, ids, &reading.block, &reading.size),
            0u);
  EXPECT_EQ(GetLastError(), ERROR_NO_DATA);
  ASSERT_NE(reading.block, nullptr);
  EXPECT_EQ(reading.size, sizeof(CEPROPVAL));
  EXPECT_EQ(reading.at(0).propid, kNone);
  EXPECT_EQ(reading.at(0).wFlags, CEDB_PROPNOTFOUND);
  EXPECT_EQ(LocalFree(reading.block), nullptr);
}

TEST_F(Read, reallocatesTheBlockOfAnEarlierRead) {
  Reading reading;
  CEPROPID id = kSequence;
  reading.count = 1;
  ASSERT_EQ(CeReadRecordProps(handle_, CEDB_ALLOWREALLOC, &reading.count, &id, &reading.block, &reading.size),
            record_);
  ASSERT_EQ(
      CeReadRecordProps(handle_, CEDB_ALLOWREALLOC, &reading.count, nullptr, &reading.block, &reading.size),
      record_);
  EXPECT_EQ(reading.count, 8);
  EXPECT_EQ(device().memory.liveBlocks(), 1u);
  EXPECT_EQ(LocalFree(reading.block), nullptr);
}

TEST_F(Read, reallocatesABlockOfTheCaller) {
  Reading reading;
  reading.block = static_cast<BYTE*>(LocalAlloc(0, 2));
  reading.size = 2;
  EXPECT_EQ(
      CeReadRecordProps(handle_, CEDB_ALLOWREALLOC, &reading.count, nullptr, &reading.block, &reading.size),
      record_);
  EXPECT_EQ(device().memory.liveBlocks(), 1u);
  EXPECT_EQ(LocalFree(reading.block), nullptr);
}

TEST_F(Read, refusesToReallocateWhatIsNoBlock) {
  BYTE onStack[8] = {};
  Reading reading;
  reading.block = onStack;
  EXPECT_EQ(
      CeReadRecordProps(handle_, CEDB_ALLOWREALLOC, &reading.count, nullptr, &reading.block, &reading.size),
      0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(reading.block, onStack);
}

TEST_F(Read, takesTheHeapThatItIsGiven) {
  for (const HANDLE heap : {HANDLE{}, GetProcessHeap(), reinterpret_cast<HANDLE>(std::uintptr_t{0x5000})}) {
    Reading reading;
    ASSERT_EQ(CeReadRecordPropsEx(handle_, CEDB_ALLOWREALLOC, &reading.count, nullptr, &reading.block,
                                  &reading.size, heap),
              record_);
    EXPECT_TRUE(HeapFree(heap == nullptr ? GetProcessHeap() : heap, 0, reading.block));
  }
}

TEST_F(Read, fillsTheCallersBuffer) {
  BYTE buffer[2 * sizeof(CEPROPVAL) + 8];
  Reading reading;
  reading.block = buffer;
  reading.size = sizeof buffer;
  CEPROPID ids[] = {kName, kSequence};
  reading.count = 2;
  ASSERT_EQ(CeReadRecordProps(handle_, 0, &reading.count, ids, &reading.block, &reading.size), record_);
  EXPECT_EQ(reading.block, buffer);
  EXPECT_EQ(reading.size, sizeof buffer);
  EXPECT_EQ(std::u16string_view(reading.at(0).val.lpwstr), u"Ann");
}

TEST_F(Read, tellsHowMuchABufferLacks) {
  BYTE buffer[2 * sizeof(CEPROPVAL) + 7];
  std::memset(buffer, 0xEE, sizeof buffer);
  Reading reading;
  reading.block = buffer;
  reading.size = sizeof buffer;
  CEPROPID ids[] = {kName, kSequence};
  reading.count = 2;
  EXPECT_EQ(CeReadRecordProps(handle_, 0, &reading.count, ids, &reading.block, &reading.size), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
  EXPECT_EQ(reading.size, sizeof buffer + 1);
  EXPECT_THAT(buffer, testing::Each(0xEE));
  reading.block = nullptr;
  EXPECT_EQ(CeReadRecordProps(handle_, 0, &reading.count, ids, &reading.block, &reading.size), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
}

TEST_F(Read, givesEmptyTextsAndBlobs) {
  CEPROPVAL blob{.propid = kBlob, .wLenData = 0, .wFlags = 0, .val = {.blob = {0, nullptr}}};
  ASSERT_EQ(write(handle_, record_, {text(kName, u""), blob}), record_);
  Reading reading;
  CEPROPID ids[] = {kName, kBlob};
  reading.count = 2;
  ASSERT_EQ(CeReadRecordProps(handle_, CEDB_ALLOWREALLOC, &reading.count, ids, &reading.block, &reading.size),
            record_);
  EXPECT_EQ(std::u16string_view(reading.at(0).val.lpwstr), u"");
  EXPECT_EQ(reading.at(1).val.blob.dwCount, 0u);
  EXPECT_EQ(LocalFree(reading.block), nullptr);
}

TEST_F(Read, atTheEndFails) {
  EXPECT_EQ(seek(handle_, CEDB_SEEK_BEGINNING, 1), 0u);
  EXPECT_EQ(sequenceHere(handle_), -static_cast<LONG>(ERROR_NO_MORE_ITEMS));
}

TEST_F(Read, ofARecordThatAnotherHandleDeletedFails) {
  EXPECT_NE(seek(handle_, CEDB_SEEK_BEGINNING, 0), 0u);
  const HANDLE other = open(database_);
  EXPECT_TRUE(CeDeleteRecord(other, record_));
  EXPECT_TRUE(CloseHandle(other));
  EXPECT_EQ(sequenceHere(handle_), -static_cast<LONG>(ERROR_KEY_DELETED));
}

TEST_F(Read, refusesNullPointersAndClosedHandles) {
  Reading reading;
  EXPECT_EQ(CeReadRecordProps(handle_, 1, nullptr, nullptr, &reading.block, &reading.size), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(CeReadRecordProps(handle_, 1, &reading.count, nullptr, nullptr, &reading.size), 0u);
  EXPECT_EQ(CeReadRecordProps(handle_, 1, &reading.count, nullptr, &reading.block, nullptr), 0u);
  EXPECT_EQ(
      CeReadRecordProps(INVALID_HANDLE_VALUE, 1, &reading.count, nullptr, &reading.block, &reading.size), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
  EXPECT_EQ(reading.block, nullptr);
}

using AutoIncrement = DatabaseTest;

TEST_F(AutoIncrement, movesOnWithEveryRead) {
  const HANDLE handle = openWith({1, 2, 3}, 0, CEDB_AUTOINCREMENT);
  EXPECT_EQ(sequenceHere(handle), 1);
  EXPECT_EQ(sequenceHere(handle), 2);
  EXPECT_EQ(sequenceHere(handle), 3);
  EXPECT_EQ(sequenceHere(handle), -static_cast<LONG>(ERROR_NO_MORE_ITEMS));
  EXPECT_TRUE(CloseHandle(handle));
}

TEST_F(AutoIncrement, movesOnFromADeletedRecord) {
  const HANDLE handle = openWith({1, 2, 3}, 0, CEDB_AUTOINCREMENT);
  EXPECT_TRUE(CeDeleteRecord(handle, records_[0]));
  EXPECT_EQ(sequenceHere(handle), 2);
  EXPECT_TRUE(CloseHandle(handle));
}

TEST_F(AutoIncrement, staysWhenTheBufferIsTooSmall) {
  const HANDLE handle = openWith({1, 2}, 0, CEDB_AUTOINCREMENT);
  Reading reading;
  reading.size = 0;
  EXPECT_EQ(CeReadRecordProps(handle, 0, &reading.count, nullptr, &reading.block, &reading.size), 0u);
  EXPECT_EQ(sequenceHere(handle), 1);
  EXPECT_TRUE(CloseHandle(handle));
}

}  // namespace
}  // namespace emulator::test
