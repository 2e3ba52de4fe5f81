// The bytes of bodies and attachments, written and read in pieces.
#pragma once

#include "emulator/messaging/mail_message.h"
#include "emulator/store/chunked_bytes.h"

namespace emulator {

/// Failures of the device file are StoreErrors.
class MailContents {
 public:
  /// Keeps a wild position or size from filling the device file.
  static constexpr std::int64_t kMostBytes = std::int64_t{1} << 30;

  explicit MailContents(Connection& connection)
      : connection_(connection), chunks_(connection, "mail_chunk", "content") {}

  /// An empty content.
  ContentNumber make();
  /// Nothing when there is no such content.
  std::optional<std::int64_t> size(ContentNumber content);
  /// Up to the buffer's length; the bytes read, 0 at or past the end.
  std::size_t read(ContentNumber content, std::int64_t offset, std::span<std::uint8_t> buffer);
  Bytes readAll(ContentNumber content);
  /// Writes in place and beyond the end; a gap reads as zeros. The caller keeps within kMostBytes.
  void write(ContentNumber content, std::int64_t offset, ByteView data);
  void clear(ContentNumber content);
  void remove(ContentNumber content);

 private:
  void setSize(ContentNumber content, std::int64_t size);

  Connection& connection_;
  ChunkedBytes chunks_;
};

}  // namespace emulator
