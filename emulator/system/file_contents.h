// The bytes of files, in rows of a fixed size: work and memory for a read or write go with its length only.
#pragma once

#include <cstdint>
#include <span>

#include "emulator/store/object_store.h"
#include "platform/types.h"

namespace emulator {

class FileContents {
 public:
  /// Small enough that a file written in small pieces, each of which rewrites its last chunk, stays cheap.
  static constexpr std::int64_t kChunkBytes = 16384;

  explicit FileContents(Connection& connection) : connection_(connection) {}

  /// Fills the buffer; what was never written reads as zeros.
  void read(Oid file, std::int64_t offset, std::span<BYTE> buffer);
  void write(Oid file, std::int64_t offset, ByteView data);
  void clear(Oid file);

 private:
  Bytes chunk(Oid file, std::int64_t number);

  Connection& connection_;
};

}  // namespace emulator
