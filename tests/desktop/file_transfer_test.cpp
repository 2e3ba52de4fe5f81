#include "desktop/file_transfer.h"

#include "desktop/device_error.h"
#include "desktop/file_commands.h"
#include "desktop/input_error.h"
#include "tests/desktop/scripted_stream.h"
#include "tests/desktop/temporary_folder.h"

namespace {

using namespace desktop;
using namespace wire_bytes;

constexpr std::uint32_t kPutPiece = 64 * 1024;
constexpr std::uint32_t kGetPiece = 192 * 1024;

// \a.b: 8 bytes.
const std::u16string kPath = u"\\a.b";
const Bytes kSentPath = hex("08 00 00 00  5C 00 61 00 2E 00 62 00");

/// Command 18 (12), type 2, path, unused, number of bytes, bytes.
Bytes appendRequest(const Bytes& bytes) {
  return hex("12 02") + kSentPath + u32(0) + u32(static_cast<std::uint32_t>(bytes.size())) + bytes;
}

/// Command 19 (13), type 2, path, unused, offset, number of bytes.
Bytes readRequest(std::uint32_t offset, std::uint32_t count) {
  return hex("13 02") + kSentPath + u32(0) + u32(offset) + u32(count);
}

Bytes chunk(const Bytes& bytes) {
  return hex("01 00 00 00 00 00") + u32(static_cast<std::uint32_t>(bytes.size())) + bytes;
}

const Bytes kAppended = hex("01 00 00 00 00 00");
/// Result 0, error 2, nothing read.
const Bytes kNoSuchFile = hex("00 00 02 00 00 00 00 00 00 00");

Bytes patternOf(std::size_t size) {
  Bytes bytes(size);
  for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
  return bytes;
}

class FileTransfer : public ScriptedSession {
 protected:
  void put(const Bytes& content, Verify verify = Verify::Tail) {
    InputFile file(folder.write("source", std::string(content.begin(), content.end())));
    putFile(session(), file, kPath, verify, [&](std::uint64_t bytes) { progress.push_back(bytes); });
  }

  std::uint64_t get() {
    OutputFile file(folder / "target");
    const std::uint64_t size =
        getFile(session(), kPath, file, [&](std::uint64_t bytes) { progress.push_back(bytes); });
    file.commit();
    return size;
  }

  /// What the refusal says.
  template <typename Action>
  std::string refusal(Action action) {
    try {
      action();
    } catch (const DeviceRefusal& error) {
      return error.what();
    }
    return "none";
  }

