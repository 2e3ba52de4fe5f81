// Reads a request's values without ever leaving the request.
#pragma once

#include <cstddef>
#include <memory>

#include "platform/types.h"

namespace qorv {

/// A text of the request, always NUL-terminated, in a buffer of its own.
class RequestText {
 public:
  RequestText() = default;
  /// Copies `byteCount` bytes into a zeroed buffer of (byteCount + 1) characters: the count is in bytes and
  /// the buffer sized as if it were in characters, which leaves room for a terminator after an odd last byte
  /// too.
  RequestText(const BYTE* bytes, DWORD byteCount);

  [[nodiscard]] WCHAR* get() const { return characters_.get(); }
  /// Characters up to the first NUL; 0 without a text.
  [[nodiscard]] std::size_t length() const;
  explicit operator bool() const { return characters_ != nullptr; }

 private:
  std::unique_ptr<WCHAR[]> characters_;
};

enum class TimeMode { KeepTime = 1, DateOnly = 2 };

/// The readers take a cursor into the request and a position behind it, and move the position by what they
/// read. A value that lies past the request's end, or partly past it, reads as zero or empty, moves the
/// position to the end, and the request counts as cut short from then on.
class RequestReader {
 public:
  void setRequestEnd(const BYTE* end) { end_ = end; }
  [[nodiscard]] bool requestCut() const { return cut_; }

  BYTE ReadByte(const BYTE* cursor, DWORD& position);
  DWORD ReadDword(const BYTE* cursor, DWORD& position);
  /// DateOnly zeroes hour, minute and second; the milliseconds stay, as the desktop has always got them.
  SYSTEMTIME ReadSystemTime(const BYTE* cursor, DWORD& position, TimeMode mode);
  /// u32 byte count, then the bytes.
  RequestText ReadString(const BYTE* cursor, DWORD& position);
  /// The next `size` bytes where they lie in the request, or null when they are not all there.
  const BYTE* ReadBytes(const BYTE* cursor, DWORD& position, DWORD size);

 private:
  const BYTE* end_ = nullptr;
  bool cut_ = false;
};

}  // namespace qorv
