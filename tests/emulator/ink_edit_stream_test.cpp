// The control's end of the callbacks, against callbacks that behave and callbacks that do not.
#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <vector>

#include "emulator/ink/edit_stream.h"
#include "platform/errors.h"

namespace emulator {
namespace {

/// What a callback has, takes or gives, and how.
struct Program {
  Bytes bytes{};
  std::size_t given = 0;
  LONG most = 1 << 20;          ///< moves no more than this at a time
  std::optional<LONG> claim{};  ///< what it says that it moved
  DWORD error = ERROR_SUCCESS;  ///< once `errorAfter` calls were made
  std::size_t errorAfter = 0;
  std::vector<LONG> counts{};

  DWORD answer(LONG count, LONG moved, LONG* out) {
    counts.push_back(count);
    *out = claim.value_or(moved);
    return counts.size() > errorAfter ? error : ERROR_SUCCESS;
  }
};

Program& programOf(DWORD_PTR cookie) {
  return *reinterpret_cast<Program*>(cookie);
}

DWORD give(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved) {
  Program& program = programOf(cookie);
  const auto left = static_cast<LONG>(program.bytes.size() - program.given);
  const LONG giving = std::min({count, left, program.most});
  std::copy_n(program.bytes.begin() + static_cast<std::ptrdiff_t>(program.given), giving, buffer);
  program.given += static_cast<std::size_t>(giving);
  return program.answer(count, giving, moved);
}

DWORD take(DWORD_PTR cookie, BYTE* buffer, LONG count, LONG* moved) {
  Program& program = programOf(cookie);
  const LONG taking = std::min(count, program.most);
  program.bytes.insert(program.bytes.end(), buffer, buffer + taking);
  return program.answer(count, taking, moved);
}

EDITSTREAM streamOf(Program& program, EDITSTREAMCALLBACK callback) {
  return {reinterpret_cast<DWORD_PTR>(&program), 0, callback};
}

Bytes numbered(std::size_t count) {
  Bytes bytes(count);
  for (std::size_t i = 0; i < count; ++i) bytes[i] = static_cast<std::uint8_t>(i * 7);
  return bytes;
}

TEST(EditStream, pullsUntilTheProgramHasNothingMore) {
  Program program{.bytes = numbered(50'000)};
  EDITSTREAM stream = streamOf(program, give);
  ChunkSizes sizes;
  Bytes pulled;
  EXPECT_EQ(pullAll(stream, sizes, pulled), ERROR_SUCCESS);
  EXPECT_EQ(pulled, program.bytes);
  std::ranges::sort(program.counts);
  EXPECT_EQ(program.counts.front(), 1);
  EXPECT_GT(program.counts.back(), 10'000);
}

TEST(EditStream, pushesEverythingInChunks) {
  const Bytes bytes = numbered(50'000);
  Program program;
  EDITSTREAM stream = streamOf(program, take);
  ChunkSizes sizes;
  EXPECT_EQ(pushAll(stream, sizes, bytes), ERROR_SUCCESS);
  EXPECT_EQ(program.bytes, bytes);
  EXPECT_GT(program.counts.size(), 9u);
}

TEST(EditStream, nothingToPushIsNoCall) {
  Program program;
  EDITSTREAM stream = streamOf(program, take);
  ChunkSizes sizes;
  EXPECT_EQ(pushAll(stream, sizes, {}), ERROR_SUCCESS);
  EXPECT_TRUE(program.counts.empty());
}

TEST(EditStream, offersAgainWhatTheProgramLeft) {
  const Bytes bytes = numbered(100);
  Program program{.most = 3};
  EDITSTREAM stream = streamOf(program, take);
  ChunkSizes sizes;
  EXPECT_EQ(pushAll(stream, sizes, bytes), ERROR_SUCCESS);
  EXPECT_EQ(program.bytes, bytes);
}

TEST(EditStream, endsWhenTheProgramTakesNothing) {
  Program program{.most = 0};
  EDITSTREAM stream = streamOf(program, take);
  ChunkSizes sizes;
  EXPECT_EQ(pushAll(stream, sizes, numbered(100)), ERROR_SUCCESS);
  EXPECT_EQ(program.counts.size(), 1u);
}

TEST(EditStream, anErrorOfTheProgramEndsIt) {
  Program giving{.bytes = numbered(100), .error = 5, .errorAfter = 2};
  EDITSTREAM in = streamOf(giving, give);
  ChunkSizes sizes;
  Bytes pulled;
  EXPECT_EQ(pullAll(in, sizes, pulled), 5u);
  EXPECT_EQ(in.dwError, 5u);
  EXPECT_EQ(pulled, numbered(3)) << "chunks of 1 and 2 bytes";
  Program taking{.error = 112, .errorAfter = 1};
  EDITSTREAM out = streamOf(taking, take);
  EXPECT_EQ(pushAll(out, sizes, numbered(10'000)), 112u);
  EXPECT_EQ(out.dwError, 112u);
  EXPECT_EQ(taking.counts.size(), 2u);
}

TEST(EditStream, aClaimThatCannotBeIsAnError) {
  for (const LONG claim : {-1, 2}) {
    Program program{.bytes = numbered(100), .claim = claim};
    EDITSTREAM stream = streamOf(program, give);
    ChunkSizes sizes;  // begins with one byte
    Bytes pulled;
    EXPECT_EQ(pullAll(stream, sizes, pulled), ERROR_INVALID_PARAMETER) << claim;
    EXPECT_TRUE(pulled.empty());
  }
}

TEST(EditStream, needsACallback) {
  EDITSTREAM stream{};
  ChunkSizes sizes;
  Bytes pulled;
  EXPECT_EQ(pullAll(stream, sizes, pulled), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(pushAll(stream, sizes, numbered(1)), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(stream.dwError, ERROR_INVALID_PARAMETER);
}

}  // namespace
}  // namespace emulator
