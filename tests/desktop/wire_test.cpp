#include "desktop/wire.h"

#include <gtest/gtest.h>

#include "desktop/device_error.h"
#include "tests/desktop/wire_bytes.h"

namespace {

using namespace desktop;
using namespace wire_bytes;

TEST(WireReader, readsNumbersAtAnyByteLowByteFirst) {
  const auto bytes = hex("07 78 56 34 12");
  WireReader reader(bytes);
  EXPECT_EQ(reader.byte(), 7);
  EXPECT_EQ(reader.number(), 0x12345678u);
  EXPECT_EQ(reader.left(), 0u);
}

TEST(WireReader, readsATextUpToItsNul) {
  // 8 bytes: A, NUL, B, NUL.
  const auto bytes = hex("08 00 00 00  41 00 00 00 42 00 00 00");
  WireReader reader(bytes);
  EXPECT_EQ(reader.text(), u"A");
  EXPECT_EQ(reader.left(), 0u);
}

TEST(WireReader, readsATextWithoutANul) {
  const auto bytes = hex("02 00 00 00  AC 20");
  EXPECT_EQ(WireReader(bytes).text(), u"\u20AC");
}

TEST(WireReader, readsATimeAndIgnoresItsDayOfWeek) {
  // 2005-03-14 14:35:10.250; the day of the week, a Monday, is spelled as 9.
  const auto bytes = hex("D5 07 03 00 09 00 0E 00  0E 00 23 00 0A 00 FA 00");
  EXPECT_EQ(WireReader(bytes).time(), (LocalTime{2005, 3, 14, 14, 35, 10, 250}));
}

TEST(WireReader, refusesToLeaveTheReply) {
  const auto three = hex("01 02 03");
  EXPECT_THROW(WireReader(three).number(), ProtocolError);
  EXPECT_THROW(WireReader({}).byte(), ProtocolError);
  const auto fifteen = Bytes(15);
  EXPECT_THROW(WireReader(fifteen).time(), ProtocolError);
  const auto claim = hex("FF FF FF FF 41 00");
  EXPECT_THROW(WireReader(claim).text(), ProtocolError);
}

TEST(WireReader, refusesATextOfAnOddNumberOfBytes) {
  const auto bytes = hex("03 00 00 00 41 00 42");
  EXPECT_THROW(WireReader(bytes).text(), ProtocolError);
}

TEST(WireReader, refusesBytesAfterTheEnd) {
  const auto bytes = hex("01 02");
  WireReader reader(bytes);
  reader.byte();
  EXPECT_THROW(reader.expectEnd(), ProtocolError);
  reader.byte();
  EXPECT_NO_THROW(reader.expectEnd());
}

TEST(WireWriter, writesNumbersLowByteFirst) {
  WireWriter writer;
  writer.byte(7);
  writer.number(0x12345678);
  EXPECT_EQ(writer.take(), hex("07 78 56 34 12"));
}

TEST(WireWriter, writesATextWithoutANul) {
  WireWriter writer;
  writer.text(u"A\u20AC");
  writer.text(u"");
  EXPECT_EQ(writer.take(), hex("04 00 00 00 41 00 AC 20  00 00 00 00"));
}

TEST(WireWriter, writesATimeWithItsDayOfWeek) {
  // 2005 = 0x07D5; 14 March 2005 was a Monday, 1; 250 = 0xFA.
  WireWriter writer;
  writer.time({2005, 3, 14, 14, 35, 10, 250});
  EXPECT_EQ(writer.take(), hex("D5 07 03 00 01 00 0E 00  0E 00 23 00 0A 00 FA 00"));
}

TEST(WireWriter, writesTheMissingTimeAsZeros) {
  WireWriter writer;
  writer.time({});
  EXPECT_EQ(writer.take(), Bytes(16));
}

}  // namespace
