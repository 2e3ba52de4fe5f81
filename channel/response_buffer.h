// The session's one response buffer.
#pragma once

#include <memory>
#include <span>

#include "channel/wire.h"

namespace qorv {

/// kResponseBufferSize bytes that replies are built in, one after another. Bytes that an operation leaves
/// unwritten are zero: clear() zeroes what earlier replies wrote, not the whole buffer.
class ResponseBuffer {
 public:
  ResponseBuffer() : bytes_(std::make_unique<BYTE[]>(kResponseBufferSize)) {}

  [[nodiscard]] const BYTE* data() const { return bytes_.get(); }
  [[nodiscard]] static bool fits(DWORD at, std::size_t size);
  /// False, and nothing is written, when the bytes would leave the buffer.
  bool write(DWORD at, std::span<const BYTE> bytes);
  /// `size` writable bytes at `at`, which must fit.
  BYTE* reserve(DWORD at, DWORD size);
  void clear();

 private:
  std::unique_ptr<BYTE[]> bytes_;
  DWORD highWater_ = 0;
};

}  // namespace qorv
