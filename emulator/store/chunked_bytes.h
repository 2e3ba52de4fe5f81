// Long contents in rows of a fixed size: work and memory for a read or write go with its length only.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "emulator/store/sqlite.h"

namespace emulator {

/// The contents of a table's owners: a column that names the owner, `number` and `data`. A chunk that is missing, and the
/// part that a short one lacks, is zeros; how long an owner's contents are is the owner's affair.
class ChunkedBytes {
 public:
  /// Small enough that what is written in small pieces, each of which rewrites its last chunk, stays cheap.
  static constexpr std::int64_t kChunkBytes = 16384;

  ChunkedBytes(Connection& connection, const std::string& table, const std::string& owner);

  /// Fills the buffer; what was never written reads as zeros.
  void read(std::int64_t owner, std::int64_t offset, std::span<std::uint8_t> buffer);
  void write(std::int64_t owner, std::int64_t offset, ByteView data);
  void clear(std::int64_t owner);

 private:
  Bytes chunk(std::int64_t owner, std::int64_t number);

  Connection& connection_;
  std::string readRange_;
  std::string readOne_;
  std::string writeOne_;
  std::string clear_;
};

}  // namespace emulator
