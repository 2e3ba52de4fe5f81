#include "channel/frame.h"

#include <gtest/gtest.h>

#include "tests/support/scripted_stream.h"

namespace qorv {
namespace {

using test::Bytes;
using test::frame;
using test::hex;
using test::ScriptedStream;

Bytes payloadOf(std::size_t size) {
  Bytes payload;
  for (std::size_t i = 0; i < size; ++i) payload.u8(static_cast<unsigned>(i * 7));
  return payload;
}

TEST(ReadFrame, takesOneReadForTheLengthAndOneForThePayload) {
  ScriptedStream stream(frame(hex("0E 01")));
  const auto payload = readFrame(stream);
  ASSERT_TRUE(payload);
  EXPECT_EQ(Bytes(*payload), hex("0E 01"));
  EXPECT_EQ(stream.readSizes(), (std::vector<ULONG>{4, 2}));
}

TEST(ReadFrame, putsPiecesTogether) {
  for (const ULONG piece : {1u, 2u, 3u, 5u, 7u}) {
    ScriptedStream stream(frame(payloadOf(100)), piece);
    const auto payload = readFrame(stream);
    ASSERT_TRUE(payload) << piece;
    EXPECT_EQ(Bytes(*payload), payloadOf(100)) << piece;
  }
}

TEST(ReadFrame, emptyPayloadNeedsNoSecondRead) {
  ScriptedStream stream(frame({}));
  const auto payload = readFrame(stream);
  ASSERT_TRUE(payload);
  EXPECT_TRUE(payload->empty());
  EXPECT_EQ(stream.readSizes(), (std::vector<ULONG>{4}));
}

TEST(ReadFrame, isNothingWhenTheStreamEndsAnywhereInside) {
  const Bytes whole = frame(hex("0E 01 02"));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    ScriptedStream stream(whole.slice(0, size));
    EXPECT_FALSE(readFrame(stream)) << size;
  }
}

TEST(ReadFrame, upToOneMebibyteComesWithOneReadAndMoreInBlocks) {
  ScriptedStream exact(frame(payloadOf(kReadBlock)));
  ASSERT_TRUE(readFrame(exact));
  EXPECT_EQ(exact.readSizes(), (std::vector<ULONG>{4, kReadBlock}));

  ScriptedStream more(frame(payloadOf(kReadBlock + 1)));
  const auto payload = readFrame(more);
  ASSERT_TRUE(payload);
  EXPECT_EQ(Bytes(*payload), payloadOf(kReadBlock + 1));
  EXPECT_EQ(more.readSizes(), (std::vector<ULONG>{4, kReadBlock, 1}));
}

TEST(ReadFrame, hugeClaimAsksForNoMoreThanABlockAtATime) {
  ScriptedStream stream(Bytes().u32(0xFFFFFFFF).append(payloadOf(10)));
  EXPECT_FALSE(readFrame(stream));
  for (const ULONG size : stream.readSizes()) EXPECT_LE(size, kReadBlock);
}

TEST(WriteFrame, isTwoWritesAlsoForAnEmptyPayload) {
  ScriptedStream stream({});
  EXPECT_TRUE(writeFrame(stream, hex("01 00").vector()));
  EXPECT_TRUE(writeFrame(stream, {}));
  EXPECT_EQ(stream.writes(), (std::vector<Bytes>{hex("02000000"), hex("01 00"), hex("00000000"), Bytes()}));
}

TEST(WriteFrame, tellsWhenTheStreamFails) {
  ScriptedStream stream({});
  stream.failWritesFrom(1);
  EXPECT_FALSE(writeFrame(stream, hex("01 00").vector()));
}

}  // namespace
}  // namespace qorv
