#include "channel/reply_writer.h"

#include <gtest/gtest.h>
#include <string>

#include "tests/support/bytes.h"

namespace qorv {
namespace {

using test::Bytes;
using test::hex;

class ReplyWriting : public testing::Test, public ReplyWriter {
 protected:
  ReplyWriting() { setResponseBuffer(buffer_); }

  Bytes reply() const { return Bytes({buffer_.data(), buffer_.data() + responseLength()}); }

  ResponseBuffer buffer_;
};

TEST_F(ReplyWriting, plainWritersAppendWithoutCountingFields) {
  WriteByte(7);
  WriteDword(0x12345678);
  WriteString(u"abc");
  // Three characters and the NUL: 8 bytes behind the count.
  EXPECT_EQ(reply(), hex("07 78563412 08000000 6100 6200 6300 0000"));
  EXPECT_EQ(responseLength(), 1u + 4u + 12u);
  EXPECT_EQ(listHeader_.fieldCount, 0);
}

TEST_F(ReplyWriting, taggedWritersPutTheFieldIdFirstAndCountOneFieldEach) {
  WriteTaggedDword(6, 2);
  WriteTaggedString(1, u"Hi");
  WriteTaggedSystemTime(16, {2005, 3, 1, 14, 9, 0, 0, 0});
  EXPECT_EQ(reply(), hex("06000000 02000000"
                         "01000000 06000000 4800 6900 0000"
                         "10000000 D507 0300 0100 0E00 0900 0000 0000 0000"));
  EXPECT_EQ(listHeader_.fieldCount, 3);
}

TEST_F(ReplyWriting, taggedBlockIs102Bytes) {
  std::array<BYTE, kRecurrenceBlockSize> block;
  block.fill(0xEE);
  WriteTaggedBlock98(19, block);
  Bytes expected = hex("13000000");
  for (int i = 0; i < 98; ++i) expected.u8(0xEE);
  EXPECT_EQ(reply(), expected);
  EXPECT_EQ(listHeader_.fieldCount, 1);
}

TEST_F(ReplyWriting, fieldCountWrapsAt256) {
  for (int i = 0; i < 257; ++i) WriteTaggedDword(6, 0);
  EXPECT_EQ(listHeader_.fieldCount, 1);
}

TEST_F(ReplyWriting, textMayReachTheLimitButNotPassIt) {
  // 8 bytes of text fit behind 0x1AFF8: the count in front of them is not part of the test.
  setResponseLength(0x1AFF8);
  EXPECT_TRUE(WriteString(u"abc"));
  EXPECT_EQ(responseLength(), 0x1AFF8u + 12u);
  EXPECT_FALSE(overflowed());

  setResponseLength(0x1AFF9);
  EXPECT_FALSE(WriteString(u"abc"));
  EXPECT_EQ(responseLength(), 0x1AFF9u);
  EXPECT_TRUE(overflowed());
  EXPECT_FALSE(bufferFull());
}

TEST_F(ReplyWriting, refusedTaggedTextWritesNothingAndCountsNothing) {
  setResponseLength(0x1AFFF);
  EXPECT_FALSE(WriteTaggedString(1, u""));
  EXPECT_EQ(responseLength(), 0x1AFFFu);
  EXPECT_EQ(listHeader_.fieldCount, 0);
  EXPECT_TRUE(overflowed());
  EXPECT_TRUE(WriteTaggedDword(6, 1));
}

TEST_F(ReplyWriting, textLongerThanTheBufferIsRefused) {
  EXPECT_FALSE(WriteString(std::u16string(kResponseBufferSize, u'x').c_str()));
  EXPECT_EQ(responseLength(), 0u);
}

TEST_F(ReplyWriting, fixedSizesMayUseTheHeadroomUpToTheBuffersEnd) {
  setResponseLength(kResponseBufferSize - 8);
  EXPECT_TRUE(WriteTaggedDword(6, 1));
  EXPECT_FALSE(overflowed());
  EXPECT_FALSE(WriteByte(1));
  EXPECT_TRUE(overflowed());
  EXPECT_TRUE(bufferFull());
  EXPECT_EQ(responseLength(), kResponseBufferSize);
}

TEST_F(ReplyWriting, noFixedSizeWriterLeavesTheBuffer) {
  constexpr std::array<BYTE, kRecurrenceBlockSize> kBlock{};
  setResponseLength(kResponseBufferSize - 3);
  EXPECT_FALSE(WriteDword(1));
  EXPECT_FALSE(WriteTaggedDword(1, 1));
  EXPECT_FALSE(WriteTaggedSystemTime(1, {}));
  EXPECT_FALSE(WriteTaggedBlock98(19, kBlock));
  EXPECT_FALSE(WriteBytes(kBlock));
  writeListHeader();
  EXPECT_EQ(responseLength(), kResponseBufferSize - 3);
  EXPECT_EQ(listHeader_.fieldCount, 0);
}

TEST_F(ReplyWriting, recordHeaderIsCopiedOverItsPlaceholderWithTheFieldsOfThisRecordOnly) {
  WriteTaggedDword(1, 1);
  const DWORD start = beginRecord();
  WriteTaggedDword(6, 2);
  WriteTaggedDword(8, 15);
  endRecord(start, 0x01020304);
  EXPECT_EQ(reply(), hex("01000000 01000000"
                         "01 00 04030201 02"
                         "06000000 02000000 08000000 0F000000"));
}

TEST(ResponseBufferClearing, zeroesWhatEarlierRepliesWroteUpToTheFurthestByte) {
  ResponseBuffer buffer;
  const std::array<BYTE, 3> bytes{1, 2, 3};
  buffer.write(100, bytes);
  buffer.write(0, bytes);
  buffer.clear();
  for (DWORD i = 0; i < 200; ++i) EXPECT_EQ(buffer.data()[i], 0) << i;
}

TEST(ResponseBufferBounds, refusesWhatWouldLeaveTheBuffer) {
  ResponseBuffer buffer;
  const std::array<BYTE, 3> bytes{1, 2, 3};
  EXPECT_TRUE(buffer.write(kResponseBufferSize - 3, bytes));
  EXPECT_FALSE(buffer.write(kResponseBufferSize - 2, bytes));
  EXPECT_FALSE(buffer.write(~DWORD{0}, bytes));
}

}  // namespace
}  // namespace qorv
