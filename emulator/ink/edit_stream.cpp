#include "emulator/ink/edit_stream.h"

#include <algorithm>
#include <array>

#include "platform/errors.h"

namespace emulator {
namespace {

constexpr std::array<LONG, 9> kSizes{1, 2, 4096, 3, 64, 5, 1021, 16384, 7};

/// One call. The bytes that it moved; 0 when it failed, and the error word says why.
LONG move(EDITSTREAM& stream, BYTE* bytes, LONG count) {
  LONG moved = 0;
  stream.dwError = stream.pfnCallback(stream.dwCookie, bytes, count, &moved);
  if (stream.dwError == ERROR_SUCCESS && (moved < 0 || moved > count))
    stream.dwError = ERROR_INVALID_PARAMETER;
  return stream.dwError == ERROR_SUCCESS ? moved : 0;
}

}  // namespace

LONG ChunkSizes::next() {
  return kSizes[place_++ % kSizes.size()];
}

DWORD pullAll(EDITSTREAM& stream, ChunkSizes& sizes, Bytes& bytes) {
  if (stream.pfnCallback == nullptr) return stream.dwError = ERROR_INVALID_PARAMETER;
  std::size_t length = bytes.size();
  for (LONG moved = 1; moved > 0;) {
    const LONG count = sizes.next();
    bytes.resize(length + static_cast<std::size_t>(count));
    moved = move(stream, bytes.data() + length, count);
    length += static_cast<std::size_t>(moved);
  }
  bytes.resize(length);
  return stream.dwError;
}

DWORD pushAll(EDITSTREAM& stream, ChunkSizes& sizes, Bytes bytes) {
  if (stream.pfnCallback == nullptr) return stream.dwError = ERROR_INVALID_PARAMETER;
  std::size_t done = 0;
  for (LONG moved = 1; moved > 0 && done < bytes.size(); done += static_cast<std::size_t>(moved)) {
    const std::size_t offered = std::min(static_cast<std::size_t>(sizes.next()), bytes.size() - done);
    moved = move(stream, bytes.data() + done, static_cast<LONG>(offered));
  }
  return stream.dwError;
}

}  // namespace emulator
