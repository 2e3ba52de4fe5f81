// Seeks: every kind, what they return and where they leave the pointer.
#include "tests/emulator/database_test.h"

namespace emulator::test {
namespace {

class Seek : public DatabaseTest {
 protected:
  ~Seek() override { EXPECT_TRUE(CloseHandle(handle_)); }

  HANDLE handle_ = openWith({30, 10, 20, 40});  // in the order: 10, 20, 30, 40
};

constexpr LONG kAtEnd = -static_cast<LONG>(ERROR_NO_MORE_ITEMS);
constexpr LONG kDeleted = -static_cast<LONG>(ERROR_KEY_DELETED);

struct CountedSeek {
  DWORD type;
  LONG value;
  LONG reached;  ///< the sequence of the record that it returns; 0 for none
  LONG then;     ///< where it leaves the pointer
  DWORD index;   ///< what it tells; kPoison for nothing
};

class SeekByCount : public Seek, public testing::WithParamInterface<CountedSeek> {};

TEST_P(SeekByCount, reachesTheRecordFromTheSecondOne) {
  const CountedSeek& fact = GetParam();
  ASSERT_EQ(seek(handle_, CEDB_SEEK_BEGINNING, 1), records_[2]);
  DWORD index = kPoison;
  const CEOID reached = seek(handle_, fact.type, fact.value, &index);
  EXPECT_EQ(sequenceHere(handle_), fact.then);
  EXPECT_EQ(index, fact.index);
  if (fact.reached == 0) {
    EXPECT_EQ(reached, 0u);
  } else {
    EXPECT_EQ(reached, seek(handle_, CEDB_SEEK_VALUEFIRSTEQUAL, number(kSequence, fact.reached)));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Counts, SeekByCount,
    testing::Values(
        CountedSeek{CEDB_SEEK_BEGINNING, 0, 10, 10, 0}, CountedSeek{CEDB_SEEK_BEGINNING, 2, 30, 30, 2},
        CountedSeek{CEDB_SEEK_BEGINNING, 3, 40, 40, 3},
        CountedSeek{CEDB_SEEK_BEGINNING, 4, 0, kAtEnd, kPoison},
        CountedSeek{CEDB_SEEK_BEGINNING, 0x7FFFFFFF, 0, kAtEnd, kPoison},
        CountedSeek{CEDB_SEEK_END, 1, 40, 40, 3}, CountedSeek{CEDB_SEEK_END, 4, 10, 10, 0},
        CountedSeek{CEDB_SEEK_END, 5, 0, 10, kPoison}, CountedSeek{CEDB_SEEK_END, 0, 0, kAtEnd, kPoison},
        CountedSeek{CEDB_SEEK_CURRENT, 0, 20, 20, 1}, CountedSeek{CEDB_SEEK_CURRENT, 1, 30, 30, 2},
        CountedSeek{CEDB_SEEK_CURRENT, 2, 40, 40, 3}, CountedSeek{CEDB_SEEK_CURRENT, 3, 0, kAtEnd, kPoison},
        CountedSeek{CEDB_SEEK_CURRENT, -1, 10, 10, 0}, CountedSeek{CEDB_SEEK_CURRENT, -2, 0, 10, kPoison}));

struct ValueSeekFact {
  DWORD orderFlags;
  DWORD type;
  LONG value;
  LONG reached;  ///< 0 for none, with the pointer at the end
};

class SeekByValue : public DatabaseTest, public testing::WithParamInterface<ValueSeekFact> {};

TEST_P(SeekByValue, goesByTheOrder) {
  const ValueSeekFact& fact = GetParam();
  const HANDLE handle = openWith({30, 10, 20, 20, 40}, fact.orderFlags);
  DWORD index = kPoison;
  const CEOID reached = seek(handle, fact.type, number(kSequence, fact.value), &index);
  EXPECT_EQ(reached != 0, fact.reached != 0);
  EXPECT_EQ(index != kPoison, fact.reached != 0);
  EXPECT_EQ(sequenceHere(handle), fact.reached == 0 ? kAtEnd : fact.reached);
  EXPECT_TRUE(CloseHandle(handle));
}

constexpr DWORD kUp = 0;
constexpr DWORD kDown = CEDB_SORT_DESCENDING;

INSTANTIATE_TEST_SUITE_P(Values, SeekByValue,
                         testing::Values(ValueSeekFact{kUp, CEDB_SEEK_VALUESMALLER, 25, 20},
                                         ValueSeekFact{kUp, CEDB_SEEK_VALUESMALLER, 20, 10},
                                         ValueSeekFact{kUp, CEDB_SEEK_VALUESMALLER, 10, 0},
                                         ValueSeekFact{kUp, CEDB_SEEK_VALUESMALLER, 99, 40},
                                         ValueSeekFact{kDown, CEDB_SEEK_VALUESMALLER, 25, 30},
                                         ValueSeekFact{kDown, CEDB_SEEK_VALUESMALLER, 40, 0},
                                         ValueSeekFact{kDown, CEDB_SEEK_VALUESMALLER, -5, 10},
                                         ValueSeekFact{kUp, CEDB_SEEK_VALUEFIRSTEQUAL, 30, 30},
                                         ValueSeekFact{kUp, CEDB_SEEK_VALUEFIRSTEQUAL, 25, 0},
                                         ValueSeekFact{kDown, CEDB_SEEK_VALUEFIRSTEQUAL, 40, 40},
                                         ValueSeekFact{kUp, CEDB_SEEK_VALUEGREATER, 25, 30},
                                         ValueSeekFact{kUp, CEDB_SEEK_VALUEGREATER, 30, 30},
                                         ValueSeekFact{kUp, CEDB_SEEK_VALUEGREATER, 41, 0},
                                         ValueSeekFact{kUp, CEDB_SEEK_VALUEGREATER, -1, 10},
                                         ValueSeekFact{kDown, CEDB_SEEK_VALUEGREATER, 25, 20},
                                         ValueSeekFact{kDown, CEDB_SEEK_VALUEGREATER, 9, 0}));

TEST_F(Seek, byNextEqualGoesExactlyOneRecordOn) {
  EXPECT_NE(write(handle_, 0, {number(kSequence, 20)}), 0u);
  const CEOID first = seek(handle_, CEDB_SEEK_VALUEFIRSTEQUAL, number(kSequence, 20));
  const CEOID second = seek(handle_, CEDB_SEEK_VALUENEXTEQUAL, number(kSequence, 20));
  EXPECT_NE(second, 0u);
  EXPECT_NE(second, first);
  EXPECT_EQ(seek(handle_, CEDB_SEEK_VALUENEXTEQUAL, number(kSequence, 20)), 0u);
  EXPECT_EQ(sequenceHere(handle_), kAtEnd);
}

TEST_F(Seek, byIdentifierReachesThatRecord) {
  DWORD index = kPoison;
  EXPECT_EQ(seek(handle_, CEDB_SEEK_CEOID, static_cast<LONG>(records_[0]), &index), records_[0]);
  EXPECT_EQ(index, 2u);
  EXPECT_EQ(sequenceHere(handle_), 30);
  EXPECT_EQ(seek(handle_, CEDB_SEEK_CEOID, static_cast<LONG>(database_)), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(sequenceHere(handle_), 30);
}

TEST_F(Seek, byIdentifierFindsNoRecordOfAnotherDatabase) {
  const HANDLE other = open(create(u"\\Other", {{kSequence, 0}}), kSequence);
  const CEOID foreign = write(other, 0, {number(kSequence, 1)});
  EXPECT_EQ(seek(handle_, CEDB_SEEK_CEOID, static_cast<LONG>(foreign)), 0u);
  EXPECT_TRUE(CloseHandle(other));
}

TEST_F(Seek, fromTheEndGoesBack) {
  EXPECT_EQ(seek(handle_, CEDB_SEEK_BEGINNING, 9), 0u);
  DWORD index = kPoison;
  EXPECT_EQ(seek(handle_, CEDB_SEEK_CURRENT, -1, &index), records_[3]);
  EXPECT_EQ(index, 3u);
  EXPECT_EQ(seek(handle_, CEDB_SEEK_BEGINNING, 9), 0u);
  EXPECT_EQ(seek(handle_, CEDB_SEEK_CURRENT, 1), 0u);
  EXPECT_EQ(sequenceHere(handle_), kAtEnd);
}

TEST_F(Seek, walksByPositionsFromTheBeginning) {
  const std::vector<LONG> expected{10, 20, 30, 40};
  for (LONG i = 0; i < 4; ++i) {
    DWORD index = kPoison;
    EXPECT_NE(seek(handle_, CEDB_SEEK_BEGINNING, i, &index), 0u);
    EXPECT_EQ(index, static_cast<DWORD>(i));
    EXPECT_EQ(sequenceHere(handle_), expected[static_cast<std::size_t>(i)]);
  }
  EXPECT_EQ(seek(handle_, CEDB_SEEK_BEGINNING, 4), 0u);
  EXPECT_EQ(GetLastError(), ERROR_NO_MORE_ITEMS);
}

TEST_F(Seek, byPositionSeesWhatAnotherHandleInserted) {
  EXPECT_NE(seek(handle_, CEDB_SEEK_BEGINNING, 2), 0u);
  const HANDLE other = open(database_, kSequence);
  EXPECT_NE(write(other, 0, {number(kSequence, 5)}), 0u);
  DWORD index = kPoison;
  EXPECT_NE(seek(handle_, CEDB_SEEK_CURRENT, 0, &index), 0u);
  EXPECT_EQ(index, 3u);
  EXPECT_NE(seek(handle_, CEDB_SEEK_BEGINNING, 3), 0u);
  EXPECT_EQ(sequenceHere(handle_), 30);
  EXPECT_TRUE(CloseHandle(other));
}

TEST_F(Seek, followsARecordThatAnotherHandleMoved) {
  EXPECT_NE(seek(handle_, CEDB_SEEK_BEGINNING, 0), 0u);
  const HANDLE other = open(database_, kSequence);
  EXPECT_EQ(write(other, records_[1], {number(kSequence, 35)}), records_[1]);
  EXPECT_EQ(sequenceHere(handle_), 35);
  EXPECT_EQ(seek(handle_, CEDB_SEEK_CURRENT, 1), records_[3]);
  EXPECT_TRUE(CloseHandle(other));
}

TEST_F(Seek, afterADeletionReachesTheRecordThatFollowed) {
  EXPECT_NE(seek(handle_, CEDB_SEEK_BEGINNING, 1), 0u);
  EXPECT_TRUE(CeDeleteRecord(handle_, records_[2]));
  EXPECT_EQ(sequenceHere(handle_), kDeleted);
  EXPECT_EQ(seek(handle_, CEDB_SEEK_CURRENT, 0), 0u);
  DWORD index = kPoison;
  EXPECT_EQ(seek(handle_, CEDB_SEEK_CURRENT, 1, &index), records_[0]);
  EXPECT_EQ(index, 1u);
}

TEST_F(Seek, afterADeletionGoesBackToTheRecordBefore) {
  EXPECT_NE(seek(handle_, CEDB_SEEK_BEGINNING, 1), 0u);
  EXPECT_TRUE(CeDeleteRecord(handle_, records_[2]));
  EXPECT_EQ(seek(handle_, CEDB_SEEK_CURRENT, -1), records_[1]);
}

TEST_F(Seek, emptiesADatabaseByDeletingAndSteppingOn) {
  int deleted = 0;
  CEOID record = seek(handle_, CEDB_SEEK_BEGINNING, 0);
  while (record != 0) {
    EXPECT_TRUE(CeDeleteRecord(handle_, record));
    ++deleted;
    DWORD index = kPoison;
    record = seek(handle_, CEDB_SEEK_CURRENT, 1, &index);
  }
  EXPECT_EQ(deleted, 4);
  EXPECT_EQ(seek(handle_, CEDB_SEEK_BEGINNING, 0), 0u);
}

TEST_F(Seek, inAnEmptyDatabaseReachesNothing) {
  const HANDLE empty = open(create(u"\\Empty", {{kSequence, 0}}), kSequence);
  for (const DWORD type : {CEDB_SEEK_BEGINNING, CEDB_SEEK_END, CEDB_SEEK_CURRENT}) {
    EXPECT_EQ(seek(empty, type, 1), 0u) << type;
    EXPECT_EQ(GetLastError(), ERROR_NO_MORE_ITEMS) << type;
  }
  EXPECT_EQ(seek(empty, CEDB_SEEK_CURRENT, -1), 0u);
  EXPECT_EQ(seek(empty, CEDB_SEEK_VALUEFIRSTEQUAL, number(kSequence, 1)), 0u);
  EXPECT_TRUE(CloseHandle(empty));
}

TEST_F(Seek, refusesWhatItCannotDo) {
  EXPECT_EQ(seek(handle_, 0x03, 0), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(seek(handle_, CEDB_SEEK_VALUEFIRSTEQUAL, number(kItem, 10)), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(CeSeekDatabase(handle_, CEDB_SEEK_VALUEFIRSTEQUAL, 0, nullptr), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  const HANDLE unordered = open(database_);
  EXPECT_EQ(seek(unordered, CEDB_SEEK_VALUEFIRSTEQUAL, number(kSequence, 10)), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_TRUE(CloseHandle(unordered));
  EXPECT_EQ(seek(nullptr, CEDB_SEEK_BEGINNING, 0), 0u);
  EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
}

TEST_F(Seek, leavesTheLastErrorAloneWhenItSucceeds) {
  SetLastError(77);
  EXPECT_NE(seek(handle_, CEDB_SEEK_BEGINNING, 0), 0u);
  EXPECT_EQ(GetLastError(), 77u);
}

TEST_F(Seek, withoutAnOrderGoesByIdentifier) {
  const HANDLE unordered = open(database_);
  EXPECT_EQ(sequences(unordered), (std::vector<LONG>{30, 10, 20, 40}));
  DWORD index = kPoison;
  EXPECT_EQ(seek(unordered, CEDB_SEEK_END, 1, &index), records_[3]);
  EXPECT_EQ(index, 3u);
  EXPECT_EQ(seek(unordered, CEDB_SEEK_CURRENT, -2), records_[1]);
  EXPECT_TRUE(CloseHandle(unordered));
}

}  // namespace
}  // namespace emulator::test