  TemporaryFolder folder;
  std::vector<std::uint64_t> progress;
};

TEST_F(FileTransfer, putsASmallFileAndReadsItBackWithOneByteMore) {
  script->expect(readRequest(0, 1), kNoSuchFile);
  script->expect(appendRequest(hex("AA BB CC")), kAppended);
  script->expect(readRequest(0, 4), chunk(hex("AA BB CC")));
  put(hex("AA BB CC"));
  EXPECT_EQ(progress, std::vector<std::uint64_t>{3});
}

TEST_F(FileTransfer, putsALargeFileInPiecesAndReadsItsEndBack) {
  const Bytes content = patternOf(2 * kPutPiece + 5);
  const auto part = [&](std::size_t from, std::size_t to) {
    return Bytes(content.begin() + static_cast<std::ptrdiff_t>(from),
                 content.begin() + static_cast<std::ptrdiff_t>(to));
  };
  script->expect(readRequest(0, 1), kNoSuchFile);
  script->expect(appendRequest(part(0, kPutPiece)), kAppended);
  script->expect(appendRequest(part(kPutPiece, 2 * kPutPiece)), kAppended);
  script->expect(appendRequest(part(2 * kPutPiece, 2 * kPutPiece + 5)), kAppended);
  script->expect(readRequest(kPutPiece + 5, kPutPiece + 1), chunk(part(kPutPiece + 5, 2 * kPutPiece + 5)));
  put(content);
  EXPECT_EQ(progress, (std::vector<std::uint64_t>{65536, 131072, 131077}));
}

TEST_F(FileTransfer, readsTheWholeFileBackWhenAskedTo) {
  const Bytes content = patternOf(kPutPiece + 5);
  const Bytes first(content.begin(), content.begin() + kPutPiece);
  const Bytes last(content.begin() + kPutPiece, content.end());
  script->expect(readRequest(0, 1), kNoSuchFile);
  script->expect(appendRequest(first), kAppended);
  script->expect(appendRequest(last), kAppended);
  script->expect(readRequest(0, kPutPiece), chunk(first));
  script->expect(readRequest(kPutPiece, 6), chunk(last));
  put(content, Verify::Whole);
}

TEST_F(FileTransfer, putsAnEmptyFile) {
  script->expect(readRequest(0, 1), kNoSuchFile);
  script->expect(appendRequest({}), kAppended);
  script->expect(readRequest(0, 1), chunk({}));
  put({});
}

TEST_F(FileTransfer, fillsAFileThatIsEmpty) {
  script->expect(readRequest(0, 1), chunk({}));
  script->expect(appendRequest(hex("AA")), kAppended);
  script->expect(readRequest(0, 2), chunk(hex("AA")));
  put(hex("AA"));
}

TEST_F(FileTransfer, neverAppendsToContent) {
  script->expect(readRequest(0, 1), chunk(hex("11")));
  EXPECT_EQ(refusal([&] { put(hex("AA")); }),
            "device file \\a.b: exists already; the device can only append to it, so choose another name");
}

TEST_F(FileTransfer, doesNotStartWhereItCannotEnd) {
  script->expect(readRequest(0, 1), hex("00 00 03 00 00 00 00 00 00 00"));
  EXPECT_EQ(refusal([&] { put(hex("AA")); }), "device file \\a.b: error 3, no such folder");
  script->expect(readRequest(0, 1), hex("00 00 05 00 00 00 00 00 00 00"));
  EXPECT_EQ(refusal([&] { put(hex("AA")); }), "device file \\a.b: error 5, access denied");
}

TEST_F(FileTransfer, saysHowFarAPutCame) {
  const Bytes content = patternOf(kPutPiece + 5);
  script->expect(readRequest(0, 1), kNoSuchFile);
  script->expect(appendRequest(Bytes(content.begin(), content.begin() + kPutPiece)), kAppended);
  script->expect(appendRequest(Bytes(content.begin() + kPutPiece, content.end())), hex("00 00 70 00 00 00"));
  EXPECT_EQ(refusal([&] { put(content); }),
            "device file \\a.b: error 112, no room left after 65536 of 65541 bytes");
}

TEST_F(FileTransfer, noticesADeviceFileThatDiffers) {
  for (const auto& held : {hex("AA BB CD"), hex("AA BB"), hex("AA BB CC CC")}) {
    script->expect(readRequest(0, 1), kNoSuchFile);
    script->expect(appendRequest(hex("AA BB CC")), kAppended);
    script->expect(readRequest(0, 4), chunk(held));
    EXPECT_EQ(refusal([&] { put(hex("AA BB CC")); }),
              "device file \\a.b: differs from what was sent, at byte 0 or after");
  }
}

TEST_F(FileTransfer, getsAFileUntilNothingMoreComes) {
  const Bytes first = patternOf(kGetPiece);
  script->expect(readRequest(0, kGetPiece), chunk(first));
  script->expect(readRequest(kGetPiece, kGetPiece), chunk(hex("AA BB")));
  script->expect(readRequest(kGetPiece + 2, kGetPiece), chunk({}));
  EXPECT_EQ(get(), kGetPiece + 2);
  EXPECT_EQ(folder.read("target"), std::string(first.begin(), first.end()) + "\xAA\xBB");
  EXPECT_EQ(progress, (std::vector<std::uint64_t>{kGetPiece, kGetPiece + 2}));
}

TEST_F(FileTransfer, getsAnEmptyFile) {
  script->expect(readRequest(0, kGetPiece), chunk({}));
  EXPECT_EQ(get(), 0u);
  EXPECT_TRUE(std::filesystem::exists(folder / "target"));
}

TEST_F(FileTransfer, leavesNoFileWhenTheDeviceHasNone) {
  script->expect(readRequest(0, kGetPiece), kNoSuchFile);
  EXPECT_EQ(refusal([&] { get(); }), "device file \\a.b: error 2, no such file");
  EXPECT_TRUE(folder.names().empty());
}

TEST_F(FileTransfer, doesNotTakeAFailedReadForTheEnd) {
  script->expect(readRequest(0, kGetPiece), chunk(hex("AA")));
  script->expect(readRequest(1, kGetPiece), hex("01 00 05 00 00 00 00 00 00 00"));
  EXPECT_EQ(refusal([&] { get(); }), "device file \\a.b: error 5, access denied after byte 1");
  EXPECT_TRUE(folder.names().empty());
}

TEST_F(FileTransfer, refusesAChunkThatIsNotAsLongAsItSays) {
  for (const auto& reply :
       {hex("01 00 00 00 00 00 02 00 00 00 AA"), hex("01 00 00 00 00 00 01 00 00 00 AA BB"),
        hex("01 00 00 00 00 00 02 00 00 00 AA BB"), hex("01 00 00 00 00 00 FF FF FF FF"), hex("")}) {
    script->expect(readRequest(0, 1), reply);
    EXPECT_THROW(readFileChunk(session(), kPath, 0, 1), ProtocolError) << reply.size() << " bytes";
  }
}

TEST_F(FileTransfer, refusesAnAnswerOfAnotherLengthToAPiece) {
  for (const auto& reply : {hex(""), hex("01 00 00 00 00"), hex("01 00 00 00 00 00 00")}) {
    script->expect(appendRequest(hex("AA")), reply);
    EXPECT_THROW(appendFile(session(), kPath, hex("AA")), ProtocolError);
  }
}

TEST_F(FileTransfer, refusesAFileThatOffsetsCannotReach) {
  const auto path = folder.write("huge", "");
  std::filesystem::resize_file(path, 0x80000000u);
  InputFile file(path);
  EXPECT_THROW(putFile(session(), file, kPath, Verify::Tail, [](std::uint64_t) {}), InputError);
}

}  // namespace
