// Builds a reply in the session's response buffer.
#pragma once

#include <span>

#include "channel/response_buffer.h"
#include "channel/wire.h"

namespace qorv {

/// The writers append at the response length and advance it by exactly what they wrote. The tagged writers
/// make the fields of a record and count them. A text that would pass ResponseBufferLimit, or anything that
/// would pass the buffer's end, is left out and raises the overflow flag.
class ReplyWriter {
 public:
  void setResponseBuffer(ResponseBuffer& buffer) { buffer_ = &buffer; }
  [[nodiscard]] DWORD responseLength() const { return responseLength_; }

  bool WriteByte(BYTE value);
  bool WriteDword(DWORD value);
  bool WriteBytes(std::span<const BYTE> bytes);
  bool WriteString(const WCHAR* text);
  bool WriteTaggedDword(DWORD field, DWORD value);
  bool WriteTaggedString(DWORD field, const WCHAR* text);
  bool WriteTaggedSystemTime(DWORD field, const SYSTEMTIME& time);
  bool WriteTaggedBlock98(DWORD field, std::span<const BYTE, kRecurrenceBlockSize> block);

 protected:
  void setResponseLength(DWORD length) { responseLength_ = length; }
  /// Leaves `size` bytes of the reply as they are, which is zero. False when they would pass the buffer's
  /// end.
  bool skip(DWORD size);
  [[nodiscard]] DWORD room() const { return kResponseBufferSize - responseLength_; }
  [[nodiscard]] ResponseBuffer& responseBuffer() { return *buffer_; }

  /// Result then status: the whole answer of many commands.
  void writeStatus(BYTE result, BYTE status);

  /// Appends the list header as a placeholder of seven bytes.
  void writeListHeader();
  /// Copies the list header over the seven bytes at `at`; a placeholder that had no room stays out.
  void copyListHeader(DWORD at);

  /// Starts a record: field count 0 and a placeholder for its header. Returns where the record starts.
  DWORD beginRecord();
  /// A record of which something did not fit the buffer itself has result 0: nobody shall take a part for the
  /// whole.
  void endRecord(DWORD start, DWORD oid);

  ListReplyHeader listHeader_;

  [[nodiscard]] bool overflowed() const { return overflowed_; }
  /// Something did not fit the buffer itself, not only the limit for texts.
  [[nodiscard]] bool bufferFull() const { return bufferFull_; }
  void resetOverflow() { overflowed_ = false; }

 private:
  bool fitsLimit(DWORD byteCount);
  bool fitsBuffer(DWORD size);
  void writeText(const WCHAR* text, DWORD byteCount);

  ResponseBuffer* buffer_ = nullptr;
  DWORD responseLength_ = 0;
  bool overflowed_ = false;
  bool bufferFull_ = false;
};

}  // namespace qorv
