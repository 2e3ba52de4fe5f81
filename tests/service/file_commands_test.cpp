#include <gtest/gtest.h>

#include "platform/files.h"
#include "tests/support/agent_test.h"

namespace qorv {
namespace {

using namespace test;

constexpr std::u16string_view kPath = u"\\Temp\\a.bin";

Bytes appendRequest(std::u16string_view path, const Bytes& data) {
  return request(18, kContact).text(path).u32(0).u32(data.size()).append(data);
}

Bytes readRequest(std::u16string_view path, DWORD offset, DWORD count) {
  return request(19, kContact).text(path).u32(0).u32(offset).u32(count);
}

/// Result, zero and error word.
Bytes outcome(unsigned result, DWORD error) {
  return Bytes().u8(result).u8(0).u32(error);
}

class FileCommands : public AgentTest {
 protected:
  /// The file's bytes, read by the device itself.
  Bytes contents(std::u16string_view path) {
    const HANDLE file = device().files.createFile(path, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING, 0);
    std::vector<BYTE> bytes(1000);
    DWORD read = 0;
    device().files.readFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read);
    device().handles.close<emulator::ClosableObject>(file);
    bytes.resize(read);
    return Bytes(bytes);
  }
};

TEST_F(FileCommands, appendMakesAFileAndThenGrowsIt) {
  const auto replies =
      session({appendRequest(kPath, hex("01 02 03")), appendRequest(kPath, hex("04 05 06 07 08"))});
  // Open-always leaves 0 for a new file and 183 for one that existed; writing leaves it alone.
  EXPECT_EQ(replies, (std::vector<Bytes>{outcome(1, 0), outcome(1, 183)}));
  EXPECT_EQ(contents(kPath), hex("01 02 03 04 05 06 07 08"));
}

TEST_F(FileCommands, appendOfNothingMakesAnEmptyFile) {
  EXPECT_EQ(reply(appendRequest(kPath, Bytes())), outcome(1, 0));
  EXPECT_EQ(contents(kPath), Bytes());
}

TEST_F(FileCommands, appendOpensExclusivelyForReadingAndWritingAndMovesToTheEnd) {
  observeCalls();
  reply(appendRequest(kPath, hex("01 02 03")));
  EXPECT_EQ(calls("CreateFileW")[0]["args"],
            nlohmann::json::parse(R"(["\\Temp\\a.bin", 3221225472, 0, null, 4, 128, null])"));
  const auto moves = calls("SetFilePointer");
  ASSERT_EQ(moves.size(), 1u);
  EXPECT_EQ(moves[0]["args"][1], 0);
  EXPECT_EQ(moves[0]["args"][3], 2);
  EXPECT_EQ(calls("WriteFile")[0]["args"][1], nlohmann::json::parse(R"({"bytes": 3})"));
  EXPECT_EQ(callNames("GetLastError").size(), 1u);
  EXPECT_EQ(callNames("CloseHandle").size(), 1u);
}

struct Refusal {
  std::u16string_view path;
  DWORD error;
};

class RefusedPath : public FileCommands, public testing::WithParamInterface<Refusal> {};

TEST_P(RefusedPath, isAnsweredWithThePlatformsError) {
  const auto& [path, error] = GetParam();
  EXPECT_EQ(reply(appendRequest(path, hex("01"))), outcome(0, error));
}

INSTANTIATE_TEST_SUITE_P(Paths, RefusedPath,
                         testing::Values(Refusal{u"", 123}, Refusal{u"\\None\\a.bin", 3},
                                         Refusal{u"\\Temp", 5}));

TEST_F(FileCommands, aFailedOpenIsClosedAllTheSame) {
  observeCalls();
  EXPECT_EQ(reply(appendRequest(u"\\None\\a.bin", hex("01"))), outcome(0, 3));
  EXPECT_EQ(callNames("CloseHandle").size(), 1u);
  EXPECT_TRUE(calls("WriteFile").empty());
}

TEST_F(FileCommands, failedWriteIsAnsweredWithItsError) {
  fault("WriteFile=112");
  EXPECT_EQ(reply(appendRequest(kPath, hex("01"))), outcome(0, 112));
}

TEST_F(FileCommands, appendThatIsCutShortTouchesNoFile) {
  const Bytes whole = appendRequest(kPath, hex("01 02 03"));
  observeCalls();
  for (std::size_t size = 2; size < whole.size(); ++size) {
    const Bytes answer = reply(whole.slice(0, size));
    ASSERT_EQ(answer.size(), 6u) << size;
    EXPECT_EQ(answer.vector()[0], 0) << size;
    EXPECT_TRUE(calls("CreateFileW").empty()) << size;
  }
}

TEST_F(FileCommands, appendThatClaimsMoreThanItHasTouchesNoFile) {
  const Bytes answer = reply(request(18, kContact).text(kPath).u32(0).u32(0xFFFFFFFF).u8(1));
  EXPECT_EQ(answer.vector()[0], 0);
  EXPECT_EQ(device().files.fileAttributes(kPath), 0xFFFFFFFFu);
}

TEST_F(FileCommands, readAnswersTheBytesBehindTheirCount) {
  const auto replies = session({appendRequest(kPath, hex("01 02 03 04 05")), readRequest(kPath, 1, 3)});
  EXPECT_EQ(replies[1], outcome(1, 0).u32(3).append(hex("02 03 04")));
}

TEST_F(FileCommands, readToTheEndAndPastItAnswersWhatIsThere) {
  const auto replies =
      session({appendRequest(kPath, hex("01 02 03")), readRequest(kPath, 1, 100), readRequest(kPath, 3, 100),
               readRequest(kPath, 1000, 100), readRequest(kPath, 0, 0)});
  EXPECT_EQ(replies[1], outcome(1, 0).u32(2).append(hex("02 03")));
  EXPECT_EQ(replies[2], outcome(1, 0).u32(0));
  EXPECT_EQ(replies[3], outcome(1, 0).u32(0));
  EXPECT_EQ(replies[4], outcome(1, 0).u32(0));
}

TEST_F(FileCommands, readAsksForWriteAccessAndNoSharing) {
  reply(appendRequest(kPath, hex("01")));
  observeCalls();
  reply(readRequest(kPath, 0, 10));
  EXPECT_EQ(calls("CreateFileW")[0]["args"],
            nlohmann::json::parse(R"(["\\Temp\\a.bin", 3221225472, 0, null, 3, 128, null])"));
}

TEST_F(FileCommands, readOnlyFilesCannotBeRead) {
  const HANDLE file = device().files.createFile(kPath, GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_READONLY);
  device().handles.close<emulator::ClosableObject>(file);
  EXPECT_EQ(reply(readRequest(kPath, 0, 10)), outcome(0, 5).u32(0));
}

TEST_F(FileCommands, filesThatAnotherProgramHoldsCannotBeRead) {
  const HANDLE held =
      device().files.createFile(kPath, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_ALWAYS, 0);
  EXPECT_EQ(reply(readRequest(kPath, 0, 10)), outcome(0, 32).u32(0));
  EXPECT_EQ(reply(appendRequest(kPath, hex("01"))), outcome(0, 32));
  device().handles.close<emulator::ClosableObject>(held);
}

TEST_F(FileCommands, missingFilesAreAnsweredWithThePlatformsError) {
  EXPECT_EQ(reply(readRequest(kPath, 0, 10)), outcome(0, 2).u32(0));
  EXPECT_EQ(reply(readRequest(u"", 0, 10)), outcome(0, 123).u32(0));
}

TEST_F(FileCommands, anOffsetThatCannotBeReachedReadsNothing) {
  reply(appendRequest(kPath, hex("01 02 03")));
  observeCalls();
  for (const DWORD offset : {0x80000000u, 0xFFFFFFFFu}) {
    const Bytes answer = reply(readRequest(kPath, offset, 10));
    EXPECT_EQ(answer.vector()[0], 1) << offset;
    EXPECT_EQ(answer.dwordAt(6), 0u) << offset;
    EXPECT_TRUE(calls("ReadFile").empty()) << offset;
  }
}

TEST_F(FileCommands, failedReadLooksLikeTheEnd) {
  reply(appendRequest(kPath, hex("01 02 03")));
  fault("ReadFile=5");
  EXPECT_EQ(reply(readRequest(kPath, 0, 10)), outcome(1, 5).u32(0));
}

TEST_F(FileCommands, readNeverAsksForMoreThanTheReplyHolds) {
  Bytes chunk;
  for (int i = 0; i < 0x10000; ++i) chunk.u8(static_cast<unsigned>(i % 251));
  const auto replies =
      session({appendRequest(kPath, chunk), appendRequest(kPath, chunk), appendRequest(kPath, chunk),
               appendRequest(kPath, chunk), readRequest(kPath, 0, 0x36000 - 10),
               readRequest(kPath, 0, 0x36000 - 9), readRequest(kPath, 0, 0xFFFFFFFF), request(20, kContact)});
  for (std::size_t i = 4; i <= 6; ++i) {
    EXPECT_EQ(replies[i].size(), 0x36000u) << i;
    EXPECT_EQ(replies[i].dwordAt(6), 0x36000u - 10) << i;
    EXPECT_EQ(replies[i].vector().back(), (0x36000 - 11) % 0x10000 % 251) << i;
  }
  EXPECT_EQ(replies[7], hex("01000000"));
}

TEST_F(FileCommands, readThatIsCutShortReadsTheMissingNumbersAsZero) {
  reply(appendRequest(kPath, hex("01 02 03")));
  const Bytes whole = readRequest(kPath, 1, 2);
  // Without the count nothing is read; without the path nothing is opened.
  EXPECT_EQ(reply(whole.slice(0, whole.size() - 1)), outcome(1, 0).u32(0));
  EXPECT_EQ(reply(request(19, kContact)), outcome(0, 123).u32(0));
}

}  // namespace
}  // namespace qorv
