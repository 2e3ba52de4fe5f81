#include "mail/message_index.h"

#include <gtest/gtest.h>
#include <map>
#include <random>

#include "mail/entry_collector.h"

namespace qorv {
namespace {

/// An identifier with this number in bytes 4 to 7, little-endian, and a mark that tells it from others.
EntryId entry(DWORD id, BYTE mark = 0) {
  EntryId entryId{};
  for (std::size_t i = 0; i < 4; ++i) entryId[4 + i] = static_cast<BYTE>(id >> 8 * i);
  entryId[19] = mark;
  return entryId;
}

using Contents = std::map<DWORD, EntryId>;

Contents contentsOf(MessageIndex& index) {
  Contents contents;
  DWORD last = 0;
  for (const MessageRecord* record = index.first(); record; record = index.next()) {
    EXPECT_TRUE(contents.empty() || record->id > last) << "ascending, each once";
    last = record->id;
    contents[record->id] = record->entryId;
  }
  EXPECT_EQ(contents.size(), index.size());
  return contents;
}

TEST(MessageIndex, isEmptyAtFirst) {
  MessageIndex index;
  EXPECT_EQ(index.first(), nullptr);
  EXPECT_EQ(index.next(), nullptr);
  EXPECT_EQ(index.find(0), nullptr);
  EXPECT_FALSE(index.erase(0));
}

TEST(MessageIndex, comparesNumbersAsUnsigned) {
  MessageIndex index;
  for (const DWORD id : {0x80000000u, 1u, 0xFFFFFFFFu, 0x7FFFFFFFu, 0u}) index.insert(entry(id));
  std::vector<DWORD> ids;
  for (const MessageRecord* record = index.first(); record; record = index.next()) ids.push_back(record->id);
  EXPECT_EQ(ids, (std::vector<DWORD>{0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF}));
}

TEST(MessageIndex, theLaterOfTwoEntriesWithOneNumberWins) {
  MessageIndex index;
  for (const DWORD id : {1u, 2u, 3u}) index.insert(entry(id, 1));
  index.insert(entry(2, 2));
  index.insert(entry(3, 2));
  EXPECT_EQ(index.size(), 3u);
  EXPECT_EQ(*index.find(1), entry(1, 1));
  EXPECT_EQ(*index.find(2), entry(2, 2));
  EXPECT_EQ(*index.find(3), entry(3, 2));
}

TEST(MessageIndex, findsTheFirstAgainAfterEachErasure) {
  MessageIndex index;
  for (DWORD id = 0; id < 100; ++id) index.insert(entry(id * 3));
  for (DWORD id = 0; id < 100; ++id) {
    const MessageRecord* first = index.first();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->id, id * 3);
    EXPECT_TRUE(index.erase(first->id));
  }
  EXPECT_EQ(index.first(), nullptr);
}

TEST(MessageIndex, canBeFilledAgainAfterItWasEmptied) {
  MessageIndex index;
  index.insert(entry(5));
  ASSERT_TRUE(index.erase(5));
  EXPECT_EQ(index.find(5), nullptr);
  index.insert(entry(4));
  EXPECT_EQ(contentsOf(index), (Contents{{4, entry(4)}}));
}

class RandomSteps : public testing::TestWithParam<unsigned> {};

TEST_P(RandomSteps, leaveWhatAMapHas) {
  std::mt19937 random(GetParam());
  // Few numbers, so that the same ones come up again; many, so that the list grows.
  const DWORD mask = GetParam() % 2 == 0 ? 0x3F : 0xFFFFFFFF;
  MessageIndex index;
  Contents expected;
  for (int step = 0; step < 3000; ++step) {
    const DWORD id = static_cast<DWORD>(random()) & mask;
    const EntryId given = entry(id, static_cast<BYTE>(step));
    const auto known = expected.find(id);
    switch (random() % 4) {
      case 0:
        EXPECT_EQ(index.erase(id), expected.erase(id) == 1);
        break;
      case 1:
        if (known == expected.end()) {
          EXPECT_EQ(index.find(id), nullptr);
        } else {
          ASSERT_NE(index.find(id), nullptr);
          EXPECT_EQ(*index.find(id), known->second);
        }
        break;
      default:
        index.insert(given);
        expected[id] = given;
    }
  }
  EXPECT_EQ(contentsOf(index), expected);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSteps, testing::Range(0u, 8u));

TEST(EntryCollector, indexesWhatWasAddedLastUnderEachNumber) {
  std::mt19937 random(1);
  EntryCollector collector;
  Contents expected;
  for (int i = 0; i < 5000; ++i) {
    const EntryId given = entry(static_cast<DWORD>(random()) % 1000, static_cast<BYTE>(i));
    collector.add(given);
    expected[objectId(given)] = given;
  }
  MessageIndex index;
  collector.moveTo(index);
  EXPECT_EQ(contentsOf(index), expected);
}

TEST(EntryCollector, isEmptyAfterwards) {
  EntryCollector collector;
  collector.add(entry(1));
  MessageIndex index;
  collector.moveTo(index);
  MessageIndex second;
  collector.moveTo(second);
  EXPECT_EQ(second.size(), 0u);
}

TEST(EntryId, hasItsNumberInBytes4To7) {
  EntryId bytes{0x11, 0x11, 0x11, 0x11, 0x04, 0x03, 0x02, 0x81, 0x22};
  EXPECT_EQ(objectId(bytes), 0x81020304u);
  EXPECT_EQ(objectId(SBinary{8, bytes.data()}), 0x81020304u);
  EXPECT_EQ(objectId(SBinary{7, bytes.data()}), std::nullopt);
  EXPECT_EQ(objectId(SBinary{20, nullptr}), std::nullopt);
  EXPECT_EQ(copyEntryId(SBinary{20, bytes.data()}), bytes);
  EXPECT_EQ(copyEntryId(SBinary{19, bytes.data()}), std::nullopt);
  EXPECT_EQ(copyEntryId(SBinary{20, nullptr}), std::nullopt);
}

}  // namespace
}  // namespace qorv
