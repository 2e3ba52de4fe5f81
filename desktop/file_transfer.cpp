#include "desktop/file_transfer.h"

#include <algorithm>

#include "desktop/device_error.h"
#include "desktop/file_commands.h"
#include "desktop/input_error.h"
#include "desktop/text.h"

namespace desktop {

namespace {

constexpr std::uint32_t kPutChunk = 64 * 1024;
constexpr std::uint32_t kGetChunk = 192 * 1024;
static_assert(kPutChunk + 1 <= kMaxFileChunk && kGetChunk <= kMaxFileChunk);
/// The device takes an offset as a signed number.
constexpr std::uint64_t kLargestFile = 0x7FFFFFFF;

[[noreturn]] void refuse(const std::u16string& path, const std::string& why) {
  throw DeviceRefusal("device file " + onOneLine(toUtf8(path)) + ": " + why);
}

void expectRoomFor(Session& session, const std::u16string& path) {
  const FileChunk first = readFileChunk(session, path, 0, 1);
  if (first.opened && !first.bytes.empty()) {
    refuse(path, "exists already; the device can only append to it, so choose another name");
  }
  if (!first.opened && first.error != kFileNotFound) refuse(path, spellDeviceError(first.error));
}

void sendPiece(Session& session, const std::u16string& path, BytesView piece, std::uint64_t sent,
               std::uint64_t size) {
  const AppendAnswer answer = appendFile(session, path, piece);
  if (answer.done) return;
  refuse(path, spellDeviceError(answer.error) + " after " + std::to_string(sent) + " of " +
                   std::to_string(size) + " bytes");
}

Bytes readPiece(InputFile& file, std::uint64_t offset) {
  Bytes piece(std::min<std::uint64_t>(kPutChunk, file.size() - offset));
  file.readAt(offset, piece);
  return piece;
}

void sendAll(Session& session, InputFile& file, const std::u16string& path,
             const TransferProgress& progress) {
  std::uint64_t sent = 0;
  do {  // an empty file is one empty piece
    const Bytes piece = readPiece(file, sent);
    sendPiece(session, path, piece, sent, file.size());
    sent += piece.size();
    progress(sent);
  } while (sent < file.size());
}

/// Asks for one byte more than there should be, so that the last piece proves the size as well.
void compareFrom(Session& session, InputFile& file, const std::u16string& path, std::uint64_t offset) {
  do {
    const Bytes piece = readPiece(file, offset);
    const bool last = offset + piece.size() == file.size();
    const auto asked = static_cast<std::uint32_t>(piece.size() + (last ? 1 : 0));
    const FileChunk chunk = readFileChunk(session, path, static_cast<std::uint32_t>(offset), asked);
    if (!chunk.opened) refuse(path, "can't be read back: " + spellDeviceError(chunk.error));
    if (chunk.bytes != piece)
      refuse(path, "differs from what was sent, at byte " + std::to_string(offset) + " or after");
    offset += piece.size();
  } while (offset < file.size());
}

}  // namespace

void putFile(Session& session, InputFile& file, const std::u16string& devicePath, Verify verify,
             const TransferProgress& progress) {
  if (file.size() > kLargestFile) {
    throw InputError(file.path().string() + ": a device takes files of up to 2147483647 bytes");
  }
  expectRoomFor(session, devicePath);
  sendAll(session, file, devicePath, progress);
  const std::uint64_t tail = std::min<std::uint64_t>(kPutChunk, file.size());
  compareFrom(session, file, devicePath, verify == Verify::Whole ? 0 : file.size() - tail);
}

void appendToDeviceFile(Session& session, const std::u16string& devicePath, BytesView bytes) {
  std::size_t sent = 0;
  do {  // no bytes are one empty piece
    const BytesView piece = bytes.subspan(sent, std::min<std::size_t>(kPutChunk, bytes.size() - sent));
    sendPiece(session, devicePath, piece, sent, bytes.size());
    sent += piece.size();
  } while (sent < bytes.size());
}

std::uint64_t readDeviceFile(Session& session, const std::u16string& devicePath, const PieceSink& take) {
  std::uint64_t got = 0;
  for (;;) {
    if (got > kLargestFile) refuse(devicePath, "is larger than the device can say");
    const FileChunk chunk = readFileChunk(session, devicePath, static_cast<std::uint32_t>(got), kGetChunk);
    // Nothing read is the file's end; with an error beside it, it is the end of reading only.
    if (!chunk.opened || (chunk.bytes.empty() && chunk.error != kNoError)) {
      refuse(devicePath,
             spellDeviceError(chunk.error) + (got > 0 ? " after byte " + std::to_string(got) : ""));
    }
    if (chunk.bytes.empty()) return got;
    take(chunk.bytes);
    got += chunk.bytes.size();
  }
}

std::uint64_t getFile(Session& session, const std::u16string& devicePath, OutputFile& file,
                      const TransferProgress& progress) {
  std::uint64_t got = 0;
  return readDeviceFile(session, devicePath, [&](BytesView piece) {
    file.write(piece);
    got += piece.size();
    progress(got);
  });
}

}  // namespace desktop
