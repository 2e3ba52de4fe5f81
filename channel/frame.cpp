#include "channel/frame.h"

#include <algorithm>

#include "channel/wire.h"
#include "platform/errors.h"

namespace qorv {

namespace {

/// One call when the stream delivers all that was asked for; goes on while it delivers less.
bool readAll(IRAPIStream& stream, BYTE* buffer, DWORD size) {
  DWORD done = 0;
  while (done < size) {
    ULONG count = 0;
    if (FAILED(stream.Read(buffer + done, size - done, &count)) || count == 0 || count > size - done)
      return false;
    done += count;
  }
  return true;
}

bool writeAll(IRAPIStream& stream, std::span<const BYTE> bytes) {
  ULONG written = 0;
  return SUCCEEDED(stream.Write(bytes.data(), static_cast<ULONG>(bytes.size()), &written)) &&
         written == bytes.size();
}

}  // namespace

std::optional<std::vector<BYTE>> readFrame(IRAPIStream& stream) {
  BYTE lengthWord[sizeof(DWORD)];
  if (!readAll(stream, lengthWord, sizeof(lengthWord))) return std::nullopt;
  const DWORD length = loadDword(lengthWord);
  std::vector<BYTE> payload;
  while (payload.size() < length) {
    const auto done = static_cast<DWORD>(payload.size());
    const DWORD block = std::min(length - done, kReadBlock);
    payload.resize(std::size_t{done} + block);
    if (!readAll(stream, payload.data() + done, block)) return std::nullopt;
  }
  return payload;
}

bool writeFrame(IRAPIStream& stream, std::span<const BYTE> payload) {
  BYTE lengthWord[sizeof(DWORD)];
  storeDword(lengthWord, static_cast<DWORD>(payload.size()));
  return writeAll(stream, lengthWord) && writeAll(stream, payload);
}

}  // namespace qorv
