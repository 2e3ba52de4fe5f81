#include "channel/wire.h"

#include <gtest/gtest.h>

#include "tests/support/bytes.h"

namespace qorv {
namespace {

using test::Bytes;
using test::hex;

template <std::size_t N>
Bytes toBytes(const std::array<BYTE, N>& bytes) {
  return Bytes({bytes.begin(), bytes.end()});
}

TEST(ItemReplyHeader, isTenBytesWithUnalignedWordsLowByteFirst) {
  const ItemReplyHeader header{1, 3, 0x11223344, 0xAABBCCDD};
  EXPECT_EQ(toBytes(header.bytes()), hex("01 03 44 33 22 11 DD CC BB AA"));
}

TEST(ListReplyHeader, isSevenBytesThatEndWithTheFieldCount) {
  const ListReplyHeader header{1, 0, 0x01020304, 0x0C};
  EXPECT_EQ(toBytes(header.bytes()), hex("01 00 04 03 02 01 0C"));
}

TEST(SystemTime, travelsAsEightWordsWithTheDayOfWeekThird) {
  // 2005-03-14 was a Monday: 2005 = 07D5, 250 = 00FA.
  const SYSTEMTIME time{2005, 3, 1, 14, 14, 35, 10, 250};
  std::array<BYTE, kSystemTimeSize> bytes{};
  storeSystemTime(bytes.data(), time);
  EXPECT_EQ(toBytes(bytes), hex("D507 0300 0100 0E00 0E00 2300 0A00 FA00"));
  const SYSTEMTIME back = loadSystemTime(bytes.data());
  EXPECT_EQ(back.wYear, 2005);
  EXPECT_EQ(back.wDayOfWeek, 1);
  EXPECT_EQ(back.wDay, 14);
  EXPECT_EQ(back.wMilliseconds, 250);
}

TEST(DataType, isOneToFive) {
  EXPECT_FALSE(isDataType(0));
  EXPECT_TRUE(isDataType(1));
  EXPECT_TRUE(isDataType(5));
  EXPECT_FALSE(isDataType(6));
  EXPECT_FALSE(isDataType(255));
}

}  // namespace
}  // namespace qorv
