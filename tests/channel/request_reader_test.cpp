#include "channel/request_reader.h"

#include <gtest/gtest.h>
#include <string>

#include "tests/support/bytes.h"

namespace qorv {
namespace {

using test::Bytes;
using test::hex;

/// A reader over bytes that end exactly where the allocation does, so that a step too far is caught.
class RequestReading : public testing::Test {
 protected:
  const BYTE* request(const Bytes& bytes) {
    bytes_ = std::make_unique<BYTE[]>(bytes.size());
    std::copy(bytes.vector().begin(), bytes.vector().end(), bytes_.get());
    reader_.setRequestEnd(bytes_.get() + bytes.size());
    return bytes_.get();
  }

  std::unique_ptr<BYTE[]> bytes_;
  RequestReader reader_;
  DWORD position_ = 0;
};

TEST_F(RequestReading, byteAndDwordAdvanceByTheirSize) {
  const BYTE* cursor = request(hex("02 78 56 34 12"));
  EXPECT_EQ(reader_.ReadByte(cursor, position_), 2);
  EXPECT_EQ(position_, 1u);
  EXPECT_EQ(reader_.ReadDword(cursor, position_), 0x12345678u);
  EXPECT_EQ(position_, 5u);
  EXPECT_FALSE(reader_.requestCut());
}

TEST_F(RequestReading, timeOfDateOnlyModeKeepsItsMilliseconds) {
  // 2005-03-14 (Monday) 14:35:10.250, twice.
  const Bytes time = Bytes().time(2005, 3, 1, 14, 14, 35, 10, 250);
  const BYTE* cursor = request(Bytes(time).append(time));
  const SYSTEMTIME whole = reader_.ReadSystemTime(cursor, position_, TimeMode::KeepTime);
  EXPECT_EQ(whole.wHour, 14);
  EXPECT_EQ(whole.wMinute, 35);
  EXPECT_EQ(whole.wSecond, 10);
  EXPECT_EQ(whole.wMilliseconds, 250);
  const SYSTEMTIME date = reader_.ReadSystemTime(cursor, position_, TimeMode::DateOnly);
  EXPECT_EQ(position_, 32u);
  EXPECT_EQ(date.wYear, 2005);
  EXPECT_EQ(date.wMonth, 3);
  EXPECT_EQ(date.wDay, 14);
  EXPECT_EQ(date.wHour, 0);
  EXPECT_EQ(date.wMinute, 0);
  EXPECT_EQ(date.wSecond, 0);
  EXPECT_EQ(date.wMilliseconds, 250);
}

TEST_F(RequestReading, emptyTextIsTerminatedAndAdvancesByItsCount) {
  const BYTE* cursor = request(hex("00000000"));
  const RequestText text = reader_.ReadString(cursor, position_);
  EXPECT_EQ(position_, 4u);
  EXPECT_EQ(text.length(), 0u);
  EXPECT_EQ(text.get()[0], u'\0');
  EXPECT_FALSE(reader_.requestCut());
}

TEST_F(RequestReading, textIsUtf16AndAdvancesByCountAndBytes) {
  // 4 bytes: 'A' 0041, euro sign 20AC.
  const BYTE* cursor = request(hex("04000000 4100 AC20"));
  const RequestText text = reader_.ReadString(cursor, position_);
  EXPECT_EQ(position_, 8u);
  EXPECT_EQ(std::u16string(text.get()), u"A\u20AC");
}

TEST_F(RequestReading, textOfAnOddByteCountEndsWithHalfACharacter) {
  const BYTE* cursor = request(hex("03000000 4100 42"));
  const RequestText text = reader_.ReadString(cursor, position_);
  EXPECT_EQ(position_, 7u);
  EXPECT_EQ(std::u16string(text.get()), u"AB");
}

TEST_F(RequestReading, valueThatLiesPartlyPastTheEndReadsAsZeroAndCutsTheRequest) {
  const BYTE* cursor = request(hex("FF FF FF"));
  EXPECT_EQ(reader_.ReadDword(cursor, position_), 0u);
  EXPECT_TRUE(reader_.requestCut());
  EXPECT_EQ(position_, 3u);
  EXPECT_EQ(reader_.ReadByte(cursor, position_), 0);
}

TEST_F(RequestReading, timePastTheEndReadsAsZero) {
  const BYTE* cursor = request(hex("D507 0300 0100 0E00 0E00 2300 0A00 FA"));
  const SYSTEMTIME time = reader_.ReadSystemTime(cursor, position_, TimeMode::KeepTime);
  EXPECT_EQ(time.wYear, 0);
  EXPECT_TRUE(reader_.requestCut());
}

TEST_F(RequestReading, textThatClaimsMoreThanThereIsReadsAsEmpty) {
  for (const char* request_ : {"06000000 4100 4200", "FFFFFFFF 4100", "FEFFFF7F 4100", "00000080"}) {
    RequestReader reader;
    reader_ = reader;
    position_ = 0;
    const BYTE* cursor = request(hex(request_));
    const RequestText text = reader_.ReadString(cursor, position_);
    EXPECT_EQ(text.length(), 0u) << request_;
    EXPECT_NE(text.get(), nullptr) << request_;
    EXPECT_TRUE(reader_.requestCut()) << request_;
  }
}

TEST_F(RequestReading, bytesAreGivenOnlyWhenAllAreThere) {
  const BYTE* cursor = request(hex("01 02 03"));
  EXPECT_EQ(reader_.ReadBytes(cursor, position_, 3), cursor);
  EXPECT_EQ(reader_.ReadBytes(cursor, position_, 0), cursor + 3);
  EXPECT_FALSE(reader_.requestCut());
  EXPECT_EQ(reader_.ReadBytes(cursor, position_, 1), nullptr);
  EXPECT_TRUE(reader_.requestCut());
}

}  // namespace
}  // namespace qorv
